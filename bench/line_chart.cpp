#include "bench/line_chart.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>

constexpr double kWidth = 760;  // of the drawing, like all lengths here in its own units
constexpr double kHeight = 420;
constexpr double kLeft = 70;
constexpr double kRight = 200;  // the names of the lines stand there
constexpr double kTop = 44;
constexpr double kBottom = 54;
constexpr double kNameStep = 16;  // least distance of two names

// Told apart by people who see fewer colours, too.
constexpr const char* kColours[] = {"#0072b2", "#d55e00", "#009e73", "#cc79a7",
                                    "#e69f00", "#56b4e9", "#6e6e6e"};
constexpr size_t kColourCount = sizeof(kColours) / sizeof(kColours[0]);

struct Axis {
  double low;  // logarithms
  double high;
  double from;  // where these lie in the drawing
  double to;
};

static double place(const Axis& axis, double value) {
  const double share = (std::log10(value) - axis.low) / (axis.high - axis.low);
  return axis.from + share * (axis.to - axis.from);
}

static Axis horizontalAxis(const LineChart& chart) {
  return {std::log10(chart.xMarks.front()), std::log10(chart.xMarks.back()), kLeft,
          kWidth - kRight};
}

static Axis verticalAxis(const LineChart& chart) {
  double low = 1e300;
  double high = 0;
  for (const ChartLine& line : chart.lines) {
    for (const ChartPoint& point : line.points) {
      low = std::min(low, point.y);
      high = std::max(high, point.y);
    }
  }
  return {std::floor(std::log10(low)), std::ceil(std::log10(high)), kHeight - kBottom, kTop};
}

static std::string number(double value) {
  char text[32];
  std::snprintf(text, sizeof(text), value < 10 ? "%.2g" : "%.0f", value);
  return text;
}

static void label(std::ostream& out, double x, double y, const char* anchor,
                  const std::string& text, const char* more = "") {
  out << "<text x='" << x << "' y='" << y << "' text-anchor='" << anchor << "'" << more << ">"
      << text << "</text>\n";
}

static void rule(std::ostream& out, double x1, double y1, double x2, double y2) {
  out << "<line x1='" << x1 << "' y1='" << y1 << "' x2='" << x2 << "' y2='" << y2
      << "' stroke='#d0d0d0'/>\n";
}

static void drawAxes(std::ostream& out, const LineChart& chart, const Axis& across,
                     const Axis& up) {
  for (double mark : chart.xMarks) {
    const double x = place(across, mark);
    rule(out, x, kTop, x, kHeight - kBottom);
    label(out, x, kHeight - kBottom + 18, "middle", number(mark));
  }
  for (double power = up.low; power <= up.high + 0.5; ++power) {
    const double y = place(up, std::pow(10, power));
    rule(out, kLeft, y, kWidth - kRight, y);
    label(out, kLeft - 8, y + 4, "end", number(std::pow(10, power)));
  }
  label(out, (kLeft + kWidth - kRight) / 2, kHeight - 12, "middle", chart.xLabel);
  label(out, kLeft - 50, kTop - 14, "start", chart.yLabel);
  label(out, kWidth / 2, 20, "middle", chart.title, " font-weight='bold' font-size='15'");
}

static void drawLine(std::ostream& out, const ChartLine& line, const char* colour,
                     const Axis& across, const Axis& up) {
  out << "<polyline fill='none' stroke-width='2' stroke='" << colour << "' points='";
  for (const ChartPoint& point : line.points) {
    out << place(across, point.x) << ',' << place(up, point.y) << ' ';
  }
  out << "'/>\n";
  for (const ChartPoint& point : line.points) {
    out << "<circle r='3' cx='" << place(across, point.x) << "' cy='" << place(up, point.y)
        << "' fill='" << colour << "'/>\n";
  }
}

// Beside the lines' ends from the top down, moved apart where they would cover each other.
static void drawNames(std::ostream& out, const LineChart& chart, const Axis& up) {
  std::vector<std::pair<double, size_t>> ends;
  for (size_t i = 0; i < chart.lines.size(); ++i) {
    ends.emplace_back(place(up, chart.lines[i].points.back().y), i);
  }
  std::sort(ends.begin(), ends.end());
  double lowest = 0;
  for (const auto& [end, i] : ends) {
    lowest = std::max(end + 4, lowest + kNameStep);
    const std::string colour = std::string(" fill='") + kColours[i % kColourCount] + "'";
    label(out, kWidth - kRight + 10, lowest, "start", chart.lines[i].name, colour.c_str());
  }
}

bool writeChart(const LineChart& chart, const std::string& path) {
  const Axis across = horizontalAxis(chart);
  const Axis up = verticalAxis(chart);
  std::ostringstream out;
  out << "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 " << kWidth << ' ' << kHeight
      << "' font-family='sans-serif' font-size='12' fill='#404040'>\n"
      << "<rect width='100%' height='100%' fill='#ffffff'/>\n";
  drawAxes(out, chart, across, up);
  for (size_t i = 0; i < chart.lines.size(); ++i) {
    drawLine(out, chart.lines[i], kColours[i % kColourCount], across, up);
  }
  drawNames(out, chart, up);
  out << "</svg>\n";
  std::ofstream file(path, std::ios::binary);
  file << out.str();
  return static_cast<bool>(file.flush());
}
