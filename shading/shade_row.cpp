#include "shading/shade_row.h"

#include <algorithm>
#include <cstdlib>

#include "entry/session_record.h"
#include "geometry/field/selection_mask.h"
#include "pictures/environment_picture.h"
#include "shading/compose_pixel.h"
#include "shading/lit_pixel.h"
#include "shading/tarnish.h"

constexpr int32_t kLightRest = 171;  // share of a light above 256 that is kept, in 1/256
constexpr int32_t kDiagonal = 181;   // 1 / sqrt(2), in 1/256
constexpr int32_t kAngleLimit = kAngleEntries - 1;
constexpr int32_t kReflectionCentre = 512;  // environment coordinate of flat ground, in 1/16
constexpr int32_t kReflectionLimit = 1023;
constexpr int32_t kTableRowBytes = 4 * kEnvironmentSurfaceSide;
constexpr int32_t kSlopeClassShift = 3;
constexpr int32_t kCausticCentre = kCausticEntries / 2;
constexpr int32_t kSteepestCaustic = 35;  // height beyond which caustics grow no sharper

// What holds for one light in all pixels of a row.
struct LightConstants {
  const LightStencil* main;
  const LightStencil* side;
  const LightStencil* caustic;
  Word32 elevation;
};

// What holds for all pixels of a row.
struct RowConstants {
  LightConstants light1;
  LightConstants light2;
  RowLights colours;
  bool light2On;
  bool reflectOn;
  Word32 glass;          // 0 to 256
  Word32 transmitScale;  // 0 to 256
  Word32 reflectRest;    // 0 to 256
  Word32 reflectWeight;  // 0 to 256
  Word32 glareWidth;
  Word32 glossScale;
  Word32 glossDivisor;
  Word32 edgeHeight;  // the profile on and outside the selection's edge
  Word32 depthSpan;   // at least 1
  Word32 heightReference;
  Word32 slopeReference;
  Word32 causticGain;
  Word32 causticSharpness;
  Word32 causticFloor;
};

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

static RgbWord lightColour(const Color16& colour) {
  return {colour.red >> 8, colour.green >> 8, colour.blue >> 8};
}

static RowConstants rowConstants(const SessionRecord* session) {
  const EffectSettings* settings = settingsOf(session);
  const ShadingTables& tables = session->shading;
  const LightStencil* stencils = tables.stencils;
  RowConstants row;
  row.light1 = {&stencils[kLight1Main], &stencils[kLight1Side], &stencils[kLight1Caustic],
                settings->light1Elevation};
  row.light2 = {&stencils[kLight2Main], &stencils[kLight2Side], &stencils[kLight2Caustic],
                settings->light2Elevation};
  row.colours = {lightColour(settings->light1Color), lightColour(settings->light2Color),
                 lightColour(settings->tarnishColor)};
  const RgbWord& light2 = row.colours.light2;
  row.light2On = light2.red > 0 || light2.green > 0 || light2.blue > 0;
  row.reflectOn = settings->environmentPicture != nullptr && settings->reflection != 0 &&
                  session->render.environmentTable.address != nullptr;
  row.glass = Word32(settings->glassiness) * 256 / 100;
  row.reflectWeight = tables.reflectWeight;
  row.reflectRest = tables.reflectRest;
  row.transmitScale = Word32(256) - (row.reflectWeight * row.reflectWeight >> 8);
  row.glareWidth = Word32(settings->glare) * 3 / 2;
  row.glossScale = Word32(settings->gloss) * 5;
  row.glossDivisor = row.glareWidth * 75;
  row.edgeHeight = session->render.profile[kProfileEntries - 1];
  const Word32 lowest = -Word32(session->render.depthLow);
  row.depthSpan = absolute(Word32(2) * lowest / 3);
  if (row.depthSpan == 0) row.depthSpan = 1;
  const Word32 height = absolute(settings->height);
  row.heightReference = height + 20;
  row.slopeReference = larger(absolute(Word32(settings->height) * 300 / 45), row.heightReference);
  const Word32 bevel = limited(height, 1, kSteepestCaustic);
  row.causticGain = row.glass * settings->caustic / 75;
  row.causticSharpness = Word32(8960) / bevel;
  const Word32 missing = Word32(kSteepestCaustic) - bevel;
  row.causticFloor = missing * missing * 255 / 1225;
  return row;
}

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

static int32_t environmentCoordinate(const ShadingTables& tables, int32_t difference) {
  const int32_t step = std::clamp(difference, -kAngleLimit, kAngleLimit);
  const int32_t angle = tables.reflectionAngle[std::abs(step)];
  const int32_t coordinate = kReflectionCentre + (step < 0 ? -angle : angle);
  return std::clamp(coordinate, 0, kReflectionLimit) >> 4;
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
  const Word32 index =
      Word32(kCausticCentre) -
      (row.heightReference - (row.slopeReference - slope)) * kCausticCentre / row.heightReference;
  const Rgb32& colour = tables.caustic[limited(index, 0, kCausticEntries - 1).value];
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

// The host's rows and how far apart their pixels are.
struct HostRows {
  const uint8_t* in;
  uint8_t* out;
  int32_t inStep;   // bytes
  int32_t outStep;  // bytes
  bool grey;
  int32_t width;  // pixels
};

// False when the host's buffers are missing or cannot hold the planes.
static bool hostRows(const SessionRecord* session, HostRows* rows) {
  const FilterRecord* filter = session->filter;
  if (filter->inData == nullptr || filter->outData == nullptr) return false;
  const bool preview = isPreview(settingsOf(session));
  const int64_t r = preview ? session->render.currentRow : 0;
  rows->in = filter->inData + r * filter->inRowBytes;
  rows->out = filter->outData + r * filter->outRowBytes;
  rows->inStep = filter->inHiPlane - filter->inLoPlane + 1;
  rows->outStep = filter->outHiPlane - filter->outLoPlane + 1;
  rows->grey = filter->planes < 3;
  // Hosts may cut either rectangle.
  rows->width = std::min({filter->outRect.right - filter->outRect.left,
                          filter->inRect.right - filter->inRect.left, session->render.renderWidth});
  const int32_t needed = rows->grey ? 1 : 3;
  return rows->inStep >= needed && rows->outStep >= needed;
}

void shadeRow(SessionRecord* session) {
  const EffectSettings* settings = settingsOf(session);
  RenderState* render = &session->render;
  if (render->heightField.address == nullptr || render->lineBuffer.address == nullptr) return;
  HostRows host;
  if (!hostRows(session, &host)) {
    *session->result = kMemoryFull;
    return;
  }
  const RowConstants row = rowConstants(session);
  const int32_t r = render->currentRow;
  const bool tarnished = settings->tarnish != 0;
  if (tarnished) computeTarnishRow(session);
  const int32_t* tarnishRow = lineBufferWords(render) + render->tarnishRowStart;
  int32_t* previousRow = lineBufferWords(render);
  const int16_t* upper = fieldRow(render, r);
  const int16_t* lower = fieldRow(render, r + 1);
  const bool preview = isPreview(settings);
  const MaskRow mask = maskRow(session, r);
  const int32_t samples = host.grey ? 1 : 3;

  int32_t beforeU = kReflectionStart;
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
        host.out[i] = overCheckerboard(host.out[i], mask.value(c), r, c);
      }
    }
    host.in += host.inStep;
    host.out += host.outStep;
  }
}
