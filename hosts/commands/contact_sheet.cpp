#include "hosts/commands/contact_sheet.h"

#include <algorithm>
#include <cmath>

#include "hosts/picture_files/formats_library.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/libraries/library_guard.h"

// All in pixels.
constexpr int32_t kLargestPicture = 400;
constexpr int32_t kSmallestCell = 160;
constexpr int32_t kMargin = 32;
constexpr int32_t kGap = 24;
constexpr int32_t kNameRoom = 40;
constexpr int32_t kLetterSize = 21;

constexpr double kWantedShape = 1.5;   // of the sheet, width to height
constexpr double kHolePenalty = 0.12;  // of an empty cell, against a shape off by as much

constexpr int32_t kGround = 46;  // greys
constexpr int32_t kLetters = 224;

static DrawnText drawnName(const std::string& name) {
  DrawnText drawn;
  const LibraryGuard guard;
  const std::string reason = formatsLibrary().drawText(name, kLetterSize, &drawn);
  if (!reason.empty()) throw CommandFailure{kExitFailed, reason};
  return drawn;
}

void checkFont() {
  drawnName("A");
}

// Whole letters of UTF-8, without the last.
static std::string withoutLastLetter(std::string text) {
  while (!text.empty() && (static_cast<uint8_t>(text.back()) & 0xC0) == 0x80) text.pop_back();
  if (!text.empty()) text.pop_back();
  return text;
}

static DrawnText nameThatFits(const std::string& name, int32_t width) {
  DrawnText drawn = drawnName(name);
  for (std::string start = name; drawn.width > width && !start.empty();) {
    start = withoutLastLetter(start);
    drawn = drawnName(start + "\u2026");
  }
  return drawn;
}

HostPicture cellPicture(const Picture& picture) {
  const HostPicture& colors = picture.colors;
  HostPicture flat = {colors.width, colors.height, 3, {}};
  const size_t planes = static_cast<size_t>(colors.planes);
  const size_t pixels = colors.samples.size() / planes;
  flat.samples.reserve(pixels * 3);
  for (size_t i = 0; i < pixels; ++i) {
    const int32_t alpha = picture.alpha.empty() ? 255 : picture.alpha[i];
    for (size_t plane = 0; plane < 3; ++plane) {
      const int32_t sample = colors.samples[i * planes + (planes == 1 ? 0 : plane)];
      flat.samples.push_back(
          static_cast<uint8_t>((sample * alpha + kGround * (255 - alpha) + 127) / 255));
    }
  }
  const int32_t larger = std::max(flat.width, flat.height);
  if (larger <= kLargestPicture) return flat;
  const auto scaled = [larger](int32_t side) {
    return std::max(1, (side * kLargestPicture + larger / 2) / larger);
  };
  HostPicture small;
  const LibraryGuard guard;
  const std::string reason =
      formatsLibrary().resize(flat, scaled(flat.width), scaled(flat.height), &small);
  if (!reason.empty()) throw CommandFailure{kExitFailed, reason};
  return small;
}

static int32_t rowCount(int32_t cells, int32_t columns) {
  return (cells + columns - 1) / columns;
}

static int32_t bestColumnCount(int32_t cells, int32_t cellWidth, int32_t cellHeight) {
  int32_t best = 1;
  double least = HUGE_VAL;
  for (int32_t columns = 1; columns <= cells; ++columns) {
    const int32_t rows = rowCount(cells, columns);
    const double shape = static_cast<double>(columns * cellWidth) / (rows * cellHeight);
    const double penalty =
        std::abs(std::log(shape / kWantedShape)) + kHolePenalty * (rows * columns - cells);
    if (penalty >= least) continue;
    least = penalty;
    best = columns;
  }
  return best;
}

static uint8_t* pixelAt(HostPicture* sheet, int32_t x, int32_t y) {
  return &sheet->samples[(static_cast<size_t>(y) * static_cast<size_t>(sheet->width) +
                          static_cast<size_t>(x)) *
                         3];
}

static void pastePicture(const HostPicture& picture, int32_t left, int32_t top,
                         HostPicture* sheet) {
  const size_t bytes = static_cast<size_t>(picture.width) * 3;
  for (int32_t y = 0; y < picture.height; ++y) {
    std::copy_n(&picture.samples[static_cast<size_t>(y) * bytes], bytes,
                pixelAt(sheet, left, top + y));
  }
}

static void pasteName(const DrawnText& name, int32_t left, int32_t top, HostPicture* sheet) {
  for (int32_t y = 0; y < name.height; ++y) {
    for (int32_t x = 0; x < name.width; ++x) {
      const bool inside = left + x >= 0 && left + x < sheet->width && top + y < sheet->height;
      if (!inside) continue;
      const int32_t cover = name.coverage[static_cast<size_t>(y * name.width + x)];
      uint8_t* pixel = pixelAt(sheet, left + x, top + y);
      for (int plane = 0; plane < 3; ++plane) {
        pixel[plane] =
            static_cast<uint8_t>((kLetters * cover + pixel[plane] * (255 - cover) + 127) / 255);
      }
    }
  }
}

Picture drawSheet(const std::vector<SheetCell>& cells) {
  const HostPicture& first = cells[0].picture;
  const int32_t cellWidth = std::max(first.width, kSmallestCell);
  const int32_t cellHeight = first.height + kNameRoom;
  const auto count = static_cast<int32_t>(cells.size());
  const int32_t columns = bestColumnCount(count, cellWidth, cellHeight);
  Picture picture;
  HostPicture& sheet = picture.colors;
  sheet.width = 2 * kMargin + columns * (cellWidth + kGap) - kGap;
  sheet.height =
      2 * kMargin + rowCount(count, columns) * (cellHeight + kGap) - kGap - kNameRoom / 4;
  sheet.planes = 3;
  sheet.samples.assign(static_cast<size_t>(sheet.width) * static_cast<size_t>(sheet.height) * 3,
                       kGround);
  for (int32_t i = 0; i < count; ++i) {
    const SheetCell& cell = cells[static_cast<size_t>(i)];
    const int32_t left = kMargin + i % columns * (cellWidth + kGap);
    const int32_t top = kMargin + i / columns * (cellHeight + kGap);
    pastePicture(cell.picture, left + (cellWidth - first.width) / 2, top, &sheet);
    const DrawnText name = nameThatFits(cell.name, cellWidth);
    pasteName(name, left + (cellWidth - name.width) / 2,
              top + first.height + (kNameRoom - kLetterSize) / 2 + name.rise, &sheet);
  }
  return picture;
}
