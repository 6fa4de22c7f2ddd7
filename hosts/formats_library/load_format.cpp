#include <algorithm>
#include <cstring>
#include <string_view>

#include "hosts/formats_library/formats.h"
#include "hosts/picture_files/exif_block.h"
#include "hosts/process/libraries/quiet_errors.h"

constexpr int kMostBands = 4;

static void (*progress)(int32_t done, int32_t total) = nullptr;

void tellProgress(void (*tell)(int32_t done, int32_t total)) {
  progress = tell;
}

static void stopWhenAsked(VipsImage* image, VipsProgress* work, void* stop) {
  if (progress != nullptr && work != nullptr) progress(work->percent, 100);
  if (reinterpret_cast<bool (*)()>(stop)()) vips_image_set_kill(image, TRUE);
}

void watchStop(VipsImage* image, bool (*stop)()) {
  vips_image_set_progress(image, TRUE);
  g_signal_connect(image, "eval", G_CALLBACK(stopWhenAsked), reinterpret_cast<void*>(stop));
}

// Families of the ISO container: pictures as phones take them.
static bool isHeif(BytesView file) {
  return beginsWith(file.part(4), "ftyp");
}

// Of a file that was cut off some readers do not even know what it was.
static bool beginsAsPicture(BytesView file) {
  using namespace std::string_view_literals;
  constexpr std::string_view kMarks[] = {"II*\0"sv, "MM\0*"sv, "GIF8"sv, "\xFF\xD8\xFF"sv};
  const bool webp = beginsWith(file, "RIFF") && beginsWith(file.part(8), "WEBP");
  return webp || std::any_of(std::begin(kMarks), std::end(kMarks),
                             [file](std::string_view mark) { return beginsWith(file, mark); });
}

static bool isJpegXl(BytesView file) {
  using namespace std::string_view_literals;
  return beginsWith(file, "\xFF\x0A") || beginsWith(file, "\0\0\0\x0CJXL "sv);
}

// Why no reader takes the file.
static std::string whyUnknown(BytesView file) {
  if (beginsAsPicture(file)) return "is damaged or cut off";
  if (isHeif(file))
    return "cannot be read: libvips is installed without its part for HEIC and AVIF";
  if (!isJpegXl(file)) return kNotAPicture;
  return moreFormatsWanted() ? "cannot be read: libvips is installed without its part for JPEG XL"
                             : "is a JPEG XL file, whose reader has not been tested with damaged "
                               "files as the others "
                               "have; MORVALIS_MORE_FORMATS=1 lets it be used";
}

std::string loadFailure(bool (*stop)()) {
  const std::string reason = takeReason();
  if (stop()) return kStopped;
  if (reason.find("blocked") != std::string::npos) {
    return "is of a format whose reader has not been tested with damaged files as the others "
           "have; MORVALIS_MORE_FORMATS=1 lets it be used";
  }
  // None is the file's fault.
  constexpr const char* kOtherFaults[] = {"thread", "memory", "samples out of range",
                                          "unsupported"};
  const bool other =
      std::any_of(std::begin(kOtherFaults), std::end(kOtherFaults),
                  [&reason](const char* fault) { return reason.find(fault) != std::string::npos; });
  if (other) return "cannot be read: " + reason;
  return "is damaged or cut off" + (reason.empty() ? "" : ": " + reason);
}

// --- Colours --------------------------------------------------------------------------------

static bool needsProfile(VipsInterpretation kind) {
  return kind == VIPS_INTERPRETATION_CMYK;
}

static const char* nameOf(VipsInterpretation kind) {
  switch (kind) {
    case VIPS_INTERPRETATION_CMYK:
      return "CMYK";
    case VIPS_INTERPRETATION_LAB:
    case VIPS_INTERPRETATION_LABQ:
    case VIPS_INTERPRETATION_LABS:
      return "Lab";
    case VIPS_INTERPRETATION_scRGB:
      return "floating-point";
    default:
      return "";
  }
}

// Floating-point alpha is 0 to 1, which the library takes for a shallow one.
static VipsImage* coloursAndAlphaOf(VipsImage* image) {
  VipsRef colors;
  VipsRef deepColors;
  VipsRef alpha;
  VipsRef scaled;
  VipsRef deepAlpha;
  VipsImage* out = nullptr;
  if (vips_extract_band(image, &colors.image, 0, "n", 3, nullptr) != 0 ||
      vips_colourspace(colors.image, &deepColors.image, VIPS_INTERPRETATION_RGB16, nullptr) != 0 ||
      vips_extract_band(image, &alpha.image, 3, nullptr) != 0 ||
      vips_linear1(alpha.image, &scaled.image, 65535, 0.5, nullptr) != 0 ||
      vips_cast_ushort(scaled.image, &deepAlpha.image, nullptr) != 0 ||
      vips_bandjoin2(deepColors.image, deepAlpha.image, &out, nullptr) != 0) {
    return nullptr;
  }
  return out;
}

// To sRGB by the picture's own profile, or a usual one of its kind.
static bool convertColors(VipsRef* held, Picture* picture) {
  const VipsInterpretation kind = held->image->Type;
  const std::string name = nameOf(kind);
  if (name.empty()) return true;
  const bool deep = vips_format_sizeof(held->image->BandFmt) > 1;
  VipsImage* out = nullptr;
  int error = 0;
  if (kind == VIPS_INTERPRETATION_scRGB && held->image->Bands == kMostBands) {
    out = coloursAndAlphaOf(held->image);
    error = out == nullptr ? 1 : 0;
  } else if (kind == VIPS_INTERPRETATION_LABQ) {
    // Exactly; the direct way goes by a coarse table.
    VipsRef lab;
    error = vips_colourspace(held->image, &lab.image, VIPS_INTERPRETATION_LAB, nullptr) != 0 ||
            vips_colourspace(lab.image, &out, VIPS_INTERPRETATION_sRGB, nullptr) != 0;
  } else if (needsProfile(kind)) {
    error = vips_icc_transform(held->image, &out, "srgb", "embedded", TRUE, "input_profile", "cmyk",
                               "depth", deep ? 16 : 8, nullptr);
  } else {
    error = vips_colourspace(held->image, &out,
                             deep ? VIPS_INTERPRETATION_RGB16 : VIPS_INTERPRETATION_sRGB, nullptr);
  }
  if (error != 0) return false;
  held->replace(out);
  vips_image_remove(held->image, VIPS_META_ICC_NAME);
  if (kind != VIPS_INTERPRETATION_scRGB) picture->converted = name;
  return true;
}

// To 8 or 16 bits without a sign.
static bool convertSamples(VipsRef* held) {
  const VipsBandFormat format = held->image->BandFmt;
  if (format == VIPS_FORMAT_UCHAR || format == VIPS_FORMAT_USHORT) return true;
  VipsImage* out = nullptr;
  if (format == VIPS_FORMAT_FLOAT || format == VIPS_FORMAT_DOUBLE) {
    VipsRef scaled;
    if (vips_linear1(held->image, &scaled.image, 65535, 0.5, nullptr) != 0 ||
        vips_cast_ushort(scaled.image, &out, nullptr) != 0) {
      return false;
    }
  } else if (vips_cast(held->image, &out, VIPS_FORMAT_USHORT, "shift", TRUE, nullptr) != 0) {
    return false;
  }
  held->replace(out);
  return true;
}

// --- Planes ---------------------------------------------------------------------------------

static uint8_t shallow(uint8_t sample) {
  return sample;
}
template <typename Sample>
static void takePlanes(const Sample* from, size_t pixels, int bands, Picture* picture) {
  const int planes = picture->colors.planes;
  const bool alpha = bands == 2 || bands == kMostBands;
  picture->colors.samples.resize(pixels * static_cast<size_t>(planes));
  if (alpha) picture->alpha.resize(pixels);
  uint8_t* color = picture->colors.samples.data();
  for (size_t i = 0; i < pixels; ++i, from += bands) {
    for (int plane = 0; plane < planes; ++plane) *color++ = shallow(from[plane]);
    if (alpha) picture->alpha[i] = shallow(from[planes]);
  }
}

static void takeDeepPlanes(const uint16_t* from, size_t pixels, int bands, Picture* picture) {
  const int planes = picture->colors.planes;
  for (size_t i = 0; i < pixels; ++i, from += bands) {
    picture->deep.colors.insert(picture->deep.colors.end(), from, from + planes);
    if (bands > planes) picture->deep.alpha.push_back(from[planes]);
  }
}

static bool takePixels(VipsImage* image, Picture* picture) {
  size_t bytes = 0;
  void* memory = vips_image_write_to_memory(image, &bytes);
  if (memory == nullptr) return false;
  const int bands = std::min(image->Bands, kMostBands);
  HostPicture& colors = picture->colors;
  colors.width = image->Xsize;
  colors.height = image->Ysize;
  colors.planes = bands < 3 ? 1 : 3;
  const size_t pixels = static_cast<size_t>(image->Xsize) * static_cast<size_t>(image->Ysize);
  if (image->BandFmt == VIPS_FORMAT_USHORT) {
    picture->sampleBits = std::max(picture->sampleBits, 16);
    takePlanes(static_cast<const uint16_t*>(memory), pixels, bands, picture);
    takeDeepPlanes(static_cast<const uint16_t*>(memory), pixels, bands, picture);
  } else {
    takePlanes(static_cast<const uint8_t*>(memory), pixels, bands, picture);
  }
  g_free(memory);
  return true;
}

// --- The file -------------------------------------------------------------------------------

VipsImage* openPages(BytesView file, int first, int count, std::string* loader) {
  if (isHeif(file)) loadPlugIn("vips-heif.so");
  VipsSource* source = vips_source_new_from_memory(file.data, file.size);
  if (source == nullptr) return nullptr;
  const char* found = vips_foreign_find_load_source(source);
  VipsImage* image = nullptr;
  if (found != nullptr) {
    *loader = found;
    // Only loaders of files with several pictures know these words.
    const std::string pages = first == 0 && count == 1 ? ""
                                                       : "[page=" + std::to_string(first) +
                                                             ",n=" + std::to_string(count) + "]";
    image = vips_image_new_from_source(source, pages.c_str(), "access", VIPS_ACCESS_SEQUENTIAL,
                                       "fail_on", VIPS_FAIL_ON_ERROR, nullptr);
  }
  g_object_unref(source);
  return image;
}

// Upright. Sequential files are taken as a whole first, since turning needs every row at once.
static bool turn(VipsRef* held, int orientation) {
  if (orientation <= 1) return true;
  VipsImage* whole = vips_image_copy_memory(held->image);
  if (whole == nullptr) return false;
  held->replace(whole);
  vips_image_set_int(held->image, VIPS_META_ORIENTATION, orientation);
  VipsImage* upright = nullptr;
  if (vips_autorot(held->image, &upright, nullptr) != 0) return false;
  held->replace(upright);
  return true;
}

// Whether the container itself turns the picture, which its reader has done then; EXIF only
// repeats it.
static bool isTurnedByContainer(BytesView file) {
  if (!isHeif(file)) return false;
  constexpr uint32_t kLargeBox = 1;  // whose size stands behind its name
  for (size_t at = 0; at + 16 <= file.size;) {
    uint64_t size = bigEndianAt(file, at, 4);
    if (size == kLargeBox) {
      size = uint64_t{bigEndianAt(file, at + 8, 4)} << 32 | bigEndianAt(file, at + 12, 4);
    }
    if (beginsWith(file.part(at + 4), "meta")) {
      const BytesView meta =
          file.part(at, static_cast<size_t>(std::min<uint64_t>(size, file.size)));
      const std::string_view text(reinterpret_cast<const char*>(meta.data), meta.size);
      return text.find("irot") != std::string_view::npos ||
             text.find("imir") != std::string_view::npos;
    }
    if (size < 8 || size > file.size - at) return false;
    at += static_cast<size_t>(size);
  }
  return false;
}

static int orientationOf(VipsImage* image, BytesView file, const PictureMetadata& metadata) {
  if (isTurnedByContainer(file)) return 1;
  const int said = vips_image_get_orientation(image);
  return said > 1 ? said : exifOrientation(metadata.exif);
}

// Pages can be rendered one like the other when the library takes them as one picture.
static Sequence sequenceOf(BytesView file, VipsImage* image, const std::string& loader) {
  if (vips_image_get_n_pages(image) <= 1) return Sequence::none;
  if (vips_image_get_typeof(image, kFrameTimes) != 0) return Sequence::animation;
  if (loader.find("Tiff") == std::string::npos) return Sequence::none;
  std::string same;
  const VipsRef all(openPages(file, 0, -1, &same));
  vips_error_clear();
  return all.image == nullptr ? Sequence::unlike : Sequence::pages;
}

static int32_t sampleBitsOf(VipsImage* image) {
  if (image->Coding != VIPS_CODING_NONE) return 8;  // Lab in the library's own way
  return static_cast<int32_t>(8 * vips_format_sizeof(image->BandFmt));
}

bool takePicture(VipsRef* held, BytesView file, Picture* picture) {
  picture->sampleBits = sampleBitsOf(held->image);
  PictureMetadata& metadata = picture->metadata;
  const bool png =
      beginsWith(file, "\x89PNG");  // whose words have been read already, better than here
  if (!png) takeMetadata(held->image, file, false, &metadata);
  const int orientation = orientationOf(held->image, file, metadata);
  picture->sidesSwapped = orientation >= 5;
  if (picture->sidesSwapped) std::swap(metadata.dotsPerMeterX, metadata.dotsPerMeterY);
  if (!convertColors(held, picture) || !convertSamples(held) || !turn(held, orientation) ||
      !takePixels(held->image, picture)) {
    return false;
  }
  if (!picture->converted.empty()) metadata.profile.clear();
  return true;
}

std::string loadFormat(BytesView file, int32_t number, RefuseSides refuse, bool (*stop)(),
                       Picture* picture) {
  if (namesTooMuch(file))
    return "is damaged or cut off: its directory names more than the file holds";
  if (isHeif(file) && !coderThreadsStart()) {
    return std::string("cannot be read: ") + kTooFewThreads;
  }
  const QuietErrors quiet;
  std::string loader;
  VipsRef held(openPages(file, 0, 1, &loader));
  if (loader.empty()) {
    vips_error_clear();
    return whyUnknown(file);
  }
  if (held.image == nullptr) return loadFailure(stop);
  if (gifIsCutOff(file)) return "is damaged or cut off";
  picture->pictureCount = std::max(1, vips_image_get_n_pages(held.image));
  if (number > picture->pictureCount) return "";  // told by who asked
  picture->sequence = sequenceOf(file, held.image, loader);
  if (number > 1) held.replace(openPages(file, number - 1, 1, &loader));
  if (held.image == nullptr) return loadFailure(stop);
  const std::string refused = refuse(held.image->Xsize, held.image->Ysize);
  if (!refused.empty()) return refused;
  watchStop(held.image, stop);
  return takePicture(&held, file, picture) ? "" : loadFailure(stop);
}
