// What contact sheets are made of: smaller pictures, and names.

#include <fontconfig/fontconfig.h>

#include "hosts/formats_library/formats.h"

static bool takeBytes(VipsImage* image, std::vector<uint8_t>* bytes) {
  size_t count = 0;
  void* memory = vips_image_write_to_memory(image, &count);
  if (memory == nullptr) return false;
  const auto* start = static_cast<const uint8_t*>(memory);
  bytes->assign(start, start + count);
  g_free(memory);
  return true;
}

std::string resizePicture(const HostPicture& from, int32_t width, int32_t height, HostPicture* to) {
  const VipsRef held(vips_image_new_from_memory(from.samples.data(), from.samples.size(),
                                                from.width, from.height, from.planes,
                                                VIPS_FORMAT_UCHAR));
  VipsRef resized;
  if (held.image == nullptr ||
      vips_resize(held.image, &resized.image, static_cast<double>(width) / from.width, "vscale",
                  static_cast<double>(height) / from.height, nullptr) != 0) {
    return takeReason();
  }
  *to = {resized.image->Xsize, resized.image->Ysize, from.planes, {}};
  return takeBytes(resized.image, &to->samples) ? "" : takeReason();
}

// Without fonts the library draws boxes.
static bool fontIsThere() {
  FcPattern* any = FcPatternCreate();
  FcObjectSet* wanted = FcObjectSetBuild(FC_FILE, nullptr);
  FcFontSet* fonts = FcFontList(nullptr, any, wanted);
  const bool found = fonts != nullptr && fonts->nfont > 0;
  if (fonts != nullptr) FcFontSetDestroy(fonts);
  FcObjectSetDestroy(wanted);
  FcPatternDestroy(any);
  return found;
}

std::string drawText(const std::string& text, int32_t letterPixels, DrawnText* drawn) {
  static const bool found = fontIsThere();
  if (!found) {
    return "there is no font to write the names with; install one, on Debian fonts-liberation";
  }
  // At 72 dots to the inch a point is a pixel.
  const std::string font =
      "Liberation Sans, Noto Sans, DejaVu Sans, Sans " + std::to_string(letterPixels);
  char* plain = g_markup_escape_text(text.c_str(), static_cast<gssize>(text.size()));
  VipsRef image;
  const int error = vips_text(&image.image, plain, "font", font.c_str(), "dpi", 72, nullptr);
  g_free(plain);
  if (error != 0) return takeReason();
  drawn->width = image.image->Xsize;
  drawn->height = image.image->Ysize;
  drawn->rise = image.image->Yoffset;
  return takeBytes(image.image, &drawn->coverage) ? "" : takeReason();
}
