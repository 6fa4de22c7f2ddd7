#include "tests/support/mask_families.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>

namespace {

struct Canvas {
  int32_t width;
  int32_t height;
  std::vector<uint8_t> values;
  TestRandom* random;

  int32_t between(int32_t lo, int32_t hi) {
    return randomBetween(random, lo, hi);
  }
};

using Level = std::function<double(int32_t x, int32_t y)>;

// level: 0 to 1, cut off beyond.
void paint(Canvas* canvas, const Level& level) {
  for (int32_t y = 0; y < canvas->height; ++y) {
    for (int32_t x = 0; x < canvas->width; ++x) {
      const double value = std::clamp(level(x, y) * 255, 0.0, 255.0);
      canvas->values[static_cast<size_t>(y) * canvas->width + x] =
          static_cast<uint8_t>(value + 0.5);
    }
  }
}

// Selected where `inside`, in pixels from the edge, is positive; the edge is `soft` pixels wide.
double edge(double inside, double soft) {
  return soft == 0 ? (inside > 0 ? 1 : 0) : inside / soft + 0.5;
}

// A rounded ring in every cell of 320 pixels, as large letters have strokes.
void letters(Canvas* canvas, int32_t soft) {
  paint(canvas, [=](int32_t x, int32_t y) {
    const double ring = std::hypot(x % 320 - 160, y % 320 - 160) - 90;
    return edge(60 - std::abs(ring), soft);
  });
}

void rings(Canvas* canvas, int32_t soft) {
  const int32_t pitch = canvas->between(14, 26);
  const double half = pitch / 4.0;
  paint(canvas, [=](int32_t x, int32_t y) {
    const double along = std::fmod(std::hypot(x - 7.3, y - 5.1), pitch) - pitch / 2.0;
    return edge(half - std::abs(along), soft);
  });
}

void dots(Canvas* canvas, int32_t size, int32_t pitch) {
  paint(canvas, [=](int32_t x, int32_t y) { return x % pitch < size && y % pitch < size ? 1 : 0; });
}

void checkerboard(Canvas* canvas, int32_t side) {
  paint(canvas, [=](int32_t x, int32_t y) { return (x / side + y / side) % 2; });
}

void bayer(Canvas* canvas) {
  static constexpr int32_t kOrder[4][4] = {
      {0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
  paint(canvas, [=](int32_t x, int32_t y) {
    return x * 16 / canvas->width > kOrder[y % 4][x % 4] ? 1 : 0;
  });
}

void errorDiffused(Canvas* canvas) {
  std::vector<double> carried(static_cast<size_t>(canvas->width) + 2, 0);
  paint(canvas, [&](int32_t x, int32_t y) {
    const double wanted = 0.2 + 0.6 * y / canvas->height + carried[x];
    const double given = wanted > 0.5 ? 1 : 0;
    carried[x] = (wanted - given) / 2;
    carried[x + 1] += (wanted - given) / 2;
    return given;
  });
}

// `share` thousandths of the pixels have a value of lo to hi, the others `rest`.
void noise(Canvas* canvas, int32_t share, int32_t lo, int32_t hi, int32_t rest) {
  paint(canvas, [=](int32_t, int32_t) {
    return (canvas->between(1, 1000) <= share ? canvas->between(lo, hi) : rest) / 255.0;
  });
}

void halfPlane(Canvas* canvas, int32_t soft) {
  const double angle = canvas->between(0, 359) * 0.0174533;
  const double shift = canvas->between(-100, 100) / 300.0 * canvas->width;
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  paint(canvas, [=](int32_t x, int32_t y) {
    return edge((x - canvas->width / 2.0) * c + (y - canvas->height / 2.0) * s + shift, soft);
  });
}

void gradient(Canvas* canvas) {
  const double slope = canvas->between(1, 40) / 10.0;
  paint(canvas, [=](int32_t x, int32_t y) {
    return slope * (x + 0.37 * y) / (canvas->width + 0.37 * canvas->height);
  });
}

void stripes(Canvas* canvas, int32_t soft) {
  const double angle = canvas->between(0, 359) * 0.0174533;
  const double pitch = canvas->between(4, 40);
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  paint(canvas, [=](int32_t x, int32_t y) {
    const double along = x * c + y * s + 4000 * pitch;
    return edge(pitch / 4 - std::abs(std::fmod(along, pitch) - pitch / 2), soft);
  });
}

void thinLines(Canvas* canvas) {
  paint(canvas, [](int32_t x, int32_t y) {
    return std::abs(std::fmod(x * 0.9 + y * 0.37, 23.0) - 11) < 0.6 ? 0 : 1;
  });
}

void blobs(Canvas* canvas, int32_t count, double size) {
  std::vector<double> sum(canvas->values.size(), 0);
  for (int32_t i = 0; i < count; ++i) {
    const int32_t cx = canvas->between(0, canvas->width - 1);
    const int32_t cy = canvas->between(0, canvas->height - 1);
    const auto reach = static_cast<int32_t>(3 * size) + 1;
    for (int32_t y = std::max(cy - reach, 0); y < std::min(cy + reach, canvas->height); ++y) {
      for (int32_t x = std::max(cx - reach, 0); x < std::min(cx + reach, canvas->width); ++x) {
        const double squared = (x - cx) * (x - cx) + (y - cy) * (y - cy);
        sum[static_cast<size_t>(y) * canvas->width + x] +=
            1.3 * std::exp(-squared / (2 * size * size));
      }
    }
  }
  paint(canvas,
        [&](int32_t x, int32_t y) { return sum[static_cast<size_t>(y) * canvas->width + x]; });
}

// Single pixels of another value.
void specks(Canvas* canvas, int32_t ground, int32_t count, int32_t lo, int32_t hi) {
  std::fill(canvas->values.begin(), canvas->values.end(), static_cast<uint8_t>(ground));
  for (int32_t i = 0; i < count; ++i) {
    const int32_t x = canvas->between(0, canvas->width - 1);
    const int32_t y = canvas->between(0, canvas->height - 1);
    canvas->values[static_cast<size_t>(y) * canvas->width + x] =
        static_cast<uint8_t>(canvas->between(lo, hi));
  }
}

// Discs with an edge of 1 to 6 pixels.
void softShapes(Canvas* canvas, int32_t size) {
  struct Disc {
    double x, y, radius, soft;
  };
  std::vector<Disc> discs;
  const int32_t count = 2 + canvas->width * canvas->height / (16 * size * size);
  for (int32_t i = 0; i < count; ++i) {
    discs.push_back({canvas->between(0, 10 * canvas->width) / 10.0,
                     canvas->between(0, 10 * canvas->height) / 10.0,
                     canvas->between(5, 10 * size) / 10.0, canvas->between(1, 6) * 1.0});
  }
  std::vector<double> most(canvas->values.size(), 0);
  for (const Disc& disc : discs) {
    const auto reach = static_cast<int32_t>(disc.radius + disc.soft) + 1;
    const auto cx = static_cast<int32_t>(disc.x);
    const auto cy = static_cast<int32_t>(disc.y);
    for (int32_t y = std::max(cy - reach, 0); y <= std::min(cy + reach, canvas->height - 1); ++y) {
      for (int32_t x = std::max(cx - reach, 0); x <= std::min(cx + reach, canvas->width - 1); ++x) {
        double& cell = most[static_cast<size_t>(y) * canvas->width + x];
        cell = std::max(cell, edge(disc.radius - std::hypot(x - disc.x, y - disc.y), disc.soft));
      }
    }
  }
  paint(canvas,
        [&](int32_t x, int32_t y) { return most[static_cast<size_t>(y) * canvas->width + x]; });
}

struct Family {
  const char* name;
  void (*draw)(Canvas* canvas);
};

int32_t sparse(Canvas* canvas, int32_t pixels) {
  return static_cast<int32_t>(canvas->values.size()) / pixels + 1;
}

const Family kFamilies[kMaskFamilies] = {
    {"letters, hard", [](Canvas* c) { letters(c, 0); }},
    {"dots 6 in 12", [](Canvas* c) { dots(c, 6, 12); }},
    {"checkerboard 1", [](Canvas* c) { checkerboard(c, 1); }},
    {"checkerboard 2", [](Canvas* c) { checkerboard(c, 2); }},
    {"checkerboard 3", [](Canvas* c) { checkerboard(c, 3); }},
    {"checkerboard 4", [](Canvas* c) { checkerboard(c, 4); }},
    {"dither, ordered", bayer},
    {"dither, diffused", errorDiffused},
    {"dither, random", [](Canvas* c) { noise(c, 500, 255, 255, 0); }},
    {"hard noise 1 %", [](Canvas* c) { noise(c, 10, 0, 0, 255); }},
    {"half plane, hard", [](Canvas* c) { halfPlane(c, 0); }},
    {"stripes, hard", [](Canvas* c) { stripes(c, 0); }},
    {"thin gaps", thinLines},
    {"sparse zeros", [](Canvas* c) { specks(c, 255, sparse(c, 4000), 0, 0); }},
    {"all selected", [](Canvas* c) { noise(c, 0, 0, 0, 255); }},
    {"letters, antialiased", [](Canvas* c) { letters(c, 1); }},
    {"letters, 3 px soft", [](Canvas* c) { letters(c, 3); }},
    {"letters, 6 px soft", [](Canvas* c) { letters(c, 6); }},
    {"rings, antialiased", [](Canvas* c) { rings(c, 1); }},
    {"half plane, antialiased", [](Canvas* c) { halfPlane(c, 1); }},
    {"half plane, 5 px soft", [](Canvas* c) { halfPlane(c, 5); }},
    {"stripes, antialiased", [](Canvas* c) { stripes(c, 1); }},
    {"gradient", gradient},
    {"every value random", [](Canvas* c) { noise(c, 1000, 0, 255, 0); }},
    {"half 0, half random", [](Canvas* c) { noise(c, 500, 1, 254, 0); }},
    {"half 255, half random", [](Canvas* c) { noise(c, 500, 0, 255, 255); }},
    {"noise 10 %", [](Canvas* c) { noise(c, 100, 0, 255, 255); }},
    {"noise 1 %", [](Canvas* c) { noise(c, 10, 0, 255, 255); }},
    {"noise 0.1 %", [](Canvas* c) { noise(c, 1, 0, 255, 255); }},
    {"noise 10 % of 0", [](Canvas* c) { noise(c, 900, 254, 255, 0); }},
    {"sparse soft specks", [](Canvas* c) { specks(c, 255, sparse(c, 4000), 0, 254); }},
    {"single pixels", [](Canvas* c) { specks(c, 0, sparse(c, 40), 1, 255); }},
    {"blobs", [](Canvas* c) { blobs(c, sparse(c, 1500), 9); }},
    {"wide blobs", [](Canvas* c) { blobs(c, sparse(c, 20000), 40); }},
    {"small soft shapes", [](Canvas* c) { softShapes(c, 6); }},
    {"soft shapes", [](Canvas* c) { softShapes(c, 25); }},
};

}  // namespace

const char* maskFamilyName(int32_t family) {
  return kFamilies[family].name;
}

int32_t maskFamilyNamed(const char* name) {
  for (int32_t i = 0; i < kMaskFamilies; ++i) {
    if (std::strcmp(maskFamilyName(i), name) == 0) return i;
  }
  return -1;
}

std::vector<uint8_t> maskOfFamily(int32_t family, int32_t width, int32_t height,
                                  TestRandom* random) {
  Canvas canvas = {width, height, std::vector<uint8_t>(static_cast<size_t>(width) * height),
                   random};
  kFamilies[family].draw(&canvas);
  return canvas.values;
}
