#include "platform/dialog_text.h"

#include <cstring>

#include "platform/windows/window/surface.h"

constexpr COLORREF kPaper = RGB(0, 0, 0);
constexpr COLORREF kInk = RGB(255, 255, 255);

constexpr char kFace[] = "Arial";
constexpr char kFaceWithItsWidths[] = "Liberation Sans";

// Without the colours at the edges that some screens get: coverage is one number a pixel.
static HFONT makeFont(const char* face, DWORD pitch, int32_t scale) {
  return CreateFontA(-scaledLength(kFontHeight, scale), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                     DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY,
                     pitch, face);
}

// Where the face is missing, the system would choose one of other widths, which text does not fit.
static HGDIOBJ selectFont(HDC context, int32_t scale, HFONT* font) {
  *font = makeFont(kFace, FIXED_PITCH | FF_DONTCARE, scale);
  HGDIOBJ previous = SelectObject(context, *font);
  char face[LF_FACESIZE] = {};
  GetTextFaceA(context, LF_FACESIZE, face);
  if (std::strcmp(face, kFace) == 0) return previous;
  HFONT other = makeFont(kFaceWithItsWidths, VARIABLE_PITCH | FF_SWISS, scale);
  SelectObject(context, other);
  DeleteObject(*font);
  *font = other;
  return previous;
}

// White on black, on a surface a little wider than the line: a last letter may stand out of it.
// False, and nothing to free, without memory.
static bool renderText(const char* text, int32_t scale, Surface* surface, int32_t* advance) {
  constexpr int32_t kOverhang = 4;  // pixels at 100 percent, more than any letter's
  HDC context = CreateCompatibleDC(nullptr);
  if (context == nullptr) return false;
  HFONT font = nullptr;
  HGDIOBJ previous = selectFont(context, scale, &font);
  const auto length = static_cast<int>(std::strlen(text));
  SIZE size = {};
  GetTextExtentPoint32A(context, text, length, &size);
  *advance = size.cx;
  SelectObject(context, previous);
  DeleteDC(context);
  const bool made =
      makeSurface(surface, size.cx + scaledLength(kOverhang, scale), textLineHeight(scale));
  if (made) {
    previous = SelectObject(surface->context, font);
    SetBkColor(surface->context, kPaper);
    SetTextColor(surface->context, kInk);
    const RECT all = {0, 0, surface->width, surface->height};
    ExtTextOutA(surface->context, 0, 0, ETO_OPAQUE, &all, text, static_cast<UINT>(length), nullptr);
    GdiFlush();
    SelectObject(surface->context, previous);
  }
  DeleteObject(font);
  return made;
}

static uint8_t coverageAt(const Surface& surface, int32_t x, int32_t y) {
  return static_cast<uint8_t>(surface.pixels[y * surface.width + x] >> 8);
}

// Of the line and of what stands out of it.
static int32_t inkWidth(const Surface& surface, int32_t advance) {
  int32_t width = advance;
  for (int32_t y = 0; y < surface.height; ++y) {
    for (int32_t x = width; x < surface.width; ++x) {
      if (coverageAt(surface, x, y) != 0) width = x + 1;
    }
  }
  return width;
}

int32_t textWidth(const char* text, int32_t scale) {
  Surface surface;
  int32_t advance = 0;
  if (!renderText(text, scale, &surface, &advance)) return 0;
  const int32_t width = inkWidth(surface, advance);
  freeSurface(&surface);
  return width;
}

void drawTextCoverage(const char* text, int32_t scale, uint8_t* coverage) {
  Surface surface;
  int32_t advance = 0;
  if (!renderText(text, scale, &surface, &advance)) return;
  const int32_t width = inkWidth(surface, advance);
  for (int32_t y = 0; y < surface.height; ++y) {
    for (int32_t x = 0; x < width; ++x) *coverage++ = coverageAt(surface, x, y);
  }
  freeSurface(&surface);
}
