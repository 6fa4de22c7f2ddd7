// Writes what the fuzzers start from: a small file of each kind that the program reads by itself,
// and command lines.
//   morvalis_fuzz_seeds FOLDER      which holds a folder for each fuzzer

#include <cstdio>

#include "dialog/controls/control_table.h"
#include "hosts/png_files/png_write.h"
#include "hosts/small_formats/small_formats.h"

constexpr uint32_t kSide = 5;

static std::string folder;

static void save(const std::string& name, BytesView bytes) {
  writeWholeFile(folder + "/" + name, bytes);
}

static void put(uint64_t number, int count, FileBytes* bytes) {
  for (int i = 0; i < count; ++i) bytes->push_back(static_cast<uint8_t>(number >> (8 * i)));
}

static void putText(std::string_view text, FileBytes* bytes) {
  bytes->insert(bytes->end(), text.begin(), text.end());
}

// Bytes that are nowhere alike for long, none of them out of a palette of two.
static void putSamples(size_t count, FileBytes* bytes) {
  for (size_t i = 0; i < count; ++i) bytes->push_back(static_cast<uint8_t>(i * 37 % 251));
}

// --- Bitmaps and icons ----------------------------------------------------------------------

struct BitmapSeed {
  const char* name;
  uint32_t header;
  uint32_t bits;
  uint32_t packing;
};

constexpr BitmapSeed kBitmaps[] = {
    {"oldest", 12, 24, 0},   {"bits", 40, 1, 0},          {"nibbles", 40, 4, 0},
    {"palette", 40, 8, 0},   {"five-bits", 40, 16, 0},    {"colours", 40, 24, 0},
    {"wide", 40, 32, 0},     {"runs", 40, 8, 1},          {"short-runs", 40, 4, 2},
    {"masks", 40, 16, 3},    {"wide-masks", 40, 32, 3},   {"alpha-masks", 56, 32, 3},
    {"longest", 124, 24, 0}, {"other-masks", 108, 16, 6}, {"old-palette", 12, 4, 0},
    {"old-bits", 12, 1, 0}};

// Runs, samples as they are, a jump, an end of a row and the end.
constexpr uint8_t kRuns[] = {3, 1, 2, 0, 0, 0, 0, 3, 1, 2, 3, 0,
                             0, 2, 1, 1, 2, 1, 0, 0, 5, 1, 0, 1};

static FileBytes infoHeader(const BitmapSeed& seed, uint32_t height) {
  FileBytes info;
  put(seed.header, 4, &info);
  const bool oldest = seed.header == 12;
  put(kSide, oldest ? 2 : 4, &info);
  put(height, oldest ? 2 : 4, &info);
  put(1, 2, &info);
  put(seed.bits, 2, &info);
  if (!oldest) {
    put(seed.packing, 4, &info);
    put(0, 4, &info);
    put(2835, 4, &info);
    put(2835, 4, &info);
    put(0, 8, &info);
    const bool wide = seed.bits == 32;
    const uint32_t masks[] = {wide ? 0xFF0000U : 0xF800U, wide ? 0xFF00U : 0x7E0U,
                              wide ? 0xFFU : 0x1FU, wide ? 0xFF000000U : 0};
    for (int i = 0; i < (seed.header > 40 ? 4 : seed.packing == 3 ? 3 : 0); ++i) {
      put(masks[i], 4, &info);
    }
    info.resize(std::max<size_t>(info.size(), seed.header));
  }
  for (uint32_t i = 0; seed.bits <= 8 && i < 1U << seed.bits; ++i) {
    put(i * 0x030201U, oldest ? 3 : 4, &info);
  }
  return info;
}

static void putRows(const BitmapSeed& seed, FileBytes* bytes) {
  if (seed.packing == 1 || seed.packing == 2) {
    bytes->insert(bytes->end(), std::begin(kRuns), std::end(kRuns));
  } else {
    putSamples((kSide * seed.bits + 31) / 32 * 4 * kSide, bytes);
  }
}

static void saveIcon(const std::string& name, uint32_t kind, const FileBytes& content) {
  FileBytes icon;
  put(0, 2, &icon);
  put(kind, 2, &icon);
  put(1, 2, &icon);
  put(kSide | kSide << 8, 4, &icon);
  put(1 | 32U << 16, 4, &icon);
  put(static_cast<uint32_t>(content.size()), 4, &icon);
  put(static_cast<uint32_t>(icon.size()) + 4, 4, &icon);
  icon.insert(icon.end(), content.begin(), content.end());
  save(name, icon);
}

static void saveBitmaps() {
  for (const BitmapSeed& seed : kBitmaps) {
    FileBytes info = infoHeader(seed, kSide);
    FileBytes file;
    putText("BM", &file);
    put(0, 8, &file);
    put(static_cast<uint32_t>(14 + info.size()), 4, &file);
    putRows(seed, &info);
    file.insert(file.end(), info.begin(), info.end());
    save(std::string(seed.name) + ".bmp", file);

    FileBytes content = infoHeader(seed, 2 * kSide);
    putRows(seed, &content);
    putSamples(size_t{4} * kSide, &content);
    saveIcon(std::string(seed.name) + ".ico", 1, content);
  }
}

// --- Targa and portable maps ----------------------------------------------------------------

static void saveTarga(uint32_t kind, uint32_t bits, uint32_t colorBits, uint32_t flags) {
  FileBytes file;
  put(3 | (colorBits != 0 ? 1U : 0U) << 8 | kind << 16, 3, &file);
  put(0, 2, &file);
  put(colorBits != 0 ? 256 : 0, 2, &file);
  put(colorBits, 1, &file);
  put(0, 4, &file);
  put(kSide | kSide << 16, 4, &file);
  put(bits | flags << 8, 2, &file);
  putText("abc", &file);
  putSamples(colorBits != 0 ? 256 * ((colorBits + 7) / 8) : 0, &file);
  const size_t pixelBytes = (bits + 7) / 8;
  if (kind < 8) {
    putSamples(pixelBytes * kSide * kSide, &file);
  } else {
    put(0x80 | (kSide - 1), 1, &file);
    putSamples(pixelBytes, &file);
    put(kSide * (kSide - 1) - 1, 1, &file);
    putSamples(pixelBytes * kSide * (kSide - 1), &file);
  }
  save("kind-" + std::to_string(kind) + "-" + std::to_string(bits + colorBits) + ".tga", file);
}

static void saveSmallFiles() {
  for (const uint32_t kind : {2U, 10U}) {
    for (const uint32_t bits : {15U, 16U, 24U, 32U}) saveTarga(kind, bits, 0, kind * 16 + 8);
    for (const uint32_t bits : {16U, 24U, 32U}) saveTarga(kind - 1, 8, bits, 0x28);
    saveTarga(kind + 1, 8, 0, 0x30);
  }
  for (int kind = 1; kind <= 6; ++kind) {
    for (const char* most : {"255", "65535"}) {
      const bool bits = kind == 1 || kind == 4;
      FileBytes file;
      putText("P" + std::to_string(kind) + " # a note\n2 2\n", &file);
      if (!bits) putText(std::string(most) + "\n", &file);
      if (kind <= 3) {
        putText(bits ? "1 0 0 1" : "1 255 0 7 9 3 4 5 200 2 2 2", &file);
      } else {
        putSamples(24, &file);
      }
      save("kind-" + std::to_string(kind) + "-" + most + ".pnm", file);
    }
  }
}

// --- PNG files and notes --------------------------------------------------------------------

// A block of a camera's with a small picture, as either order of bytes has it.
static FileBytes exifBlock(bool bigEndian) {
  FileBytes exif;
  const auto number = [&](uint32_t value, int count) {
    for (int i = 0; i < count; ++i) {
      exif.push_back(static_cast<uint8_t>(value >> (8 * (bigEndian ? count - 1 - i : i))));
    }
  };
  const auto entry = [&](uint32_t tag, uint32_t type, uint32_t value) {
    number(tag, 2);
    number(type, 2);
    number(1, 4);
    number(value, type == 3 ? 2 : 4);
    if (type == 3) number(0, 2);
  };
  constexpr uint32_t kCamera = 8 + 2 + 5 * 12 + 4;
  constexpr uint32_t kSmall = kCamera + 2 + 2 * 12 + 4;
  constexpr uint32_t kRatios = kSmall + 2 + 2 * 12 + 4;
  putText(bigEndian ? "MM" : "II", &exif);
  number(42, 2);
  number(8, 4);
  number(5, 2);
  entry(0x0112, 3, 6);
  entry(0x011A, 5, kRatios);
  entry(0x011B, 5, kRatios + 8);
  entry(0x0128, 3, 3);
  entry(0x8769, 4, kCamera);
  number(kSmall, 4);
  number(2, 2);
  entry(0xA002, 4, 5);
  entry(0xA003, 4, 4);
  number(0, 4);
  number(2, 2);
  entry(0x0201, 4, kRatios + 16);
  entry(0x0202, 4, 6);
  number(0, 4);
  for (const uint32_t value : {300U, 1U, 150U, 2U}) number(value, 4);
  putSamples(6, &exif);
  return exif;
}

static PictureMetadata anyMetadata() {
  PictureMetadata metadata;
  metadata.exif = exifBlock(false);
  putSamples(40, &metadata.profile);
  putText("<x tiff:Orientation=\"6\"/><tiff:Orientation>3</tiff:Orientation>", &metadata.xmp);
  metadata.iptc = {0x1C, 2, 5, 0, 3, 'a', 'b', 'c'};
  metadata.dotsPerMeterX = 3000;
  metadata.dotsPerMeterY = 2000;
  metadata.texts = {{"Title", "plain", "", ""}, {"Author", "\xC3\xA9\xE2\x82\xAC", "fr", "Auteur"}};
  return metadata;
}

static void savePngs() {
  for (int kind = 0; kind < 16; ++kind) {
    Picture picture;
    const size_t pixels = size_t{kSide} * kSide;
    const int32_t planes = (kind & 1) != 0 ? 3 : 1;
    picture.colors = {kSide, kSide, planes, {}};
    putSamples(pixels * static_cast<size_t>(planes), &picture.colors.samples);
    if ((kind & 2) != 0) putSamples(pixels, &picture.alpha);
    if ((kind & 4) != 0) {
      picture.sampleBits = 16;
      picture.deep.colors.assign(picture.colors.samples.size(), 0x1234);
      picture.deep.alpha.assign(picture.alpha.size(), 0xABCD);
    }
    if ((kind & 8) != 0) picture.metadata = anyMetadata();
    const std::string name = folder + "/kind-" + std::to_string(kind) + ".png";
    OutputFile output;
    openOutput(name, &output);
    writePng(picture, kind % 2 == 0 ? kQuickPacking : 9, &output);
    finishOutput(&output);
    saveIcon("kind-" + std::to_string(kind) + ".png.ico", 2, readWholeFile(name, "a picture"));
  }
}

static void saveNotes() {
  save("little.exif", exifBlock(false));
  save("big.exif", exifBlock(true));
  FileBytes named;
  putText({"Exif\0\0", 6}, &named);
  const FileBytes exif = exifBlock(true);
  named.insert(named.end(), exif.begin(), exif.end());
  save("named.exif", named);
  FileBytes iptc;
  putText({"Photoshop 3.0\0", 14}, &iptc);
  putText({"8BIM\4\2\0\0\0\0\0\3abc\0", 16}, &iptc);
  putText({"8BIM\4\4\0\0\0\0\0\5\x1C\2\5\0\0\0", 18}, &iptc);
  save("photoshop.iptc", iptc);
}

// --- Command lines --------------------------------------------------------------------------

// As bytes that the fuzzer of command lines takes: the length of a word, then its letters.
static void saveCommandLines() {
  constexpr const char* kLines[] = {
      "light1Dir=0.5,-0.5,0.7 light1Color=#ff8000 tarnishColor=1,2,65535",
      "shape=ridge blendMode=multiply textureChoice=marble shape=7",
      "radius=-1 radius=1e9 radius= =5 radius nothing=1 light1Dir=0,0,0 light1Color=#12",
      "radus=5 glos=3 RADIUS=7"};
  int count = 0;
  for (const std::string line : kLines) {
    FileBytes words;
    for (size_t at = 0; at <= line.size();) {
      const size_t end = std::min(line.find(' ', at), line.size());
      words.push_back(static_cast<uint8_t>(192 + std::min<size_t>(end - at, 31)));
      for (size_t i = at; i < std::min(end, at + 31); ++i) {
        words.push_back(static_cast<uint8_t>(line[i] - 1));
      }
      at = end + 1;
    }
    save("line-" + std::to_string(++count), words);
  }
}

// --- The dialog -----------------------------------------------------------------------------

// Actions as the fuzzer of the dialog takes them.
struct Play {
  FileBytes bytes;

  Play& put(std::initializer_list<int32_t> more) {
    for (const int32_t byte : more) bytes.push_back(static_cast<uint8_t>(byte));
    return *this;
  }
  static int32_t placeOf(int32_t id) {
    int32_t place = 0;
    while (place + 1 < kMainDialog.controlCount && kMainDialog.controls[place].id != id) ++place;
    return place;
  }
  Play& press(int32_t id, int32_t v = 128, int32_t h = 128) {
    return put({0, placeOf(id), v, h});
  }
  Play& move(int32_t id, int32_t v, int32_t h) {
    return put({1, placeOf(id), v, h});
  }
  Play& release(int32_t id, int32_t v = 128, int32_t h = 128) {
    return put({2, placeOf(id), v, h});
  }
  Play& command(int32_t id) {
    return put({8, placeOf(id), 1});
  }
  Play& key(WindowKey key, int32_t shift = 0) {
    return put({10, static_cast<int32_t>(key), shift});
  }
  Play& type(char character) {
    return put({10, static_cast<int32_t>(WindowKey::character), character - 1});
  }
  Play& use(int32_t id) {
    return put({13, placeOf(id)});
  }
  Play& set(int32_t id, int32_t amount) {
    return put({14, placeOf(id), amount, 0});
  }
};

// On a picture of this kind, whose host can show it; `shape` as the fuzzer has it.
static Play openDialog(int32_t width, int32_t shape = 6) {
  return Play().put({0, 0x77, width, shape});
}

static void saveDialogs() {
  constexpr int32_t kRead = 15;
  for (int32_t width = 0; width < 4; ++width) {
    Play play = openDialog(width);
    play.command(kZoomInButton).press(kPreviewArea).move(kPreviewArea, 90, 60);
    play.move(kPreviewArea, 60, 90).release(kPreviewArea, 60, 90).press(kPreviewArea);
    play.move(kPreviewArea, 30, 30).put({10, static_cast<int32_t>(WindowKey::escape), 0});
    play.put({6, Play::placeOf(kPreviewArea), 99, 99}).put({7, Play::placeOf(kPreviewArea), 9, 9});
    play.command(kZoomButton).press(kPreviewArea).release(kPreviewArea);
    for (const WindowKey key : {WindowKey::left, WindowKey::pageDown, WindowKey::home})
      play.key(key);
    play.press(kRadiusSlider).move(kRadiusSlider, 9, 9).release(kRadiusSlider).key(WindowKey::undo);
    play.key(WindowKey::redo).command(kZoomOutButton).key(WindowKey::undo).put({kRead});
    save("dialog-view-" + std::to_string(width), play.bytes);
  }
  Play menus = openDialog(0);
  for (const int32_t id : {kShapePicker, kTexturePicker, kBlendPicker}) {
    menus.use(id);
    for (const WindowKey key : {WindowKey::up, WindowKey::end, WindowKey::home, WindowKey::enter}) {
      menus.put({6, static_cast<int32_t>(key), 0});
    }
    menus.press(id).put({3}).put({4}).put({6, static_cast<int32_t>(WindowKey::character), 'm' - 1});
    menus.put({6, static_cast<int32_t>(WindowKey::escape), 0}).set(id, 3).put({kRead});
  }
  save("dialog-menus", menus.bytes);
  Play sliders = openDialog(0);
  for (const Slider& slider : kSliders) {
    sliders.set(slider.id, 40).press(slider.valueArea).release(slider.id).type('7');
  }
  save("dialog-sliders", sliders.bytes);
  Play keys = openDialog(1);
  keys.type('?').key(WindowKey::copy).key(WindowKey::help).set(kLight1Pad, 200);
  for (int32_t i = 0; i < 12; ++i) keys.key(WindowKey::tab).type(' ').key(WindowKey::right, 1);
  keys.press(kRadiusSlider).release(kRadiusSlider).type('1').type('7').key(WindowKey::backspace);
  keys.put({10, static_cast<int32_t>(WindowKey::enter), 0}).put({15});
  save("dialog-keys", keys.bytes);
}

// --- Long sessions --------------------------------------------------------------------------

// Chance from a fixed start: the fuzzers make their inputs longer only slowly by themselves.
static void saveSessions() {
  constexpr int kSessions = 32;
  constexpr int kBytes = 500;
  uint32_t state = 1;
  for (int i = 0; i < kSessions; ++i) {
    FileBytes bytes;
    for (int k = 0; k < kBytes; ++k) {
      state = state * 1664525U + 1013904223U;
      bytes.push_back(static_cast<uint8_t>(state >> 24));
    }
    save("session-" + std::to_string(i), bytes);
  }
}

int main(int count, char** words) {
  if (count != 2) {
    std::fputs("usage: morvalis_fuzz_seeds FOLDER\n", stderr);
    return 2;
  }
  folder = words[1] + std::string("/picture_file");
  saveBitmaps();
  saveSmallFiles();
  savePngs();
  saveNotes();
  folder = words[1] + std::string("/command_line");
  saveCommandLines();
  folder = words[1] + std::string("/dialog");
  saveDialogs();
  for (const char* fuzzer : {"dialog", "host", "kept_blocks", "script"}) {
    folder = words[1] + std::string("/") + fuzzer;
    saveSessions();
  }
  return 0;
}
