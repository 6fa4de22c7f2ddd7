#include "platform/dialog_text.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstring>

#include "platform/desktop/session_state.h"

constexpr int kFontHeight = 11;  // pixels

static QFont dialogFont() {
  QFont font;
  font.setFamilies({"Arial", "Liberation Sans"});
  font.setPixelSize(kFontHeight);
  font.setWeight(QFont::Normal);
  font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
  return font;
}

// Fonts need the system's windows; without them texts have no width.
int32_t textWidth(const char* text) {
  if (!programHasWindows()) return 0;
  try {
    const QString shown = QString::fromUtf8(text);
    const QFontMetrics metrics(dialogFont());
    // A slanting last letter may stand out of the width that its line takes.
    const QRect ink = metrics.boundingRect(shown);
    return std::max(metrics.horizontalAdvance(shown), shown.isEmpty() ? 0 : ink.right() + 1);
  } catch (...) {
    return 0;  // out of memory
  }
}

static void renderCoverage(const QString& text, int32_t width, uint8_t* coverage) {
  QImage image(width, kTextLineHeight, QImage::Format_RGB32);
  if (image.isNull()) return;
  image.fill(Qt::black);
  QPainter painter(&image);
  const QFont font = dialogFont();
  painter.setFont(font);
  painter.setPen(Qt::white);
  painter.drawText(0, QFontMetrics(font).ascent(), text);
  painter.end();
  for (int32_t y = 0; y < kTextLineHeight; ++y) {
    const QRgb* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int32_t x = 0; x < width; ++x) *coverage++ = static_cast<uint8_t>(qGreen(row[x]));
  }
}

void drawTextCoverage(const char* text, uint8_t* coverage) {
  const int32_t width = textWidth(text);
  if (width <= 0) return;
  std::memset(coverage, 0, static_cast<size_t>(width) * kTextLineHeight);
  try {
    renderCoverage(QString::fromUtf8(text), width, coverage);
  } catch (...) {
    // Out of memory: nothing is covered.
  }
}
