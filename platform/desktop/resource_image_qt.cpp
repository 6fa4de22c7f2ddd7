#include "platform/desktop/resource_image_qt.h"

#include <QApplication>
#include <QIcon>
#include <QPixmap>

#include "dialog/dialog_scale.h"
#include "pictures/sources/scaled_pictures.h"
#include "platform/desktop/desktop_session.h"
#include "platform/resource_access.h"

constexpr int32_t kModuleIcon = 101;

QImage coveredImage(int32_t width, int32_t height, const uint8_t* rgb, const uint8_t* coverage) {
  QImage image(width, height, QImage::Format_ARGB32);
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x, rgb += 3) {
      image.setPixel(x, y, qRgba(rgb[0], rgb[1], rgb[2], *coverage++));
    }
  }
  return image;
}

QImage resourceIcon(int32_t id, int32_t scale) {
  ResourcePicture picture;
  if (!findScaledPicture(kIconNumbers + id, nearestScale(scale), &picture)) return QImage();
  return coveredImage(picture.width, picture.height, picture.rgb, picture.coverage);
}

void introduceProgram(const char* name) {
  QGuiApplication::setDesktopFileName(name);
  const QIcon own(QPixmap::fromImage(resourceIcon(kModuleIcon)));
  QApplication::setWindowIcon(QIcon::fromTheme(name, own));
}
