#include "shading/shade_row.h"

#include <algorithm>
#include <cstdlib>

#include "entry/session_record.h"
#include "geometry/field/selection_mask.h"
#include "pictures/environment_picture.h"
#include "shading/compose_pixel.h"
#include "shading/lanes/row_in_lanes.h"
#include "shading/lit_pixel.h"
#include "shading/row_constants.h"
#include "shading/tarnish.h"

constexpr int32_t kLightRest = 171;  // share of a light above 256 that is kept, in 1/256
constexpr int32_t kDiagonal = 181;   // 1 / sqrt(2), in 1/256
constexpr int32_t kTableRowBytes = 4 * kEnvironmentSurfaceSide;
constexpr int32_t kSlopeClassShift = 3;

// The 2 x 2 block of height-field cells that a pixel is lit from.
struct CellBlock {
  int32_t h00;
  int32_t h01;
  int32_t h10;
  int32_t h11;
};

// One light's contributions to a pixel, in 1/256.
struct LightShare {
  Word32 slope;  // toward the light
  Word32 diffuse;
  Word32 shade;
  Word32 caustic;
  Word32 back;   // highlight on the far side, seen through glass
  Word32 front;  // highlight
  Word32 through;
};

static Word32 dot(const LightStencil& s, const CellBlock& h) {
  return (Word32(s.w00) * h.h00 + Word32(s.w01) * h.h01 + Word32(s.w10) * h.h10 +
          Word32(s.w11) * h.h11) /
         256;
}

// The stencil applied to the block turned a quarter.
static Word32 turnedDot(const LightStencil& s, const CellBlock& h) {
  return -((Word32(s.w01) * h.h00 + Word32(s.w11) * h.h01 + Word32(s.w00) * h.h10 +
            Word32(s.w10) * h.h11) /
           256);
}

// A highlight where both slopes are near the light's elevation.
static Word32 highlight(const RowConstants& row, Word32 side, Word32 turned, Word32 elevation) {
  const Word32 a = row.glareWidth - absolute(side - elevation);
  if (a <= 0) return 0;
  const Word32 b = row.glareWidth - absolute(turned - elevation);
  if (b <= 0) return 0;
  return row.glossScale * a * b / row.glossDivisor;
}

static Word32 gatheredLight(const RowConstants& row, const LightStencil& stencil,
                            const CellBlock& h) {
  const Word32 k = absolute(dot(stencil, h)) * row.causticSharpness >> 8;
  const Word32 q = larger(Word32(255) - k - row.causticFloor, 0);
  return row.causticGain * (q * q >> 6) >> 8;
}

static Word32 shadeOf(const RowConstants& row, Word32 diffuse) {
  const Word32 shade = diffuse * (Word32(256) - row.glass) >> 8;
  if (shade < 0) return 0;
  return compressed(shade, kLightRest) * row.reflectRest >> 8;
}

static LightShare lightShare(const RowConstants& row, const LightConstants& light,
                             const CellBlock& h) {
  LightShare share;
  share.slope = dot(*light.main, h);
  share.diffuse = share.slope + 256;
  const Word32 side = dot(*light.side, h);
  const Word32 turned = turnedDot(*light.side, h);
  if (share.diffuse <= 256) {
    share.caustic = gatheredLight(row, *light.caustic, h);
    share.back = highlight(row, -side, -turned, light.elevation);
  } else {
    share.front = highlight(row, side, turned, light.elevation);
  }
  share.shade = shadeOf(row, share.diffuse);
  return share;
}

static Word32 lightThrough(const RowConstants& row, const LightShare& share, int32_t h00) {
  const Word32 x = (share.back * kLightRest >> 8) - share.slope;
  if (x < 0) return 0;
  const Word32 depth = smaller(absolute(row.edgeHeight - h00), row.depthSpan);
  return compressed(x * depth / row.depthSpan, kLightRest);
}

// Length of the gradient, by an octagon.
static Word32 steepness(const CellBlock& h) {
  const int32_t dx = h.h01 - h.h00;
  const int32_t dy = h.h10 - h.h00;
  const int32_t longer = std::max(std::abs(dx), std::abs(dy));
  const int32_t shorter = std::min(std::abs(dx), std::abs(dy));
  const int32_t sum = std::abs(dx + dy) * kDiagonal >> 8;
  const int32_t difference = std::abs(dx - dy) * kDiagonal >> 8;
  return longer + (shorter >> 1) + std::max({longer, sum, difference});
}

// Where a pixel looks into the environment: coordinates 0 to 63 and the rip-map level per axis.
struct Reflection {
  int32_t u;
  int32_t v;
  int32_t levelU;
  int32_t levelV;
};

static Reflection reflectionOf(const ShadingTables& tables, const CellBlock& h, int32_t* beforeU,
                               int32_t* beforeV) {
  Reflection seen;
  seen.u = environmentCoordinate(tables, h.h01 - h.h00);
  seen.v = environmentCoordinate(tables, h.h10 - h.h00);
  seen.levelU = tables.ripMapLevel[std::abs(seen.u - *beforeU)];
  seen.levelV = tables.ripMapLevel[std::abs(seen.v - *beforeV)];
  *beforeU = seen.u;
  *beforeV = seen.v;
  return seen;
}

static RgbWord environmentSample(const SessionRecord* session, const Reflection& seen, int32_t u,
                                 int32_t v) {
  const int32_t* offset = session->shading.ripMapOffset;
  const int32_t column = (u >> seen.levelU) + offset[seen.levelU];
  const int32_t line = (v >> seen.levelV) + offset[seen.levelV];
  const uint8_t* pixel = static_cast<const uint8_t*>(session->render.environmentTable.address) +
                         line * kTableRowBytes + 4 * column;
  return {pixel[1], pixel[2], pixel[3]};
}

static RgbWord causticColour(const RowConstants& row, const ShadingTables& tables, Word32 slope) {
  const Rgb32& colour = tables.caustic[causticEntry(row, slope)];
  return {colour.red, colour.green, colour.blue};
}

static RgbWord addThrough(const RowConstants& row, const RgbWord& source, const RgbWord& light,
                          const RgbWord& caustic, Word32 through) {
  const Word32 clear = through * row.glass * row.transmitScale >> 16;
  const RgbWord arriving = {clear + caustic.red, clear + caustic.green, clear + caustic.blue};
  return (source * light * arriving) >> 16;
}

// Everything up to composition, for one pixel.
static LitPixel lightPixel(const SessionRecord* session, const RowConstants& row,
                           const CellBlock& h, const RgbWord& source, int32_t* beforeU,
                           int32_t* beforeV) {
  const ShadingTables& tables = session->shading;
  const RgbWord& light1 = row.colours.light1;
  const RgbWord& light2 = row.colours.light2;
  LightShare share1 = lightShare(row, row.light1, h);
  LightShare share2 = {};
  if (row.light2On) share2 = lightShare(row, row.light2, h);
  const Word32 slope = steepness(h);
  share1.through = lightThrough(row, share1, h.h00);
  if (row.light2On) share2.through = lightThrough(row, share2, h.h00);

  RgbWord colour =
      ((source * share1.shade * light1) >> 16) + ((source * share2.shade * light2) >> 16);
  Reflection seen = {};
  Word32 reflected = 0;
  if (row.reflectOn) {
    seen = reflectionOf(tables, h, beforeU, beforeV);
    // Glass mirrors more where it is steep, metal everywhere.
    const Word32 steep = smaller(slope * 140 >> 8, 256);
    const Word32 strength = (((Word32(256) - row.glass) << 8) + steep * row.glass) >> 8;
    reflected = row.reflectWeight * strength >> 8;
    colour = colour + ((environmentSample(session, seen, seen.u, seen.v) * reflected) >> 8);
  }
  colour = colour + ((light1 * share1.front + light2 * share2.front) >> 8);

  const Rgb32& film =
      tables.iridescence[smaller(slope >> kSlopeClassShift, kIridescenceEntries - 1).value];
  colour = (colour * RgbWord{film.red, film.green, film.blue}) >> 8;

  LitPixel lit;
  const RgbWord gathered = causticColour(row, tables, slope);
  lit.caustic1 = (gathered * share1.caustic) >> 8;
  lit.caustic2 = (gathered * share2.caustic) >> 8;
  colour = colour + addThrough(row, source, light1, lit.caustic1, share1.through) +
           addThrough(row, source, light2, lit.caustic2, share2.through);
  if (row.reflectOn) {
    constexpr int32_t last = kEnvironmentSide - 1;
    const Word32 behind = reflected * row.glass * row.reflectRest >> 16;
    const RgbWord view = environmentSample(session, seen, last - seen.u, last - seen.v);
    colour = colour + ((view * source * behind) >> 15);
  }
  lit.colour = colour;
  lit.source = source;
  lit.diffuse1 = share1.diffuse;
  lit.diffuse2 = share2.diffuse;
  return lit;
}

// The preview shows white and light grey squares of 8 pixels where nothing is selected.
static uint8_t overCheckerboard(uint8_t sample, int32_t mask, int32_t row, int32_t column) {
  const int32_t checker = ((row ^ column) & 8) == 0 ? 255 : 204;
  return static_cast<uint8_t>((sample * mask + checker * (255 - mask)) >> 8);
}

static void shadePlainRow(SessionRecord* session, const RowConstants& row, HostRows host) {
  const EffectSettings* settings = settingsOf(session);
  RenderState* render = &session->render;
  const int32_t r = render->currentRow;
  const bool tarnished = settings->tarnish != 0;
  const int32_t before = render->preview.place.columnsBefore;
  const int32_t* tarnishRow = lineBufferWords(render) + render->tarnishRowStart + before;
  int32_t* previousRow = lineBufferWords(render) + before;
  const int16_t* upper = fieldRow(render, r) + before;
  const int16_t* lower = fieldRow(render, r + 1) + before;
  const bool preview = isPreview(settings);
  const MaskRow mask = maskRow(session, r);
  const int32_t samples = host.grey ? 1 : 3;

  const int32_t line = r + render->preview.place.top;
  const int32_t firstColumn = before + render->preview.place.left;
  int32_t beforeU = reflectionBefore(session, r);
  for (int32_t c = 0; c < host.width; ++c) {
    const CellBlock h = {upper[c], upper[c + 1], lower[c], lower[c + 1]};
    const RgbWord source = host.grey ? RgbWord{host.in[0], host.in[0], host.in[0]}
                                     : RgbWord{host.in[0], host.in[1], host.in[2]};
    LitPixel lit = lightPixel(session, row, h, source, &beforeU, &previousRow[c]);
    lit.tarnish = tarnished ? tarnishRow[c] : 0;
    composePixel(lit, row.colours, settings->blendMode, session->shading.proceduralWeight,
                 host.grey, host.out);
    if (preview) {
      for (int32_t i = 0; i < samples; ++i) {
        host.out[i] = overCheckerboard(host.out[i], mask.value(before + c), line, firstColumn + c);
      }
    }
    host.in += host.inStep;
    host.out += host.outStep;
  }
}

void shadeRow(SessionRecord* session) {
  RenderState* render = &session->render;
  if (render->heightField.address == nullptr || render->lineBuffer.address == nullptr) return;
  HostRows host;
  if (!hostRows(session, &host)) {
    *session->result = kMemoryFull;
    return;
  }
  const bool ordinary = settingsOf(session)->tarnish == 0 || computeTarnishRow(session);
  const RowConstants row = rowConstants(session);
  if (!ordinary || !shadeRowInLanes(session, row, host)) shadePlainRow(session, row, host);
}
