// make_samples: paints the pictures that the demonstration works on.
//   morvalis_samples FOLDER

#include <QDir>
#include <QImage>
#include <cstdio>

#include "samples/drawn_shapes.h"
#include "samples/painted_surfaces.h"

namespace {

constexpr int kWidth = 1200;
constexpr int kHeight = 800;
constexpr int kEmblemSide = 640;
constexpr int kJpegQuality = 95;

// An even ground, as large as the slanted letters.
constexpr int kGroundWidth = 240;
constexpr int kGroundHeight = 90;

QImage paintGround(int width, int height) {
  QImage ground(width, height, QImage::Format_RGB888);
  ground.fill(QColor(70, 90, 130));
  return ground;
}

bool savePicture(const QImage& image, const QDir& folder, const char* name) {
  const QString path = folder.filePath(QString::fromLatin1(name));
  if (image.save(path, nullptr, path.endsWith(".jpg") ? kJpegQuality : -1)) return true;
  std::fprintf(stderr, "morvalis_samples: cannot write %s\n", qPrintable(path));
  return false;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: morvalis_samples FOLDER\n");
    return 2;
  }
  const QDir folder(QString::fromLocal8Bit(arguments[1]));
  if (!folder.mkpath(".")) {
    std::fprintf(stderr, "morvalis_samples: cannot make %s\n", arguments[1]);
    return 1;
  }
  const bool done = savePicture(paintBoards(kWidth, kHeight), folder, "boards.jpg") &&
                    savePicture(paintSlate(kWidth, kHeight), folder, "slate.png") &&
                    savePicture(drawLetterMask(kWidth, kHeight), folder, "letters.png") &&
                    savePicture(drawSlantedMask(1), folder, "slanted.png") &&
                    savePicture(drawSlantedMask(4), folder, "slanted-4.png") &&
                    savePicture(paintGround(kGroundWidth, kGroundHeight), folder, "ground.png") &&
                    savePicture(drawEmblem(kEmblemSide), folder, "emblem.png") &&
                    savePicture(paintSkyEnvironment(), folder, "sky.bmp") &&
                    savePicture(paintCopperEnvironment(), folder, "copper.bmp") &&
                    savePicture(paintStudioEnvironment(), folder, "studio.bmp") &&
                    savePicture(paintLeatherRelief(), folder, "leather.bmp") &&
                    savePicture(paintHammeredRelief(), folder, "hammered.bmp");
  return done ? 0 : 1;
}
