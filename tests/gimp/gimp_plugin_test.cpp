// The plug-in in GIMP without a screen: its bytes are those of the program.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>
#include <map>

#include "tests/gimp/gimp_scripts.h"
#include "tests/gimp/gimp_session.h"

static QByteArray text(const QString& word) {
  return "\"" + word.toUtf8() + "\"";
}

class GimpPlugIn : public testing::Test {
 protected:
  static QString apply(const QString& image, const QStringList& more, const QString& output) {
    return session->runProgram(
        MORVALIS_PROGRAM,
        QStringList{"apply", image, "-o", output, "--quiet", "--seed", "5"} + more);
  }
  static QString inGimp(const QByteArray& script) {
    const QString said = session->runScript(QByteArray(kVersionProcedures) + kProcedures + script +
                                            "(close-output-port told)");
    return said + session->read("told.txt");
  }

  static void SetUpTestSuite() {
    static int count = 1;
    static char name[] = "tests";
    static char* arguments[] = {name, nullptr};
    static QCoreApplication application(count, arguments);
    session = new GimpSession;
  }
  void SetUp() override {
    for (const char* program : {kGimpConsole, "vips"}) {
      if (QStandardPaths::findExecutable(program).isEmpty())
        GTEST_SKIP() << program << " is missing";
    }
  }
  static void TearDownTestSuite() {
    delete session;
  }
  static GimpSession* session;
};

GimpSession* GimpPlugIn::session = nullptr;

// --- Bytes ----------------------------------------------------------------------------------

constexpr QRect kMiddle(20, 14, 26, 20);
constexpr QRect kCorner(-9, -9, 30, 28);

struct Mask {
  const char* name;
  QRect selected;
  int feather;
};

constexpr Mask kMasks[] = {{"sharp", kMiddle, 0}, {"soft", kMiddle, 5}, {"corner", kCorner, 2}};

struct ByteCase {
  const char* name;
  QImage::Format format;
  const char* mask;  // null: nothing is selected
  int x;             // of the layer in GIMP's picture
  int y;
};

constexpr ByteCase kByteCases[] = {
    {"rgb-everything", QImage::Format_RGB888, nullptr, 0, 0},
    {"rgb-corner-moved", QImage::Format_RGB888, "corner", 7, 5},
    {"rgb-soft", QImage::Format_RGB888, "soft", 0, 0},
    {"rgba-transparency", QImage::Format_RGBA8888, nullptr, 0, 0},
    {"rgba-sharp", QImage::Format_RGBA8888, "sharp", 0, 0},
    {"grey-soft", QImage::Format_Grayscale8, "soft", 0, 0},
    {"rgb-16-soft", QImage::Format_RGBX64, "soft", 0, 0},
    {"rgba-16-transparency", QImage::Format_RGBA64, nullptr, 3, 0},
    {"grey-16-corner", QImage::Format_Grayscale16, "corner", 0, 0},
};

// Where a pixel is selected altogether or not at all. `changed` counts those that the effect shows
// in.
static void compare(const ByteCase& each, const QImage& before, const QImage& mask,
                    const QImage& wanted, const QImage& result, int* changed, int* kept) {
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const auto at = [x, y](const QImage& image) {
        return reinterpret_cast<const QRgba64*>(image.constScanLine(y))[x];
      };
      const int weight = mask.isNull() ? 255 : qAlpha(mask.pixel(x, y));
      if (weight != 0 && weight != 255) continue;
      ASSERT_EQ(at(result), at(wanted)) << each.name << " at " << x << ", " << y;
      const QRgba64 left = weight == 0 ? at(before) : at(result);
      ASSERT_EQ(at(result), left) << each.name << " at " << x << ", " << y;
      ++(at(result) == at(before) ? *kept : *changed);
    }
  }
}

TEST_F(GimpPlugIn, GivesTheProgramsBytes) {
  QByteArray script;
  for (const Mask& mask : kMasks) {
    const QString file = QString(mask.name) + ".png";
    ASSERT_TRUE(maskPicture(mask.selected, mask.feather).save(session->path(file)));
    script += "(define " + QByteArray(mask.name) + " (opened " + text(file) + "))\n";
  }
  for (const ByteCase& each : kByteCases) {
    const QString name = each.name;
    ASSERT_TRUE(noise(each.format, 77).save(session->path(name + ".png")));
    QStringList options = {"--preset", "gold",  "--set",
                           "radius=6", "--set", "textureChoice=marble"};
    script += "(let ((image (opened " + text(name + ".png") + ")))";
    if (each.mask != nullptr) {
      options += QStringList{"--mask", QString(each.mask) + ".png"};
      script += "(select image " + QByteArray(each.mask) + " " + QByteArray::number(each.x) + " " +
                QByteArray::number(each.y) + ")";
    }
    apply(name + ".png", options, name + "-wanted.png");
    script += "(apply-to image \"gold\" \"radius=6 textureChoice=marble\" 5) (saved image " +
              text(name + "-result.png") + "))\n";
  }
  const QString said = inGimp(script);
  for (const ByteCase& each : kByteCases) {
    const QString name = each.name;
    const bool selects = each.mask != nullptr;
    const QImage mask = selects ? QImage(session->path(QString(each.mask) + ".png")) : QImage();
    int changed = 0;
    int kept = 0;
    compare(each, session->picture(name + ".png"), mask, session->picture(name + "-wanted.png"),
            session->picture(name + "-result.png"), &changed, &kept);
    EXPECT_GT(changed, 300) << each.name << said.toStdString();
    EXPECT_GT(kept, selects ? 400 : -1) << each.name;
  }
}

// --- Precisions -----------------------------------------------------------------------------

struct Precision {
  const char* name;
  const char* constant;
  const char* written;  // in the file that is looked at, without any loss
};

constexpr Precision kPrecisions[] = {
    {"linear", "PRECISION-U8-LINEAR", "PRECISION-U8-LINEAR"},
    {"long", "PRECISION-U32-GAMMA", "PRECISION-U32-GAMMA"},
    {"half", "PRECISION-HALF-LINEAR", "PRECISION-FLOAT-LINEAR"},
    {"float", "PRECISION-FLOAT-LINEAR", "PRECISION-FLOAT-LINEAR"},
};

// What a picture is like that has more bits than the effect, or others: as it was wherever nothing
// is selected, and its transparency everywhere.
TEST_F(GimpPlugIn, KeepsWhatHasMoreBits) {
  ASSERT_TRUE(noise(QImage::Format_RGBA64, 3).save(session->path("deep.png")));
  const QImage mask = maskPicture(kMiddle, 4);
  ASSERT_TRUE(mask.save(session->path("deep-mask.png")));
  QByteArray script =
      "(define (raw given precision file) (let ((image (car (gimp-image-duplicate given))))"
      "(if (not (= precision (car (gimp-image-get-precision image))))"
      " (gimp-image-convert-precision image precision))"
      "(save-tiff image file)"
      "(gimp-image-delete image)))\n"
      "(define deep (opened \"deep.png\")) (select deep (opened \"deep-mask.png\") 0 0)\n";
  for (const Precision& each : kPrecisions) {
    const QByteArray name = each.name;
    const QByteArray written = each.written;
    script +=
        "(let ((image (car (gimp-image-duplicate deep))))"
        "(gimp-image-convert-precision image " +
        QByteArray(each.constant) +
        ")"
        "(raw image " +
        written + " \"" + name +
        "-before.tif\")"
        "(apply-to image \"gold\" \"radius=6\" 5)"
        "(raw image " +
        written + " \"" + name +
        "-after.tif\")"
        "(gimp-image-delete image))\n";
  }
  const QString said = inGimp(script);
  for (const Precision& each : kPrecisions) {
    QByteArray samples[2];
    for (const int i : {0, 1}) {
      const QString name = QString(each.name) + (i == 0 ? "-before" : "-after");
      session->runProgram("vips", {"rawsave", name + ".tif", name + ".raw"});
      samples[i] = session->read(name + ".raw");
    }
    // Versions differ in how many bytes they write.
    const auto bytes = static_cast<int>(samples[0].size()) / (kWidth * kHeight * 4);
    ASSERT_GT(bytes, 0) << each.name << said.toStdString();
    ASSERT_EQ(samples[1].size(), samples[0].size()) << each.name;
    int changed = 0;
    for (int pixel = 0; pixel < kWidth * kHeight; ++pixel) {
      const auto part = [&](int i, int first, int count) {
        return samples[i].mid((pixel * 4 + first) * bytes, count * bytes);
      };
      const int weight = qAlpha(mask.pixel(pixel % kWidth, pixel / kWidth));
      ASSERT_EQ(part(0, 3, 1), part(1, 3, 1)) << each.name << " alpha of pixel " << pixel;
      const bool same = part(0, 0, 3) == part(1, 0, 3);
      ASSERT_TRUE(same || weight != 0) << each.name << " pixel " << pixel;
      if (!same && weight == 255) ++changed;
    }
    EXPECT_GT(changed, 400) << each.name;
  }
}

// --- Last values ----------------------------------------------------------------------------

// What a dialog leaves behind is a settings file.
TEST_F(GimpPlugIn, RepeatsTheLastDialog) {
  ASSERT_TRUE(noise(QImage::Format_RGB888, 9).save(session->path("last.png")));
  const QByteArray repeat =
      "(tell \"repeat\" (lambda () (let ((image (opened \"last.png\")))"
      "(light RUN-WITH-LAST-VALS image \"\" \"\" 0)"
      "(saved image \"repeated.png\"))))\n";
  const QString none = inGimp(repeat);
  EXPECT_TRUE(none.contains("there are no last values: the dialog has not been confirmed yet"))
      << none.toStdString();

  QDir(session->path("state")).mkdir("morvalis");
  session->runProgram(MORVALIS_PROGRAM, {"preset", "save", "kept.q9q", "--set", "radius=9", "--set",
                                         "textureChoice=none", "--set", "light1Color=#ff8000"});
  ASSERT_TRUE(QFile::copy(session->path("kept.q9q"),
                          session->path("state/morvalis/Morvalis cached settings")));
  const QString said = inGimp(repeat);
  EXPECT_TRUE(said.contains("repeat: (done)")) << said.toStdString();
  apply("last.png", {"--last"}, "wanted.png");
  EXPECT_EQ(session->picture("repeated.png"), session->picture("wanted.png"));
  EXPECT_NE(session->picture("repeated.png"), session->picture("last.png"));
}

// --- What cannot be ------------------------------------------------------------------------

struct WrongCall {
  const char* name;
  const char* prepare;  // does something to `image` before
  const char* arguments;
  const char* reason;
};

constexpr WrongCall kWrongCalls[] = {
    {"setting", "", "\"gold\" \"radius=999\" 5", "radius=999: out of range; radius takes 2 to 100"},
    {"name", "", "\"\" \"radios=9\" 5", "there is no setting \"radios\"; did you mean radius?"},
    {"quote", "", "\"\" \"shape='ridge\" 5", "shape='ridge: "},
    {"preset", "", "\"golt\" \"\" 5",
     "no preset of this name comes with the program; did you mean"},
    {"picture", "", "\"\" \"environment=nowhere.png\" 5", "nowhere.png: "},
    {"nothing",
     "(gimp-image-resize image 90 90 0 0) (gimp-image-select-rectangle image "
     "CHANNEL-OP-REPLACE 80 80 5 5)",
     "\"gold\" \"\" 5", "nothing of this layer is selected"},
    {"locked", "(gimp-item-set-lock-content (layer-of image) TRUE)", "\"gold\" \"\" 5",
     "is locked; unlock its pixels"},
    {"indexed",
     "(gimp-image-convert-indexed image CONVERT-DITHER-NONE CONVERT-PALETTE-GENERATE 9 "
     "FALSE FALSE \"\")",
     "\"gold\" \"\" 5", "belongs to an indexed picture; make it RGB"},
    {"group", "(gimp-image-insert-layer image (new-group image) 0 0)", "\"gold\" \"\" 5",
     "is a layer group; choose one of its layers"},
    {"clear", "(gimp-layer-add-alpha (layer-of image)) (gimp-drawable-edit-clear (layer-of image))",
     "\"gold\" \"\" 5", "the layer is transparent everywhere"},
    {"dialog", "", "RUN-INTERACTIVE", "the dialog cannot be opened (there is no display)"},
};

TEST_F(GimpPlugIn, SaysWhatIsWrongAndChangesNothing) {
  ASSERT_TRUE(noise(QImage::Format_RGB888, 21).save(session->path("wrong.png")));
  QByteArray script = "(define wrong (opened \"wrong.png\"))\n";
  for (const WrongCall& each : kWrongCalls) {
    const QByteArray name = each.name;
    const bool dialog = name == "dialog";
    script += "(let ((image (car (gimp-image-duplicate wrong))))" + QByteArray(each.prepare) +
              "(gimp-image-clean-all image) (tell \"" + name + "\" (lambda () (light " +
              (dialog ? "RUN-INTERACTIVE" : "RUN-NONINTERACTIVE") + " image " +
              (dialog ? "\"\" \"\" 0" : each.arguments) +
              ")))"
              "(tell \"" +
              name +
              " changed\" (lambda () (if (= TRUE (car (gimp-image-is-dirty "
              "image))) (error \"yes\")))))\n";
  }
  const QString said = inGimp(script);
  const QStringList lines = said.split('\n');
  for (const WrongCall& each : kWrongCalls) {
    const QStringList told = lines.filter(QRegularExpression(QString("^%1: \\(").arg(each.name)));
    ASSERT_EQ(told.size(), 1) << said.toStdString();
    EXPECT_TRUE(told[0].contains(each.reason)) << told[0].toStdString();
    EXPECT_FALSE(told[0].contains("--")) << told[0].toStdString();
    EXPECT_TRUE(lines.contains(QString(each.name) + " changed: (done)")) << said.toStdString();
  }
}
