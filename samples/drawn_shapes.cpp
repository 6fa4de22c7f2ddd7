#include "samples/drawn_shapes.h"

#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>
#include <cmath>
#include <numbers>

#include "samples/value_noise.h"

namespace {

constexpr double kPi = std::numbers::pi;

// The outline of a line drawn with a round pen. Qt offsets curves coarsely, so the work is done
// enlarged.
QPainterPath penStroke(const QPainterPath& line, double thickness) {
  constexpr double kEnlarged = 32;
  QPainterPathStroker pen;
  pen.setWidth(thickness * kEnlarged);
  pen.setCapStyle(Qt::RoundCap);
  pen.setJoinStyle(Qt::RoundJoin);
  const QTransform enlarge = QTransform::fromScale(kEnlarged, kEnlarged);
  const QTransform reduce = QTransform::fromScale(1 / kEnlarged, 1 / kEnlarged);
  return reduce.map(pen.createStroke(enlarge.map(line)).simplified());
}

// Letters as pen lines in a box of the given width, 100 high, origin at the upper left.
QPainterPath letterM() {
  QPainterPath line;
  line.moveTo(0, 100);
  line.lineTo(8, 0);
  line.lineTo(52, 74);
  line.lineTo(96, 0);
  line.lineTo(104, 100);
  return line;
}

QPainterPath letterO() {
  QPainterPath line;
  line.addEllipse(QRectF(0, 0, 102, 100));
  return line;
}

QPainterPath letterR() {
  QPainterPath line;
  line.moveTo(0, 100);
  line.lineTo(0, 0);
  line.lineTo(42, 0);
  line.arcTo(QRectF(13, 0, 58, 58), 90, -180);
  line.lineTo(0, 58);
  line.moveTo(40, 58);
  line.lineTo(76, 100);
  return line;
}

// A leaf between two points; bulge moves its sides out, as a share of its length.
QPainterPath leaf(QPointF from, QPointF to, double bulge) {
  const QPointF along = to - from;
  const QPointF across(-along.y() * bulge, along.x() * bulge);
  QPainterPath path(from);
  path.cubicTo(from + along * 0.25 + across, from + along * 0.7 + across, to);
  path.cubicTo(from + along * 0.7 - across, from + along * 0.25 - across, from);
  return path;
}

// One half of the flourish, from the middle to the right.
QPainterPath flourishHalf() {
  QPainterPath stem(QPointF(34, 0));
  stem.cubicTo(120, -52, 190, 44, 282, 6);
  stem.cubicTo(330, -14, 330, -62, 292, -58);
  stem.cubicTo(262, -54, 266, -18, 292, -24);
  QPainterPath path = penStroke(stem, 17);
  path = path.united(leaf(QPointF(118, -8), QPointF(206, -54), 0.2));
  path = path.united(leaf(QPointF(176, 12), QPointF(262, 58), 0.2));
  return path;
}

QPainterPath star(QPointF centre, int points, double outer, double inner) {
  QPainterPath path;
  for (int i = 0; i < 2 * points; i++) {
    const double angle = kPi * i / points - kPi / 2;
    const double radius = i % 2 == 0 ? outer : inner;
    const QPointF place = centre + QPointF(std::cos(angle), std::sin(angle)) * radius;
    if (i == 0) {
      path.moveTo(place);
    } else {
      path.lineTo(place);
    }
  }
  path.closeSubpath();
  return path;
}

QPainterPath disc(QPointF centre, double radius) {
  QPainterPath path;
  path.addEllipse(centre, radius, radius);
  return path;
}

QPainterPath ring(QPointF centre, double outer, double inner) {
  return disc(centre, outer).subtracted(disc(centre, inner));
}

// Steel brushed in circles: streaks that run round, bright where the light meets them squarely.
QImage brushedSteel(int side) {
  QImage image(side, side, QImage::Format_RGBA8888);
  const double middle = side / 2.0;
  for (int y = 0; y < side; y++) {
    for (int x = 0; x < side; x++) {
      const double radius = std::hypot(x - middle, y - middle);
      const double angle = std::atan2(y - middle, x - middle);
      const double streak = valueNoise(radius * 1.3, 5 * std::cos(angle) + 20, 801);
      const double light = 0.5 + 0.5 * std::cos(2 * angle + kPi / 2);
      const double tone = 58 + 52 * light + 34 * (streak - 0.5);
      image.setPixelColor(x, y,
                          QColor(static_cast<int>(tone * 0.95), static_cast<int>(tone * 0.99),
                                 static_cast<int>(tone * 1.07)));
    }
  }
  return image;
}

}  // namespace

QImage drawLetterMask(int width, int height) {
  QImage image(width, height, QImage::Format_Grayscale8);
  image.fill(0);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::white);
  // Laid out for 1200 x 800.
  painter.scale(width / 1200.0, height / 800.0);

  constexpr double kLetterScale = 2.75;
  constexpr double kPen = 33;
  struct Placed {
    QPainterPath line;
    double left;
  };
  for (const Placed& letter :
       {Placed{letterM(), 0}, Placed{letterO(), 145}, Placed{letterR(), 292}}) {
    painter.save();
    painter.translate(95, 165);
    painter.scale(kLetterScale, kLetterScale);
    painter.translate(letter.left, 0);
    painter.drawPath(penStroke(letter.line, kPen));
    painter.restore();
  }

  painter.translate(600, 628);
  QPainterPath flourish = flourishHalf();
  flourish = flourish.united(QTransform::fromScale(-1, 1).map(flourish));
  flourish = flourish.united(star(QPointF(0, 0), 4, 46, 21));
  painter.drawPath(flourish);
  return image;
}

QImage drawSlantedMask(int times) {
  constexpr double kThickness = 11;  // of letters that are 100 high
  QPainterPath letters = penStroke(letterM(), kThickness);
  letters.addPath(penStroke(letterO(), kThickness).translated(134, 0));
  letters.addPath(penStroke(letterR(), kThickness).translated(270, 0));
  QPainterPath line(QPointF(0, 0));
  line.lineTo(40, 100);
  line.lineTo(80, 0);
  letters.addPath(penStroke(line, kThickness).translated(362, 0));
  QImage mask(240 * times, 90 * times, QImage::Format_Grayscale8);
  mask.fill(Qt::black);
  QPainter painter(&mask);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(0.46 * times, 0.46 * times);
  painter.translate(58, 48);
  painter.shear(-0.32, 0);
  letters.setFillRule(Qt::WindingFill);
  painter.fillPath(letters, Qt::white);
  return mask;
}

QImage drawEmblem(int side) {
  const QPointF middle(side / 2.0, side / 2.0);
  const double unit = side / 200.0;

  QPainterPath shape = ring(middle, 96 * unit, 76 * unit);
  shape = shape.united(star(middle, 8, 80 * unit, 34 * unit));
  shape = shape.subtracted(disc(middle, 17 * unit));
  for (int i = 0; i < 16; i++) {
    const double angle = kPi * (i + 0.5) / 8;
    const QPointF place = middle + QPointF(std::cos(angle), std::sin(angle)) * 86 * unit;
    shape = shape.subtracted(disc(place, 3.4 * unit));
  }

  QImage mask(side, side, QImage::Format_Alpha8);
  mask.fill(0);
  QPainter painter(&mask);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillPath(shape, Qt::white);
  painter.end();

  QImage image = brushedSteel(side);
  image.setAlphaChannel(mask);
  return image;
}
