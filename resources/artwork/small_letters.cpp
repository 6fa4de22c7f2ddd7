#include "resources/artwork/small_letters.h"

#include <stdexcept>

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

void drawSmallText(Picture* picture, const std::string& text, int32_t x, int32_t y, Rgb colour) {
  for (const char character : text) {
    const SmallLetter& letter = letterOf(character);
    for (int32_t row = 0; row < kRows; ++row) {
      for (int32_t column = 0; column < widthOf(letter); ++column) {
        if (letter.rows[row][column] == '#') setPixel(picture, x + column, y + row, colour);
      }
    }
    x += widthOf(letter) + 1;
  }
}
