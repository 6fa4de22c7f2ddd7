// line_chart: lines over logarithmic axes, written as a drawing (SVG) that reads on light and dark
// pages.

#pragma once

#include <string>
#include <vector>

struct ChartPoint {
  double x;  // both above 0
  double y;
};

struct ChartLine {
  std::string name;
  std::vector<ChartPoint> points;
};

struct LineChart {
  std::string title;
  std::string xLabel;
  std::string yLabel;
  std::vector<double> xMarks;  // where the axis is labelled, ascending
  std::vector<ChartLine> lines;
};

// False when the file cannot be written.
bool writeChart(const LineChart& chart, const std::string& path);
