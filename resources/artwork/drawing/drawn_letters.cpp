#include "resources/artwork/drawing/drawn_letters.h"

#include <algorithm>
#include <stdexcept>

// All measures in heights of a small letter, y upward from the baseline.
constexpr double kPenLong = 0.15;  // half axes of the pen's edge
constexpr double kPenShort = 0.078;
constexpr double kPenTurn = 0.09;  // of a full turn: how steeply the pen is held
constexpr double kGap = 0.36;      // between letters
constexpr int32_t kArcSteps = 28;

using Stroke = std::vector<Spot>;

struct Letter {
  char character;
  double width;
  std::vector<Stroke> strokes;
};

// From one angle to another, in turns, counted from the right upward.
static Stroke arc(double x, double y, double radiusX, double radiusY, double from, double to) {
  Stroke stroke;
  for (int32_t i = 0; i <= kArcSteps; ++i) {
    const double turns = from + (to - from) * i / kArcSteps;
    stroke.push_back({x + radiusX * cosineOfTurn(turns), y + radiusY * sineOfTurn(turns)});
  }
  return stroke;
}

static Stroke joined(Stroke first, const Stroke& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

static std::vector<Letter> makeLetters() {
  return {
      {'M', 1.36, {{{0, 0}, {0, 1.5}, {0.68, 0.3}, {1.36, 1.5}, {1.36, 0}}}},
      {'o', 0.94, {arc(0.47, 0.5, 0.47, 0.5, 0, 1)}},
      {'r', 0.46, {{{0, 1}, {0, 0}}, arc(0.42, 0.52, 0.42, 0.46, 0.5, 0.20)}},
      {'v', 0.86, {{{0, 1}, {0.43, 0.02}, {0.86, 1}}}},
      {'a', 0.86, {arc(0.43, 0.5, 0.43, 0.5, 0, 1), {{0.86, 1}, {0.86, 0}}}},
      {'l', 0.0, {{{0, 1.56}, {0, 0}}}},
      {'i', 0.0, {{{0, 1}, {0, 0}}, {{0, 1.42}, {0.01, 1.43}}}},
      {'s',
       0.56,
       {joined(arc(0.29, 0.75, 0.25, 0.25, 0.08, 0.75), arc(0.28, 0.25, 0.27, 0.25, 0.25, -0.42))}},
  };
}

static const Letter& letterOf(const std::vector<Letter>& letters, char character) {
  for (const Letter& letter : letters) {
    if (letter.character == character) return letter;
  }
  throw std::runtime_error(std::string("no drawn letter for '") + character + "'");
}

double wordWidth(const std::string& word, double size) {
  const std::vector<Letter> letters = makeLetters();
  double width = -kGap;
  for (const char character : word) width += letterOf(letters, character).width + kGap;
  return width * size;
}

// Turns the pen's edge into a circle of radius 1, so that a stroke is a line of that half width.
static Spot penSpace(double x, double y, double size) {
  const double cosine = cosineOfTurn(kPenTurn);
  const double sine = sineOfTurn(kPenTurn);
  return {(x * cosine - y * sine) / (kPenLong * size),
          (x * sine + y * cosine) / (kPenShort * size)};
}

Shape wordShape(const std::string& word, double left, double baseline, double size) {
  const std::vector<Letter> letters = makeLetters();
  std::vector<Shape> lines;
  for (const char character : word) {
    const Letter& letter = letterOf(letters, character);
    for (const Stroke& stroke : letter.strokes) {
      for (size_t i = 1; i < stroke.size(); ++i) {
        const Spot a =
            penSpace(left + stroke[i - 1].x * size, baseline - stroke[i - 1].y * size, size);
        const Spot b = penSpace(left + stroke[i].x * size, baseline - stroke[i].y * size, size);
        lines.push_back(lineShape(a.x, a.y, b.x, b.y, 1));
      }
    }
    left += (letter.width + kGap) * size;
  }
  return [lines = std::move(lines), size](double x, double y) {
    const Spot point = penSpace(x, y, size);
    return std::any_of(lines.begin(), lines.end(),
                       [&point](const Shape& line) { return line(point.x, point.y); });
  };
}
