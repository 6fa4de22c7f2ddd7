#include "hosts/picture_files/picture_format.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"
#include "hosts/process/file_names.h"

using enum FormatKind;
using namespace std::string_view_literals;

constexpr PictureFormat kFormats[] = {
    // extension, kind, alpha, colours, depth, profile, exif, xmp, iptc, resolution, texts, sequence
    {"png", png, true, true, true, true, true, true, true, true, true, Sequence::none},
    {"jpg", jpeg, false, true, false, true, true, true, true, true, true, Sequence::none},
    {"jpeg", jpeg, false, true, false, true, true, true, true, true, true, Sequence::none},
    {"tif", tiff, true, true, true, true, false, true, true, true, false, Sequence::pages},
    {"tiff", tiff, true, true, true, true, false, true, true, true, false, Sequence::pages},
    {"webp", webp, true, true, false, true, true, true, false, false, false, Sequence::animation},
    {"gif", gif, true, true, false, false, false, false, false, false, false, Sequence::animation},
    {"avif", avif, true, true, false, true, true, true, false, false, false, Sequence::none},
    {"heic", heic, true, true, false, true, true, true, false, false, false, Sequence::none},
    {"jxl", jxl, true, true, true, true, false, false, false, false, false, Sequence::none},
    {"bmp", bmp, false, true, false, false, false, false, false, true, false, Sequence::none},
    {"ppm", pnm, false, true, true, false, false, false, false, false, false, Sequence::none},
    {"pgm", pnm, false, false, true, false, false, false, false, false, false, Sequence::none},
};

// Kinds that are read and never written, for the message.
constexpr const char* kReadable[] = {"ico", "cur", "tga", "heif", "hif", "jpe", "pnm", "pbm"};

static const PictureFormat* findByExtension(const std::string& extension) {
  for (const PictureFormat& format : kFormats) {
    if (extension == format.extension) return &format;
  }
  return nullptr;
}

const PictureFormat* findPictureFormat(const std::string& file) {
  return file == kStandardStream ? &kFormats[0] : findByExtension(extensionOf(file));
}

std::string writableExtensions() {
  std::string text;
  for (const PictureFormat& format : kFormats) {
    text += (text.empty() ? "." : ", .") + std::string(format.extension);
  }
  return text;
}

std::string readablePatterns() {
  std::string text;
  for (const PictureFormat& format : kFormats) {
    text += (text.empty() ? "*." : " *.") + std::string(format.extension);
  }
  for (const char* extension : kReadable) text += " *." + std::string(extension);
  return text;
}

const PictureFormat& pictureFormatOf(const std::string& file) {
  const PictureFormat* format = findPictureFormat(file);
  if (format != nullptr) return *format;
  const std::string extension = extensionOf(file);
  const bool known =
      std::find(std::begin(kReadable), std::end(kReadable), extension) != std::end(kReadable);
  failOnUsage(file +
              (known ? ": ." + extension + " files cannot be written"
                     : std::string(": cannot tell the format by the extension")) +
              "; there are " + writableExtensions());
}

static bool lacksAlpha(const PictureFormat& format, const Picture& picture) {
  return !format.alpha && std::any_of(picture.alpha.begin(), picture.alpha.end(),
                                      [](uint8_t alpha) { return alpha != 255; });
}

static bool lacksColors(const PictureFormat& format, const Picture& picture) {
  return !format.colors && picture.colors.planes > 1;
}

bool formatHoldsAll(const PictureFormat& format, const Picture& first) {
  const bool several = first.sequence == Sequence::animation || first.sequence == Sequence::pages;
  return several && first.sequence == format.sequence;
}

bool formatHolds(const PictureFormat& format, const Picture& picture) {
  return !lacksAlpha(format, picture) && !lacksColors(format, picture);
}

void checkFormatHolds(const PictureFormat& format, const Picture& picture,
                      const std::string& file) {
  if (lacksAlpha(format, picture)) {
    failOnFile(file, "the picture has transparency, which this format cannot hold; use .png");
  }
  if (lacksColors(format, picture)) {
    failOnFile(file, "the picture has colours, which this format cannot hold; use .ppm or .png");
  }
}

bool profileFits(const PictureFormat& format, const Picture& picture) {
  // These have no grey: its samples are stored three times.
  const bool colorful = format.kind == FormatKind::webp || format.kind == FormatKind::avif ||
                        format.kind == FormatKind::heic || format.kind == FormatKind::gif;
  constexpr size_t kKindOffset = 16;
  const BytesView kind = BytesView(picture.metadata.profile).part(kKindOffset);
  return beginsWith(kind, picture.colors.planes == 1 && !colorful ? "GRAY" : "RGB ");
}

// What a PNG file says of its colours other than sRGB, where no profile says it; "" for nothing.
static std::string colorSpaceOf(const PictureMetadata& metadata) {
  constexpr std::string_view kOfSrgb[] = {"gAMA\0\0\xB1\x8F"sv, "cICP\1\x0D\0\1"sv,
                                          "cHRM\0\0\x7A\x26\0\0\x80\x84\0\0\xFA\0\0\0\x80\xE8"
                                          "\0\0\x75\x30\0\0\xEA\x60\0\0\x3A\x98\0\0\x17\x70"sv};
  bool said = !metadata.profile.empty();
  for (const PngPart& part : metadata.pngColors) said = said || part.name == "sRGB";
  std::string names;
  for (const PngPart& part : metadata.pngColors) {
    const std::string whole = part.name + std::string(part.data.begin(), part.data.end());
    const bool usual =
        std::find(std::begin(kOfSrgb), std::end(kOfSrgb), whole) != std::end(kOfSrgb);
    // cICP counts before a profile, the others behind it.
    if (part.name == "sRGB" || usual || (said && part.name != "cICP")) continue;
    names += (names.empty() ? "" : ", ") + part.name;
  }
  return names.empty() ? "" : "colour space (" + names + ")";
}

// The names of the parts that the picture has and the format holds, or does not.
static std::string partsOf(const PictureFormat& format, const Picture& picture, bool held) {
  const PictureMetadata& metadata = picture.metadata;
  const bool words = !metadata.texts.empty() || !metadata.comments.empty();
  // A TIFF file has room for a description alone.
  const bool described = format.kind == FormatKind::tiff && metadata.comments.empty() &&
                         metadata.texts.size() == 1 && metadata.texts[0].key == "Description";
  const std::string colorSpace = colorSpaceOf(metadata);
  const struct {
    std::string name;
    bool there;
    bool held;
  } parts[] = {
      {"colour profile", !metadata.profile.empty(), format.profile && profileFits(format, picture)},
      {colorSpace, !colorSpace.empty(), format.kind == png},
      {"EXIF", !metadata.exif.empty() || metadata.exifLeftOut,
       format.exif && !metadata.exifLeftOut},
      {"XMP", !metadata.xmp.empty(), format.xmp},
      {"IPTC", !metadata.iptc.empty(), format.iptc},
      {"texts", words, format.texts || described},
  };
  std::string text;
  for (const auto& part : parts) {
    if (part.there && part.held == held) text += (text.empty() ? "" : ", ") + part.name;
  }
  return text;
}

std::string lossesIn(const PictureFormat& format, const Picture& picture) {
  return partsOf(format, picture, false);
}

std::string keptIn(const PictureFormat& format, const Picture& picture) {
  return partsOf(format, picture, true);
}
