// Nanoseconds per pixel of the smoothing, and of profile and relief: the slow twin, the plain form
// and every instruction set, side by side on the same picture, the least of several turns. The
// height fields must be the twin's before anything counts. The argument is the number of turns.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>

#include "tests/reference/reference_render.h"
#include "tests/support/hosts/direct_render.h"
#include "vector/instruction_sets.h"

struct Seconds {
  double smoothing = std::numeric_limits<double>::max();
  double surface = std::numeric_limits<double>::max();
};

static double now() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// A soft ring in every 320 x 320 pixels.
static DirectInput rings(int32_t side, int32_t textureChoice, int32_t textureScale) {
  DirectInput input = {};
  input.settings = defaultSettings();
  input.settings.textureChoice = textureChoice;
  input.settings.textureScale = textureScale;
  input.width = input.height = side;
  input.planes = 1;
  input.seed = 1;
  input.source.resize(static_cast<size_t>(side) * side);
  for (int32_t y = 0; y < side; ++y) {
    for (int32_t x = 0; x < side; ++x) {
      const double inside = 60 - std::abs(std::hypot(x % 320 - 160, y % 320 - 160) - 90);
      input.mask.push_back(static_cast<uint8_t>(std::clamp((inside + 0.5) * 255, 0.0, 255.0)));
    }
  }
  return input;
}

static std::vector<int16_t> cellsOf(const SessionRecord& session) {
  const auto* cells = static_cast<const int16_t*>(session.render.heightField.address);
  return {cells, cells + int64_t{session.render.fieldStride} * session.render.fieldRows};
}

struct Fields {
  ReferenceField bordered;
  std::vector<int16_t> finished;
  ReferenceTexture texture;
};

static void timeProduct(const DirectInput& input, InstructionSet set, Seconds* least,
                        Fields* fields) {
  limitInstructionSet(set);
  double smoothing = 0;
  double before = 0;
  renderDirectly(input, [&](const SessionRecord& session, int32_t phase) {
    const double spent = now() - before;
    if (phase == kPhaseBorder) {
      fields->bordered = {session.render.fieldStride, session.render.fieldRows, cellsOf(session)};
    } else if (phase == kPhaseSmoothForward) {
      smoothing = spent;
    } else if (phase == kPhaseSmoothBackward) {
      least->smoothing = std::min(least->smoothing, smoothing + spent);
    } else if (phase == kPhaseProfile) {
      least->surface = std::min(least->surface, spent);
      fields->finished = cellsOf(session);
    }
    before = now();
  });
}

// False when the product's field is another.
static bool timeTwin(const DirectInput& input, const Fields& fields, Seconds* least) {
  const ReferenceTexture texture = referenceTexture(input.settings.textureChoice, input.seed);
  const std::vector<uint8_t> table = referenceTextureTable(texture.grey);
  const ReferenceProfile profile = referenceProfile(input.settings);
  ReferenceField field = fields.bordered;
  const double start = now();
  referenceSmoothForward(field);
  referenceSmoothBackward(field);
  const double smoothed = now();
  referenceMapProfile(field, profile);
  referenceRelief(field, input.settings, table, texture.width, texture.height);
  least->surface = std::min(least->surface, now() - smoothed);
  least->smoothing = std::min(least->smoothing, smoothed - start);
  return field.cells == fields.finished;
}

static bool compare(const char* name, const DirectInput& input, int32_t turns) {
  const auto best = static_cast<int32_t>(bestInstructionSet());
  Seconds twin;
  Seconds sets[kInstructionSets];
  Fields fields;
  for (int32_t turn = 0; turn < turns; ++turn) {
    for (int32_t set = 0; set <= best; ++set) {
      timeProduct(input, static_cast<InstructionSet>(set), &sets[set], &fields);
      if ((turn == 0 || set == best) && !timeTwin(input, fields, &twin)) {
        std::fprintf(stderr, "%s: %s gives another field than the twin\n", name,
                     instructionSetName(static_cast<InstructionSet>(set)));
        return false;
      }
    }
  }
  const double perPixel = 1e9 / (static_cast<double>(input.width) * input.height);
  const auto print = [&](const char* pass, double Seconds::*spent) {
    std::printf("%-22s %-18s %6.1f", name, pass, twin.*spent * perPixel);
    for (int32_t set = 0; set <= best; ++set) {
      std::printf("  %6.2f (%5.1f x)", sets[set].*spent * perPixel,
                  twin.*spent / (sets[set].*spent));
    }
    std::printf("\n");
  };
  print("smoothing", &Seconds::smoothing);
  print("profile and relief", &Seconds::surface);
  return true;
}

int main(int argc, char** argv) {
  const int32_t turns = argc > 1 ? std::atoi(argv[1]) : 10;
  std::printf("%-22s %-18s %6s", "ns a pixel", "", "twin");
  for (int32_t set = 0; set <= static_cast<int32_t>(bestInstructionSet()); ++set) {
    std::printf("  %16s", instructionSetName(static_cast<InstructionSet>(set)));
  }
  std::printf("\n");
  const bool same = compare("marble, scale 55", rings(1024, 6, 55), turns) &&
                    compare("cells, scale 0", rings(1024, 8, 0), turns) &&
                    compare("cells, scale 10", rings(1024, 8, 10), turns) &&
                    compare("cells, scale 100", rings(1024, 8, 100), turns);
  return same ? 0 : 1;
}
