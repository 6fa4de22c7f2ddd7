#include "platform/dialog_text.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstring>

#include "platform/desktop/session_state.h"

static QFont dialogFont(int32_t scale) {
  QFont font;
  font.setFamilies({"Arial", "Liberation Sans"});
  font.setPixelSize(scaledLength(kFontHeight, scale));
  font.setWeight(QFont::Normal);
  font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
  return font;
}

// Fonts need the system's windows; without them texts have no width.
int32_t textWidth(const char* text, int32_t scale) {
  if (!programHasWindows()) return 0;
  try {
    const QString shown = QString::fromUtf8(text);
    const QFontMetrics metrics(dialogFont(scale));
    // A slanting last letter may stand out of the width that its line takes.
    const QRect ink = metrics.boundingRect(shown);
    return std::max(metrics.horizontalAdvance(shown), shown.isEmpty() ? 0 : ink.right() + 1);
  } catch (...) {
    return 0;  // out of memory
  }
}

static void renderCoverage(const QString& text, int32_t width, int32_t scale, uint8_t* coverage) {
  const int32_t height = textLineHeight(scale);
  QImage image(width, height, QImage::Format_RGB32);
  if (image.isNull()) return;
  image.fill(Qt::black);
  QPainter painter(&image);
  const QFont font = dialogFont(scale);
  painter.setFont(font);
  painter.setPen(Qt::white);
  painter.drawText(0, QFontMetrics(font).ascent(), text);
  painter.end();
  for (int32_t y = 0; y < height; ++y) {
    const QRgb* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int32_t x = 0; x < width; ++x) *coverage++ = static_cast<uint8_t>(qGreen(row[x]));
  }
}

void drawTextCoverage(const char* text, int32_t scale, uint8_t* coverage) {
  const int32_t width = textWidth(text, scale);
  if (width <= 0) return;
  std::memset(coverage, 0, static_cast<size_t>(width * textLineHeight(scale)));
  try {
    renderCoverage(QString::fromUtf8(text), width, scale, coverage);
  } catch (...) {
    // Out of memory: nothing is covered.
  }
}
