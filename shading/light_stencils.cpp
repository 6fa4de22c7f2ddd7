#include "shading/light_stencils.h"

#include "entry/session_record.h"

constexpr int32_t kFirstSector = 281;  // degrees from angle 0 to the start of sector 0

// The four stencils of a quarter turn, 22.5 degrees apart: small multiples and their common scale,
// which evens out the length.
struct BaseStencil {
  int32_t w00;
  int32_t w01;
  int32_t w10;
  int32_t w11;
  float scale;
};

constexpr BaseStencil kBaseStencils[4] = {
    {0, -2, 0, 2, 1.0F}, {0, -2, 1, 1, 0.934F}, {0, -2, 2, 0, 0.7071F}, {1, -2, 1, 0, 0.934F}};
constexpr double kStencilScale = 322.56;

static LightStencil quarterTurn(const LightStencil& s) {
  return {-s.w01, -s.w11, -s.w00, -s.w10};
}

void setLightStencil(int32_t angle, int32_t slot, SessionRecord* session) {
  if (slot < 0 || slot >= kStencilSlots) return;
  // Derived angles are never below -90; a damaged one is brought back into the circle.
  const int32_t turned = static_cast<int32_t>((int64_t{angle} + kFirstSector) % 360);
  const int32_t sector = 2 * (turned < 0 ? turned + 360 : turned) / 45;
  const BaseStencil& base = kBaseStencils[sector % 4];
  const auto scale = static_cast<float>(base.scale * kStencilScale);
  const auto weight = [scale](int32_t multiple) {
    return static_cast<int32_t>(static_cast<double>(multiple) * scale);
  };
  LightStencil stencil = {weight(base.w00), weight(base.w01), weight(base.w10), weight(base.w11)};
  for (int32_t i = 0; i < sector / 4; ++i) stencil = quarterTurn(stencil);
  session->shading.stencils[slot] = stencil;
}
