// What the picture library says of a file besides its pixels.

#include <algorithm>
#include <string_view>

#include "hosts/formats_library/formats.h"
#include "hosts/picture_files/exif_block.h"

constexpr size_t kLargestProfile = size_t{16} << 20;
constexpr char kUnit[] = "resolution-unit";

static FileBytes blobOf(VipsImage* image, const char* name) {
  const void* data = nullptr;
  size_t bytes = 0;
  if (vips_image_get_typeof(image, name) == 0 ||
      vips_image_get_blob(image, name, &data, &bytes) != 0) {
    vips_error_clear();
    return {};
  }
  const auto* start = static_cast<const uint8_t*>(data);
  return {start, start + bytes};
}

// Of HEIC and AVIF files the library tells parts by their numbers.
static FileBytes xmpOf(VipsImage* image) {
  constexpr int kMostParts = 8;
  FileBytes xmp = blobOf(image, VIPS_META_XMP_NAME);
  for (int i = 0; i < kMostParts && xmp.empty(); ++i) {
    FileBytes part = blobOf(image, ("heif-mime-" + std::to_string(i)).c_str());
    const std::string_view text(reinterpret_cast<const char*>(part.data()), part.size());
    if (text.find("xmpmeta") != std::string_view::npos) xmp = std::move(part);
  }
  return xmp;
}

void takeMetadata(VipsImage* image, BytesView file, bool, PictureMetadata* metadata) {
  metadata->profile = blobOf(image, VIPS_META_ICC_NAME);
  metadata->profileTooLarge = metadata->profile.size() > kLargestProfile;
  if (metadata->profileTooLarge) metadata->profile.clear();
  metadata->exif = exifWithoutName(blobOf(image, VIPS_META_EXIF_NAME));
  metadata->exifLeftOut = metadata->exif.empty() && holdsCameraNotes(file);
  metadata->xmp = xmpOf(image);
  metadata->iptc = iptcRecords(blobOf(image, VIPS_META_IPTC_NAME));
  if (metadata->iptc.empty()) metadata->iptc = iptcRecords(blobOf(image, VIPS_META_PHOTOSHOP_NAME));
  // The library fills the numbers in from files that hold them as such, but not from EXIF.
  const bool said = image->Xres != 1 || image->Yres != 1;
  if (vips_image_get_typeof(image, kUnit) != 0 && !said) {
    double* x = &metadata->dotsPerMeterX;
    double* y = &metadata->dotsPerMeterY;
    if (!exifResolution(metadata->exif, x, y)) *x = *y = 0;
  } else if (vips_image_get_typeof(image, kUnit) != 0) {
    metadata->dotsPerMeterX = image->Xres * 1000;
    metadata->dotsPerMeterY = image->Yres * 1000;
  }
  const char* description = nullptr;
  if (vips_image_get_typeof(image, VIPS_META_IMAGEDESCRIPTION) != 0 &&
      vips_image_get_string(image, VIPS_META_IMAGEDESCRIPTION, &description) == 0 &&
      *description != '\0') {
    metadata->texts.push_back({"Description", description, "", ""});
  }
  metadata->comments = jpegComments(file);
}

static void giveBlob(const FileBytes& bytes, const char* name, VipsImage* image) {
  if (!bytes.empty()) vips_image_set_blob_copy(image, name, bytes.data(), bytes.size());
}

void giveMetadata(const PictureMetadata& metadata, VipsImage* image) {
  giveBlob(metadata.profile, VIPS_META_ICC_NAME, image);
  giveBlob(metadata.xmp, VIPS_META_XMP_NAME, image);
  // TIFF files hold records alone as numbers of four bytes, which readers take in either order.
  if (!metadata.iptc.empty()) {
    giveBlob(photoshopBlock(metadata.iptc), VIPS_META_PHOTOSHOP_NAME, image);
  }
  if (!metadata.exif.empty()) {
    FileBytes named = {'E', 'x', 'i', 'f', 0, 0};
    named.insert(named.end(), metadata.exif.begin(), metadata.exif.end());
    giveBlob(named, VIPS_META_EXIF_NAME, image);
    // The library takes the numbers for dots to the millimetre otherwise.
    if (exifLacksUnit(metadata.exif)) vips_image_set_string(image, kUnit, "none");
  }
  const auto described =
      std::find_if(metadata.texts.begin(), metadata.texts.end(),
                   [](const PictureText& text) { return text.key == "Description"; });
  if (described != metadata.texts.end()) {
    vips_image_set_string(image, VIPS_META_IMAGEDESCRIPTION, described->text.c_str());
  }
}
