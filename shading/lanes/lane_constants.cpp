#include "shading/lanes/lane_constants.h"

#include <algorithm>
#include <cstdlib>

#include "entry/session_record.h"
#include "vector/row_division.h"

// Ends of ranges that settings within theirs reach.
constexpr int32_t kLargestHeight = 100;
constexpr int32_t kLargestElevation = 4096;
constexpr int32_t kLargestGlare = 150;
constexpr int32_t kLargestGloss = 500;
constexpr int32_t kLargestSpan = 21845;
constexpr int32_t kLargestCausticGain = 342;
constexpr int32_t kLeastSharpness = 256;  // at which no slope beyond 257 gathers light
constexpr int32_t kLargestSharpness = 8960;
constexpr int32_t kLargestStencilWeight = 645;

static bool within(Word32 value, int32_t low, int32_t high) {
  return value >= low && value <= high;
}

// The weights of a stencil are small multiples of one number, and their sum is 0.
static bool stencilLanes(const LightStencil& s, StencilLanes* lanes) {
  const int32_t weights[4] = {s.w00, s.w01, s.w10, s.w11};
  int32_t unit = kLargestStencilWeight;
  int32_t sum = 0;
  for (const int32_t w : weights) {
    if (w < -kLargestStencilWeight || w > kLargestStencilWeight) return false;
    if (w != 0) unit = std::min(unit, std::abs(w));
    sum += w;
  }
  if (sum != 0) return false;
  int32_t size = 0;
  for (const int32_t w : weights) {
    if (w % unit != 0) return false;
    size += std::abs(w / unit);
  }
  if (size > 4) return false;
  *lanes = {static_cast<Lane>(s.w01 / unit), static_cast<Lane>(s.w10 / unit),
            static_cast<Lane>(s.w11 / unit), static_cast<uint16_t>(unit)};
  return true;
}

static void lightColour(const RgbWord& colour, Lane (&lanes)[3]) {
  lanes[0] = static_cast<Lane>(colour.red.value);
  lanes[1] = static_cast<Lane>(colour.green.value);
  lanes[2] = static_cast<Lane>(colour.blue.value);
}

static bool lightLanes(const LightConstants& light, const RgbWord& colour, LightLanes* lanes) {
  // The side stencil on the block turned a quarter, negated.
  const LightStencil& s = *light.side;
  const LightStencil turned = {-s.w01, -s.w11, -s.w00, -s.w10};
  if (!stencilLanes(*light.main, &lanes->main) || !stencilLanes(s, &lanes->side) ||
      !stencilLanes(turned, &lanes->turned) || !stencilLanes(*light.caustic, &lanes->caustic)) {
    return false;
  }
  if (!within(light.elevation, -kLargestElevation, kLargestElevation)) return false;
  lanes->elevation = static_cast<Lane>(light.elevation.value);
  lightColour(colour, lanes->colour);
  return true;
}

static bool highlightLanes(const RowConstants& row, ShadingRow* lanes) {
  if (!within(row.glareWidth, 0, kLargestGlare)) return false;
  if (!within(row.glossScale, 0, kLargestGloss)) return false;
  lanes->glareWidth = static_cast<Lane>(row.glareWidth.value);
  lanes->glossScale = static_cast<Lane>(row.glossScale.value);
  lanes->gloss = scaledDivision(row.glareWidth.value * row.glareWidth.value, row.glossScale.value,
                                std::max(row.glossDivisor.value, 1));
  return true;
}

static bool glassLanes(const RowConstants& row, ShadingRow* lanes) {
  if (!within(row.glass, 0, 256) || !within(row.transmitScale, 0, 256)) return false;
  if (!within(row.reflectWeight, 0, 256) || !within(row.reflectRest, 0, 256)) return false;
  if (!within(row.depthSpan, 1, kLargestSpan)) return false;
  if (!within(row.causticGain, 0, kLargestCausticGain)) return false;
  if (!within(row.causticSharpness, kLeastSharpness, kLargestSharpness)) return false;
  if (!within(row.causticFloor, 0, 255)) return false;
  const int32_t edge = row.edgeHeight.value;
  const int32_t span = row.depthSpan.value;
  lanes->glass = row.glass.value;
  lanes->reflectWeight = row.reflectWeight.value;
  lanes->reflectRest = row.reflectRest.value;
  lanes->transmit = row.glass.value * row.transmitScale.value;
  lanes->edgeHeight = static_cast<Lane>(edge);
  lanes->lowestDepth = static_cast<Lane>(std::max(edge - span, INT16_MIN));
  lanes->highestDepth = static_cast<Lane>(std::min(edge + span, INT16_MAX));
  lanes->depth = shareDivision(span);
  lanes->causticGain = row.causticGain.value;
  lanes->causticSharpness = row.causticSharpness.value;
  lanes->causticFloor = row.causticFloor.value;
  return true;
}

bool laneConstants(const SessionRecord* session, const RowConstants& row, ShadingRow* lanes) {
  const FastShadingTables& tables = session->shading.fast;
  if (!highlightLanes(row, lanes) || !glassLanes(row, lanes)) return false;
  if (!lightLanes(row.light1, row.colours.light1, &lanes->lights[0])) return false;
  if (!lightLanes(row.light2, row.colours.light2, &lanes->lights[1])) return false;
  lightColour(row.colours.tarnish, lanes->tarnishColour);
  lanes->lightCount = row.light2On ? 2 : 1;
  lanes->environment = static_cast<const uint8_t*>(session->render.environmentTable.address);
  lanes->coordinates = tables.coordinates;
  lanes->filmWords = tables.filmWords;
  lanes->causticWords = tables.causticWords;
  lanes->row = session->render.currentRow + session->render.preview.place.top;
  return true;
}

static bool isByte(const Rgb32& colour, int32_t highest) {
  return colour.red >= 0 && colour.red <= highest && colour.green >= 0 && colour.green <= highest &&
         colour.blue >= 0 && colour.blue <= highest;
}

static uint32_t packed(const Rgb32& colour, int32_t bits) {
  return static_cast<uint32_t>(colour.red) | static_cast<uint32_t>(colour.green) << bits |
         static_cast<uint32_t>(colour.blue) << 2 * bits;
}

// Whether the environment looks the same from a grazing step on; the angles only grow.
static bool levelBeyondGrazing(const ShadingTables& tables) {
  constexpr int32_t last = kAngleEntries - 1;
  return environmentCoordinate(tables, last) == environmentCoordinate(tables, kGrazingStep) &&
         environmentCoordinate(tables, -last) == environmentCoordinate(tables, -kGrazingStep);
}

static bool wordsBySteepness(const ShadingTables& tables, const RowConstants& row,
                             FastShadingTables* fast) {
  if (causticEntry(row, kSteepnessEntries - 1) != 0) return false;
  for (int32_t steepness = 0; steepness < kSteepnessEntries; ++steepness) {
    const Rgb32& film = tables.iridescence[std::min(steepness >> 3, kIridescenceEntries - 1)];
    const Rgb32& caustic = tables.caustic[causticEntry(row, steepness)];
    if (!isByte(film, 256) || !isByte(caustic, 255)) return false;
    if (film.red != 256 || film.green != 256 || film.blue != 256) fast->filmOn = 1;
    fast->filmWords[steepness] = packed(film, 9);
    fast->causticWords[steepness] = packed(caustic, 8);
  }
  return true;
}

void prepareLanes(SessionRecord* session) {
  ShadingTables* tables = &session->shading;
  FastShadingTables* fast = &tables->fast;
  fast->ready = 0;
  fast->filmOn = 0;
  if (session->render.fast == nullptr) return;
  fast->height = settingsOf(session)->height;
  if (fast->height < -kLargestHeight || fast->height > kLargestHeight ||
      !levelBeyondGrazing(*tables))
    return;
  for (int32_t i = 0; i < kCoordinateEntries; ++i) {
    fast->coordinates[i] = static_cast<uint8_t>(environmentCoordinate(*tables, i - kGrazingStep));
  }
  fast->ready = wordsBySteepness(*tables, rowConstants(session), fast) ? 1 : 0;
}
