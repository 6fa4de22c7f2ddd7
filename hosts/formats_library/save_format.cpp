#include <algorithm>

#include "hosts/formats_library/formats.h"

constexpr int kJpegQuality = 95;
constexpr int kFineChroma = 90;  // from this quality on colours are as sharp as brightness
constexpr int kHeifQuality = 80;
constexpr int kLongestHeifSide = 16384;  // pixels that its reader takes

VipsInterpretation colorsOf(const Picture& picture) {
  const bool deep = !picture.deep.colors.empty();
  if (picture.colors.planes == 1) {
    return deep ? VIPS_INTERPRETATION_GREY16 : VIPS_INTERPRETATION_B_W;
  }
  return deep ? VIPS_INTERPRETATION_RGB16 : VIPS_INTERPRETATION_sRGB;
}

// `room` holds the pixels where they cannot stay where they are.
struct PixelRoom {
  std::vector<uint8_t> shallow;
  std::vector<uint16_t> deep;
};

static VipsImage* imageOf(const Picture& picture, PixelRoom* room) {
  const HostPicture& colors = picture.colors;
  const bool deep = !picture.deep.colors.empty();
  const bool alpha = !picture.alpha.empty();
  const void* pixels = deep ? static_cast<const void*>(picture.deep.colors.data())
                            : static_cast<const void*>(colors.samples.data());
  if (alpha && deep) {
    room->deep = interleaved(picture.deep.colors, picture.deep.alpha, colors.planes);
    pixels = room->deep.data();
  } else if (alpha) {
    room->shallow = interleaved(colors.samples, picture.alpha, colors.planes);
    pixels = room->shallow.data();
  }
  const int bands = colors.planes + (alpha ? 1 : 0);
  const size_t bytes = static_cast<size_t>(colors.width) * static_cast<size_t>(colors.height) *
                       static_cast<size_t>(bands) * (deep ? 2 : 1);
  VipsImage* memory = vips_image_new_from_memory(pixels, bytes, colors.width, colors.height, bands,
                                                 deep ? VIPS_FORMAT_USHORT : VIPS_FORMAT_UCHAR);
  if (memory == nullptr) return nullptr;
  const PictureMetadata& metadata = picture.metadata;
  VipsImage* image = nullptr;
  // 72 to the inch where nothing is said, as most programs take it.
  const double x = metadata.dotsPerMeterX > 0 ? metadata.dotsPerMeterX / 1000 : 72 / 25.4;
  const double y = metadata.dotsPerMeterY > 0 ? metadata.dotsPerMeterY / 1000 : 72 / 25.4;
  vips_copy(memory, &image, "interpretation", colorsOf(picture), "xres", x, "yres", y, nullptr);
  g_object_unref(memory);
  return image;
}

static int saveJpeg(VipsImage* image, const SaveChoices& choices, void** data, size_t* bytes) {
  const int quality = choices.quality < 0 ? kJpegQuality : choices.quality;
  const bool fine = choices.chroma.empty() ? quality >= kFineChroma : choices.chroma == "444";
  return vips_jpegsave_buffer(
      image, data, bytes, "Q", quality, "strip", TRUE, "optimize_coding", TRUE, "subsample_mode",
      fine ? VIPS_FOREIGN_SUBSAMPLE_OFF : VIPS_FOREIGN_SUBSAMPLE_ON, nullptr);
}

static int saveWebp(VipsImage* image, const SaveChoices& choices, void** data, size_t* bytes) {
  const bool lossless = choices.lossless || choices.quality < 0;
  return vips_webpsave_buffer(image, data, bytes, "lossless", lossless, "Q",
                              choices.quality < 0 ? 75 : choices.quality, nullptr);
}

static int saveHeif(VipsImage* image, FormatKind kind, const SaveChoices& choices, void** data,
                    size_t* bytes) {
  loadPlugIn("vips-heif.so");
  const bool av1 = kind == FormatKind::avif;
  const bool fine = choices.chroma.empty() ? choices.lossless || choices.quality >= kFineChroma
                                           : choices.chroma == "444";
  return vips_heifsave_buffer(
      image, data, bytes, "compression",
      av1 ? VIPS_FOREIGN_HEIF_COMPRESSION_AV1 : VIPS_FOREIGN_HEIF_COMPRESSION_HEVC, "Q",
      choices.quality < 0 ? kHeifQuality : choices.quality, "lossless", choices.lossless,
      "subsample_mode", fine ? VIPS_FOREIGN_SUBSAMPLE_OFF : VIPS_FOREIGN_SUBSAMPLE_ON, "strip",
      choices.strip, nullptr);
}

static int saveJxl(VipsImage* image, const SaveChoices& choices, void** data, size_t* bytes) {
  loadPlugIn("vips-jxl.so");
  const bool lossless = choices.lossless || choices.quality < 0;
  return vips_jxlsave_buffer(image, data, bytes, "lossless", lossless, "Q",
                             choices.quality < 0 ? 75 : choices.quality, nullptr);
}

static int saveTiff(VipsImage* image, void** data, size_t* bytes) {
  return vips_tiffsave_buffer(image, data, bytes, "compression",
                              VIPS_FOREIGN_TIFF_COMPRESSION_DEFLATE, "predictor",
                              VIPS_FOREIGN_TIFF_PREDICTOR_HORIZONTAL, nullptr);
}

static int save(VipsImage* image, FormatKind kind, const SaveChoices& choices, void** data,
                size_t* bytes) {
  switch (kind) {
    case FormatKind::jpeg:
      return saveJpeg(image, choices, data, bytes);
    case FormatKind::webp:
      return saveWebp(image, choices, data, bytes);
    case FormatKind::tiff:
      return saveTiff(image, data, bytes);
    case FormatKind::gif:
      // A palette of its own for each frame that needs one.
      return vips_gifsave_buffer(image, data, bytes, "interpalette_maxerror", 0.0, nullptr);
    case FormatKind::jxl:
      return saveJxl(image, choices, data, bytes);
    default:
      return saveHeif(image, kind, choices, data, bytes);
  }
}

// The coder may make no picture, of a thin one, without a word.
static bool holdsHeif(const void* data, size_t bytes) {
  VipsImage* read = nullptr;
  const int failed = vips_heifload_buffer(const_cast<void*>(data), bytes, &read, nullptr);
  const VipsRef held(read);
  return failed == 0;
}

std::string encodeImage(VipsImage* image, const PictureFormat& format, const SaveChoices& choices,
                        bool (*stop)(), FileBytes* file) {
  const bool heif = format.kind == FormatKind::avif || format.kind == FormatKind::heic;
  if (heif &&
      std::max(vips_image_get_width(image), vips_image_get_height(image)) > kLongestHeifSide) {
    return "a side is longer than " + std::to_string(kLongestHeifSide) + " pixels, which ." +
           format.extension + " cannot hold";
  }
  if (heif && !coderThreadsStart()) return kTooFewThreads;
  const bool hasExif = vips_image_get_typeof(image, VIPS_META_EXIF_NAME) != 0;
  watchStop(image, stop);
  void* data = nullptr;
  size_t bytes = 0;
  if (save(image, format.kind, choices, &data, &bytes) != 0) {
    const std::string reason = takeReason();
    if (stop()) return kStopped;
    const bool missing = reason.starts_with("class ") && reason.ends_with(" not found");
    return missing ? "libvips is installed without its part for ." + std::string(format.extension)
                   : reason;
  }
  const auto* start = static_cast<const uint8_t*>(data);
  file->assign(start, start + bytes);
  g_free(data);
  if (heif && !holdsHeif(file->data(), bytes)) {
    vips_error_clear();
    return "its coder cannot make a picture of these sides";
  }
  if (format.kind == FormatKind::webp && !hasExif) *file = webpWithoutExif(*file);
  return "";
}

std::string saveFormat(const Picture& picture, const PictureFormat& format,
                       const SaveChoices& choices, bool (*stop)(), FileBytes* file) {
  PixelRoom room;
  const VipsRef held(imageOf(picture, &room));
  if (held.image == nullptr) return takeReason();
  if (format.kind != FormatKind::jpeg) giveMetadata(picture.metadata, held.image);
  const std::string reason = encodeImage(held.image, format, choices, stop, file);
  if (reason.empty() && format.kind == FormatKind::jpeg) {
    *file = jpegWithMetadata(*file, picture.metadata);
  }
  return reason;
}
