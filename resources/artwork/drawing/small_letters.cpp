#include "resources/artwork/drawing/small_letters.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

constexpr int32_t kRows = 7;

struct SmallLetter {
  char character;
  const char* rows[kRows];
};

constexpr SmallLetter kLetters[] = {
    {'0', {".##.", "#..#", "#..#", "#..#", "#..#", "#..#", ".##."}},
    {'1', {".#", "##", ".#", ".#", ".#", ".#", ".#"}},
    {'2', {".##.", "#..#", "...#", "..#.", ".#..", "#...", "####"}},
    {'3', {".##.", "#..#", "...#", ".##.", "...#", "#..#", ".##."}},
    {'4', {"...#", "..##", ".#.#", "#..#", "####", "...#", "...#"}},
    {'5', {"####", "#...", "###.", "...#", "...#", "#..#", ".##."}},
    {'6', {".##.", "#...", "###.", "#..#", "#..#", "#..#", ".##."}},
    {'7', {"####", "...#", "..#.", "..#.", ".#..", ".#..", ".#.."}},
    {'8', {".##.", "#..#", "#..#", ".##.", "#..#", "#..#", ".##."}},
    {'9', {".##.", "#..#", "#..#", ".###", "...#", "...#", ".##."}},
    {'.', {".", ".", ".", ".", ".", ".", "#"}},
    {' ', {"..", "..", "..", "..", "..", "..", ".."}},
    {'L', {"#...", "#...", "#...", "#...", "#...", "#...", "####"}},
    {'S', {".###", "#...", "#...", ".##.", "...#", "...#", "###."}},
    {'V', {"#...#", "#...#", "#...#", ".#.#.", ".#.#.", "..#..", "..#.."}},
    {'a', {"....", "....", ".##.", "...#", ".###", "#..#", ".###"}},
    {'d', {"...#", "...#", ".###", "#..#", "#..#", "#..#", ".###"}},
    {'e', {"....", "....", ".##.", "#..#", "####", "#...", ".###"}},
    {'i', {"#", ".", "#", "#", "#", "#", "#"}},
    {'n', {"....", "....", "###.", "#..#", "#..#", "#..#", "#..#"}},
    {'o', {"....", "....", ".##.", "#..#", "#..#", "#..#", ".##."}},
    {'r', {"...", "...", "#.#", "##.", "#..", "#..", "#.."}},
    {'s', {"...", "...", ".##", "#..", ".#.", "..#", "##."}},
    {'v', {".....", ".....", "#...#", "#...#", ".#.#.", ".#.#.", "..#.."}}};

static const SmallLetter& letterOf(char character) {
  for (const SmallLetter& letter : kLetters) {
    if (letter.character == character) return letter;
  }
  throw std::runtime_error(std::string("no small letter for '") + character + "'");
}

static int32_t widthOf(const SmallLetter& letter) {
  return static_cast<int32_t>(std::string(letter.rows[0]).size());
}

int32_t smallTextWidth(const std::string& text) {
  int32_t width = 0;
  for (const char character : text) width += widthOf(letterOf(character)) + 1;
  return width - 1;
}

static bool isInk(const SmallLetter& letter, int32_t row, int32_t column) {
  return row >= 0 && row < kRows && column >= 0 && column < widthOf(letter) &&
         letter.rows[row][column] == '#';
}

// Lines from the middle of each pixel to its neighbours'; across a corner only where no other way
// leads.
static std::vector<Shape> strokesOf(const SmallLetter& letter, double x, double y) {
  constexpr double kHalfStroke = 0.5;
  constexpr int32_t kSteps[][2] = {{0, 1}, {1, 0}, {1, 1}, {1, -1}};
  std::vector<Shape> strokes;
  for (int32_t row = 0; row < kRows; ++row) {
    for (int32_t column = 0; column < widthOf(letter); ++column) {
      if (!isInk(letter, row, column)) continue;
      const double fromX = x + column + 0.5;
      const double fromY = y + row + 0.5;
      strokes.push_back(discShape(fromX, fromY, kHalfStroke));
      for (const auto& step : kSteps) {
        const int32_t down = step[0];
        const int32_t right = step[1];
        if (!isInk(letter, row + down, column + right)) continue;
        const bool corner = down != 0 && right != 0;
        if (corner && (isInk(letter, row, column + right) || isInk(letter, row + down, column))) {
          continue;
        }
        strokes.push_back(lineShape(fromX, fromY, fromX + right, fromY + down, kHalfStroke));
      }
    }
  }
  return strokes;
}

static void drawPixels(Picture* picture, const SmallLetter& letter, int32_t x, int32_t y,
                       Rgb colour) {
  for (int32_t row = 0; row < kRows; ++row) {
    for (int32_t column = 0; column < widthOf(letter); ++column) {
      if (isInk(letter, row, column)) setPixel(picture, x + column, y + row, colour);
    }
  }
}

void drawSmallText(Picture* picture, const std::string& text, int32_t x, int32_t y, Rgb colour) {
  std::vector<Shape> strokes;
  for (const char character : text) {
    const SmallLetter& letter = letterOf(character);
    if (picture->scale == 100) drawPixels(picture, letter, x, y, colour);
    const std::vector<Shape> more = strokesOf(letter, x, y);
    strokes.insert(strokes.end(), more.begin(), more.end());
    x += widthOf(letter) + 1;
  }
  if (picture->scale == 100) return;
  fillShape(
      picture,
      [&strokes](double px, double py) {
        return std::any_of(strokes.begin(), strokes.end(),
                           [px, py](const Shape& stroke) { return stroke(px, py); });
      },
      colour);
}
