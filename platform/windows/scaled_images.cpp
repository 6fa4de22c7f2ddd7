#include "platform/windows/scaled_images.h"

#include <cstdlib>

#include "dialog/dialog_scale.h"
#include "pictures/sources/scaled_pictures.h"

constexpr int32_t kHotSpot = 8;  // of both hands, pixels at 100 percent

// --- Icons and cursors ----------------------------------------------------------------------

struct KeptCursor {
  WORD number;
  int32_t scale;
  HCURSOR cursor;
};

struct KeptCursors {
  KeptCursor rows[2];

  ~KeptCursors() {
    for (const KeptCursor& row : rows) {
      if (row.cursor != nullptr) DestroyCursor(row.cursor);
    }
  }
};

static KeptCursors kept;

// A surface of the colours, whose upper bytes are coverage.
static bool fillColours(const ResourcePicture& picture, Surface* surface) {
  if (!makeSurface(surface, picture.width, picture.height)) return false;
  const int32_t pixels = picture.width * picture.height;
  for (int32_t i = 0; i < pixels; ++i) {
    const uint8_t* rgb = picture.rgb + 3 * i;
    surface->pixels[i] = uint32_t{picture.coverage[i]} << 24 | uint32_t{rgb[0]} << 16 |
                         uint32_t{rgb[1]} << 8 | rgb[2];
  }
  return true;
}

// A bit a pixel in rows of whole words, 1 where nothing shows, for systems that heed no coverage.
static HBITMAP makeMask(const ResourcePicture& picture) {
  const int32_t rowBytes = (picture.width + 15) / 16 * 2;
  auto* bits =
      static_cast<uint8_t*>(std::calloc(static_cast<size_t>(rowBytes * picture.height), 1));
  if (bits == nullptr) return nullptr;
  for (int32_t y = 0; y < picture.height; ++y) {
    for (int32_t x = 0; x < picture.width; ++x) {
      if (picture.coverage[y * picture.width + x] < 128)
        bits[y * rowBytes + x / 8] |= 0x80 >> x % 8;
    }
  }
  HBITMAP mask = CreateBitmap(picture.width, picture.height, 1, 1, bits);
  std::free(bits);
  return mask;
}

static HICON makeImage(int32_t number, int32_t scale, bool isIcon) {
  ResourcePicture picture;
  Surface colours = {};
  if (!findScaledPicture(number, scale, &picture)) return nullptr;
  if (picture.coverage == nullptr || !fillColours(picture, &colours)) return nullptr;
  HBITMAP mask = makeMask(picture);
  ICONINFO parts = {};
  parts.fIcon = isIcon ? TRUE : FALSE;
  parts.xHotspot = parts.yHotspot = static_cast<DWORD>(scaledLength(kHotSpot, scale));
  parts.hbmMask = mask;
  parts.hbmColor = static_cast<HBITMAP>(GetCurrentObject(colours.context, OBJ_BITMAP));
  HICON image = mask != nullptr ? CreateIconIndirect(&parts) : nullptr;
  if (mask != nullptr) DeleteObject(mask);
  freeSurface(&colours);
  return image;
}

HICON scaledIcon(WORD number, int32_t scale) {
  return makeImage(kIconNumbers + number, scale, /*isIcon=*/true);
}

HCURSOR scaledCursor(WORD number) {
  if (dialogScale() == kPlainScale) return nullptr;
  KeptCursor* row = &kept.rows[number & 1];
  if (row->cursor != nullptr && row->number == number && row->scale == dialogScale()) {
    return row->cursor;
  }
  if (row->cursor != nullptr) DestroyCursor(row->cursor);
  *row = {
      number, dialogScale(),
      static_cast<HCURSOR>(makeImage(kCursorNumbers + number, dialogScale(), /*isIcon=*/false))};
  return row->cursor;
}

// --- Pictures of a template -----------------------------------------------------------------

static HBITMAP copyOfPart(const Window* window, const RECT& part) {
  const int width = part.right - part.left;
  const int height = part.bottom - part.top;
  HDC screen = GetDC(window->handle);
  HDC context = CreateCompatibleDC(screen);
  HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
  HGDIOBJ previous = SelectObject(context, bitmap);
  showSurface(window, context, part, {part.left, part.top});
  SelectObject(context, previous);
  DeleteDC(context);
  ReleaseDC(window->handle, screen);
  return bitmap;
}

void scalePictures(const Window* window) {
  if (dialogScale() == kPlainScale) return;
  for (HWND item = GetWindow(window->handle, GW_CHILD); item != nullptr;
       item = GetWindow(item, GW_HWNDNEXT)) {
    if (!showsBitmap(item)) continue;
    RECT place = {};
    GetWindowRect(item, &place);
    MapWindowPoints(nullptr, window->handle, reinterpret_cast<POINT*>(&place), 2);
    const auto bitmap = reinterpret_cast<LPARAM>(copyOfPart(window, place));
    const LRESULT before = SendMessageA(item, STM_SETIMAGE, IMAGE_BITMAP, bitmap);
    if (before != 0) DeleteObject(reinterpret_cast<HGDIOBJ>(before));
  }
}
