// morvalis_artwork: draws every picture of the dialogs and writes the resource files.
//   morvalis_artwork FOLDER      writes FOLDER/bitmaps, FOLDER/icons, FOLDER/cursors, and
//                                FOLDER/hicolor with the program's icons for the desktop, and
//                                FOLDER/scaled with all pictures of the dialogs at larger scales
// Files that are there already are replaced; the bytes are the same on every run.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iterator>
#include <string>

#include "pictures/picture_surface.h"
#include "pictures/sources/builtin_pictures.h"
#include "platform/resource_access.h"
#include "resources/artwork/about_pictures.h"
#include "resources/artwork/background.h"
#include "resources/artwork/button_faces.h"
#include "resources/artwork/drawing/picture_packing.h"
#include "resources/artwork/drawing/picture_writing.h"
#include "resources/artwork/drawing/png_writing.h"
#include "resources/artwork/icons_and_cursors.h"
#include "resources/artwork/light_pad_pictures.h"
#include "resources/artwork/menu_pictures.h"
#include "resources/artwork/slider_tracks.h"
#include "services/scaling.h"
#include "settings/effect_settings.h"

namespace fs = std::filesystem;

constexpr int32_t kHandHot = 8;

struct NumberedPicture {
  int32_t number;
  const char* name;
};

// By value, from 1.
constexpr NumberedPicture kShapes[] = {
    {146, "chisel"},    {152, "ridge"},        {153, "sine"},  {154, "round"},  {155, "hollow"},
    {156, "step"},      {157, "double-ridge"}, {160, "crown"}, {163, "collar"}, {161, "twin-ridge"},
    {162, "twin-dome"}, {166, "soft-groove"},  {168, "groove"}};
constexpr NumberedPicture kTextures[] = {
    {187, "none"},   {188, "leather"}, {189, "scales"}, {190, "flakes"}, {191, "pebbles"},
    {192, "marble"}, {193, "cobbles"}, {194, "cells"},  {195, "clouds"}, {196, "brushed"},
    {197, "fibres"}, {198, "strata"},  {199, "file"}};
constexpr NumberedPicture kBlendModes[] = {
    {169, "normal"},     {175, "procedural-plus"}, {176, "procedural-minus"},
    {177, "difference"}, {178, "lighten"},         {179, "darken"},
    {180, "add"},        {181, "subtract"},        {182, "multiply"},
    {183, "screen"},     {184, "tarnish"},         {185, "caustic"}};

struct Writer {
  fs::path folder;
  int32_t files;
  std::vector<PackedPicture> pack;  // of a scale above 100 percent
  bool isRough;                     // what is rendered or shaded
};

static fs::path fileOf(Writer* writer, const char* folder, int32_t number, const std::string& name,
                       const char* ending) {
  const fs::path path = writer->folder / folder;
  fs::create_directories(path);
  ++writer->files;
  return path / (std::to_string(number) + "-" + name + ending);
}

static void bitmap(Writer* writer, int32_t number, const std::string& name,
                   const Picture& picture) {
  if (drawnScale() != kPlainScale)
    return writer->pack.push_back({number, picture, writer->isRough});
  writeBitmap(fileOf(writer, "bitmaps", number, name, ".bmp"), picture);
}

static void greyBitmap(Writer* writer, int32_t number, const std::string& name,
                       const Picture& picture) {
  writeGreyBitmap(fileOf(writer, "bitmaps", number, name, ".bmp"), picture);
}

static void icon(Writer* writer, int32_t number, const std::string& name,
                 const std::vector<Picture>& pictures) {
  if (drawnScale() != kPlainScale) {
    return writer->pack.push_back({kIconNumbers + number, pictures.front(), false});
  }
  writeIcon(fileOf(writer, "icons", number, name, ".ico"), pictures);
}

static void cursor(Writer* writer, int32_t number, const std::string& name,
                   const Picture& picture) {
  if (drawnScale() != kPlainScale) {
    return writer->pack.push_back({kCursorNumbers + number, picture, false});
  }
  writeCursor(fileOf(writer, "cursors", number, name, ".cur"), picture, kHandHot, kHandHot);
}

static void writeMainDialog(Writer* writer) {
  const Picture background = drawBackground();
  bitmap(writer, 239, "background", background);
  bitmap(writer, 240, "texture-link", drawTextureLink(background));
  bitmap(writer, 122, "blend-symbol", drawBlendSymbol(background));

  writer->isRough = true;
  bitmap(writer, 125, "track-radius", drawRadiusTrack());
  bitmap(writer, 136, "track-height", drawHeightTrack());
  bitmap(writer, 133, "track-texture", drawTextureTrack());
  bitmap(writer, 135, "track-texture-size", drawTextureSizeTrack());
  bitmap(writer, 137, "track-gloss", drawGlossTrack());
  bitmap(writer, 139, "track-glare", drawGlareTrack());
  bitmap(writer, 129, "track-reflection", drawReflectionTrack());
  bitmap(writer, 138, "track-glassiness", drawGlassinessTrack());
  bitmap(writer, 140, "track-caustic", drawCausticTrack());
  bitmap(writer, 142, "track-iridescence", drawIridescenceTrack());
  bitmap(writer, 221, "track-iri-colors", drawFilmColoursTrack());
  bitmap(writer, 130, "track-tarnish", drawTarnishTrack());
  writer->isRough = false;
  bitmap(writer, 120, "thumb", drawThumb(true));
  bitmap(writer, 241, "thumb-disabled", drawThumb(false));

  bitmap(writer, 237, "check-off", drawCheckToggle(false, false));
  bitmap(writer, 238, "check-on", drawCheckToggle(true, false));
  bitmap(writer, 234, "check-off-pressed", drawCheckToggle(false, true));
  bitmap(writer, 236, "check-on-pressed", drawCheckToggle(true, true));
  bitmap(writer, 148, "caustic-coloured", drawCausticToggle(false, false));
  bitmap(writer, 150, "caustic-grey", drawCausticToggle(true, false));
  bitmap(writer, 149, "caustic-coloured-pressed", drawCausticToggle(false, true));
  bitmap(writer, 151, "caustic-grey-pressed", drawCausticToggle(true, true));

  bitmap(writer, 223, "save", drawSaveFace());
  bitmap(writer, 224, "load", drawLoadFace());
  bitmap(writer, 225, "spin", drawSpinFace());
  bitmap(writer, 228, "randomize", drawRandomizeFace());
  writer->isRough = true;
  bitmap(writer, 218, "light-pad-1", drawLightPad(1));
  bitmap(writer, 219, "light-pad-2", drawLightPad(2));
  writer->isRough = false;
}

// What the effect renders is larger than it is shown anyway, and reduced: below twice the plain
// scale the dialogs do that, from the pack of the double scale or the largest one.
static bool isReducedLater(int32_t scale) {
  return scale != kPlainScale && scale < 2 * kPlainScale;
}

// The two with lines of their own.
static void writeDrawnMenus(Writer* writer) {
  bitmap(writer, 187, "texture-none", drawTexturePicture(kTextureChoiceNone));
  bitmap(writer, 199, "texture-file", drawTexturePicture(kTextureChoiceFile));
}

static void writeMenus(Writer* writer) {
  if (isReducedLater(drawnScale())) return writeDrawnMenus(writer);
  int32_t value = 0;
  writer->isRough = true;
  for (const NumberedPicture& row : kShapes) {
    bitmap(writer, row.number, std::string("shape-") + row.name, drawShapePicture(++value));
  }
  value = 0;
  for (const NumberedPicture& row : kTextures) {
    bitmap(writer, row.number, std::string("texture-") + row.name, drawTexturePicture(++value));
  }
  value = 0;
  for (const NumberedPicture& row : kBlendModes) {
    bitmap(writer, row.number, std::string("blend-") + row.name, drawBlendPicture(++value));
  }
  writer->isRough = false;
}

// The large soft pictures are in the largest pack alone; smaller ones are reduced from there.
static bool drawsLargePictures() {
  return drawnScale() == kPlainScale || drawnScale() == *std::rbegin(kScales);
}

static void writeAboutBox(Writer* writer) {
  if (drawsLargePictures()) {
    writer->isRough = true;
    bitmap(writer, 126, "about-title", drawAboutTitle());
    bitmap(writer, 131, "about-show", drawAboutShow());
    writer->isRough = false;
  }
  bitmap(writer, 127, "about-version", drawAboutVersion(MORVALIS_VERSION));
  bitmap(writer, 144, "about-mark", drawAboutMark());
}

static Picture builtInPicture(void (*draw)(PictureSurface* surface)) {
  Picture picture = newPicture(kBuiltInSide, kBuiltInSide, {0, 0, 0});
  PictureSurface surface = {kBuiltInSide, kBuiltInSide, picture.rgb.data()};
  draw(&surface);
  return picture;
}

static void writeBuiltInPictures(Writer* writer) {
  bitmap(writer, 204, "environment", builtInPicture(drawBuiltInEnvironment));
  greyBitmap(writer, 205, "texture", builtInPicture(drawBuiltInTexture));
  bitmap(writer, 206, "environment-surface", newPicture(128, 128, {0, 0, 0}));
  greyBitmap(writer, 207, "texture-surface", newPicture(256, 256, {0, 0, 0}));
}

static void writeModuleIcon(Writer* writer) {
  icon(writer, 101, "module", {drawModuleIcon(32), drawModuleIcon(16), drawModuleIcon(48)});
}

static void writeIconsAndCursors(Writer* writer) {
  icon(writer, 122, "light-handle", {drawLightHandle()});
  icon(writer, 148, "alert", {drawAlertIcon()});
  icon(writer, 202, "check-mark", {drawCheckMark()});
  cursor(writer, 107, "closed-hand", drawClosedHand());
  cursor(writer, 108, "open-hand", drawOpenHand());
}

// Laid out as icon themes are.
static void writeDesktopIcons(Writer* writer) {
  for (const int32_t side : {16, 32, 48, 128, 256}) {
    const std::string size = std::to_string(side) + "x" + std::to_string(side);
    const fs::path path = writer->folder / "hicolor" / size / "apps";
    fs::create_directories(path);
    ++writer->files;
    writePng(path / "morvalis.png", drawModuleIcon(side));
  }
}

static void writeScaled(Writer* writer) {
  fs::create_directories(writer->folder / "scaled");
  for (const int32_t scale : kScales) {
    if (scale == kPlainScale) continue;
    drawAtScale(scale);
    writer->pack.clear();
    writeMainDialog(writer);
    writeMenus(writer);
    writeAboutBox(writer);
    writeIconsAndCursors(writer);
    writePack(writer->folder / "scaled" / (std::to_string(scale) + ".pack"), writer->pack);
    ++writer->files;
  }
  drawAtScale(kPlainScale);
}

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: morvalis_artwork FOLDER\n", stderr);
    return 2;
  }
  try {
    Writer writer = {argv[1], 0, {}, false};
    writeMainDialog(&writer);
    writeMenus(&writer);
    writeAboutBox(&writer);
    writeBuiltInPictures(&writer);
    writeModuleIcon(&writer);
    writeIconsAndCursors(&writer);
    writeDesktopIcons(&writer);
    writeScaled(&writer);
    std::printf("%d files in %s\n", writer.files, argv[1]);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "morvalis_artwork: %s\n", error.what());
    return 1;
  }
}
