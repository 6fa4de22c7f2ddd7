#include "shading/row_constants.h"

#include <algorithm>
#include <cstdlib>

#include "entry/session_record.h"
#include "shading/shade_row.h"

constexpr int32_t kSteepestCaustic = 35;  // height beyond which caustics grow no sharper
constexpr int32_t kCausticCentre = kCausticEntries / 2;
constexpr int32_t kAngleLimit = kAngleEntries - 1;
constexpr int32_t kReflectionCentre = 512;  // environment coordinate of flat ground, in 1/16
constexpr int32_t kReflectionLimit = 1023;

static RgbWord lightColour(const Color16& colour) {
  return {colour.red >> 8, colour.green >> 8, colour.blue >> 8};
}

RowConstants rowConstants(const SessionRecord* session) {
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

int32_t causticEntry(const RowConstants& row, Word32 slope) {
  const Word32 entry =
      Word32(kCausticCentre) -
      (row.heightReference - (row.slopeReference - slope)) * kCausticCentre / row.heightReference;
  return limited(entry, 0, kCausticEntries - 1).value;
}

int32_t environmentCoordinate(const ShadingTables& tables, int32_t difference) {
  const int32_t step = std::clamp(difference, -kAngleLimit, kAngleLimit);
  const int32_t angle = tables.reflectionAngle[std::abs(step)];
  const int32_t coordinate = kReflectionCentre + (step < 0 ? -angle : angle);
  return std::clamp(coordinate, 0, kReflectionLimit) >> 4;
}

int32_t reflectionBefore(SessionRecord* session, int32_t row) {
  RenderState* render = &session->render;
  const int32_t first = render->preview.place.columnsBefore;
  if (first == 0) return kReflectionStart;
  const int16_t* cells = fieldRow(render, row);
  return environmentCoordinate(session->shading, cells[first] - cells[first - 1]);
}

bool hostRows(const SessionRecord* session, HostRows* rows) {
  const FilterRecord* filter = session->filter;
  if (filter->inData == nullptr || filter->outData == nullptr) return false;
  const bool preview = isPreview(settingsOf(session));
  const RenderState& render = session->render;
  const int64_t r = preview ? render.currentRow - render.preview.place.rowsBefore : 0;
  rows->in = filter->inData + r * filter->inRowBytes;
  rows->out = filter->outData + r * filter->outRowBytes;
  rows->inStep = filter->inHiPlane - filter->inLoPlane + 1;
  rows->outStep = filter->outHiPlane - filter->outLoPlane + 1;
  rows->grey = filter->planes < 3;
  // Hosts may cut either rectangle, and make neither larger than was asked for.
  rows->width = std::min({filter->outRect.right - filter->outRect.left,
                          filter->inRect.right - filter->inRect.left,
                          render.renderWidth - render.preview.place.columnsBefore});
  if (preview) {
    const Rectangle& asked = render.preview.frame;  // empty: by another way
    if (!isEmptyRect(asked)) rows->width = std::min(rows->width, asked.right - asked.left);
    const int32_t height = std::min(filter->outRect.bottom - filter->outRect.top,
                                    filter->inRect.bottom - filter->inRect.top);
    if (r < 0 || r >= height) return false;
  }
  const int32_t needed = rows->grey ? 1 : 3;
  return rows->inStep >= needed && rows->outStep >= needed;
}
