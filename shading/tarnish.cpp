#include "shading/tarnish.h"

#include <algorithm>
#include <cstdint>

#include "entry/session_record.h"
#include "services/fixed_point.h"
#include "vector/fast_passes.h"

constexpr int32_t kReach = 2;              // cells on either side
constexpr int32_t kSide = 2 * kReach + 1;  // of the filter

// A ring minus its centre; the sum is 0, so flat ground gathers nothing.
constexpr int32_t kWeights[kSide][kSide] = {
    {0, 2, 5, 2, 0}, {2, 10, 14, 10, 2}, {5, 14, -132, 14, 5}, {2, 10, 14, 10, 2}, {0, 2, 5, 2, 0}};

static Word32 tarnishStrength(const EffectSettings* settings) {
  Word32 t = settings->tarnish;
  if (t > 50) t = t * 4 - 150;
  // Divided by the reduction, so that the amount keeps its size in the preview.
  return t * 256 / (Word32(settings->previewScale) * 50);
}

static int32_t hollowAt(const int16_t* const rows[kSide], int32_t c) {
  int32_t sum = 0;
  for (int32_t i = 0; i < kSide; ++i) {
    for (int32_t k = 0; k < kSide; ++k) {
      sum += kWeights[i][k] * rows[i][std::max(c + k - kReach, 0)];
    }
  }
  return std::max(-sum, 0);
}

// False when the amounts would wrap, or the strength is none that settings give.
static bool inLanes(const RenderState* render, const int16_t* const rows[kSide], Word32 strength,
                    int32_t* amounts) {
  if (render->fast == nullptr || strength < 0 || strength > kLargestTarnishStrength) return false;
  const int32_t hollow =
      render->fast->light->tarnishRow(rows, render->renderWidth, strength.value, amounts);
  return int64_t{hollow} * strength.value <= INT32_MAX;
}

bool computeTarnishRow(SessionRecord* session) {
  RenderState* render = &session->render;
  if (render->heightField.address == nullptr || render->lineBuffer.address == nullptr) return false;
  const int32_t r = render->currentRow;
  const Word32 strength = tarnishStrength(settingsOf(session));
  const int16_t* rows[kSide];
  for (int32_t i = 0; i < kSide; ++i) rows[i] = fieldRow(render, std::max(r + i - kReach, 0));
  int32_t* amounts = lineBufferWords(render) + render->tarnishRowStart;
  const bool quick = inLanes(render, rows, strength, amounts);
  // The lanes leave the first columns, which have no left neighbours.
  const int32_t columns = quick ? std::min(kReach, render->renderWidth) : render->renderWidth;
  bool wrapped = false;
  for (int32_t c = 0; c < columns; ++c) {
    amounts[c] = smaller(strength * hollowAt(rows, c) >> 12, 256).value;
    wrapped = wrapped || amounts[c] < 0;
  }
  return !wrapped;
}
