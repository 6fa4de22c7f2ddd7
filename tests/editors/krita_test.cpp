// The plug-in in Krita: its bytes by Krita's own runner of scripts, its menu by a window.

#include <QDir>
#include <QFile>

#include "tests/editors/editor_session.h"

class Krita : public EditorTest {
 protected:
  void SetUp() override {
    const QString away = missing({"krita", "kritarunner", "Xvfb", "xdotool"});
    if (!away.isEmpty()) GTEST_SKIP() << away.toStdString() << " is missing";
    if (!hasModule("PyQt5")) GTEST_SKIP() << "python3-pyqt5 is missing";
    openScreen();
  }
};

struct KritaCase {
  const char* model;
  const char* depth;
  QImage::Format format;
  bool selects;
};

constexpr KritaCase kKritaCases[] = {
    {"RGBA", "U8", QImage::Format_RGBA8888, false},
    {"RGBA", "U8", QImage::Format_RGBA8888, true},
    {"RGBA", "U16", QImage::Format_RGBA64, false},
    {"RGBA", "U16", QImage::Format_RGBA64, true},
    {"GRAYA", "U8", QImage::Format_Grayscale8, false},
    {"GRAYA", "U16", QImage::Format_Grayscale16, true},
};

// The script opens each picture, renders a layer of it, and saves what stands above.
TEST_F(Krita, GivesTheProgramsBytes) {
  QByteArray cases;
  int number = 0;
  for (const KritaCase& each : kKritaCases) {
    const QString name = QString::number(number++);
    ASSERT_TRUE(disc(each.format, 70).save(path(name + ".png")));
    cases += name.toLatin1() + " " + each.model + " " + each.depth +
             (each.selects ? " half" : " all") + "\n";
  }
  write("cases", cases);
  environment.insert("PYTHONPATH", MORVALIS_TESTS "/editors:" MORVALIS_SOURCES "/hosts/krita");
  const QString said = run("kritarunner", {"-s", "krita_layers"});
  number = 0;
  for (const KritaCase& each : kKritaCases) {
    const QString name = QString::number(number++);
    SCOPED_TRACE(name.toStdString() + each.model + each.depth + "\n" + said.toStdString());
    // The script has written what it gave to the program, which is run once more here.
    run(MORVALIS_PROGRAM, {"apply", name + "-given.png", "--preset", "gold", "--seed", "5",
                           "--quiet", "-o", name + "-wanted.png"});
    const QImage given = picture(name + "-given.png");
    const QImage original = picture(name + ".png");
    ASSERT_EQ(given.size(), original.size());
    const QImage above = picture(name + "-above.png");
    EXPECT_EQ(above, picture(name + "-wanted.png"));
    EXPECT_NE(above, given);
    for (int y = 0; y < given.height(); ++y) {
      for (int x = 0; x < given.width(); ++x) {
        const bool selected = !each.selects || x >= 20;
        const QRgba64 there = reinterpret_cast<const QRgba64*>(original.constScanLine(y))[x];
        const QRgba64 sent = reinterpret_cast<const QRgba64*>(given.constScanLine(y))[x];
        ASSERT_EQ(sent.alpha(), selected ? there.alpha() : 0) << x << ", " << y;
        ASSERT_TRUE(there.alpha() != 65535 || sent.red() == there.red()) << x << ", " << y;
      }
    }
  }
  EXPECT_TRUE(said.contains("CMYKA: Morvalis takes RGB and grey layers")) << said.toStdString();
  EXPECT_TRUE(said.contains("empty: Nothing is selected")) << said.toStdString();
}

// A plug-in of the test's own stands for the user, but in the program's dialog.
TEST_F(Krita, ShowsTheDialogAndUndoes) {
  ASSERT_TRUE(disc(QImage::Format_RGBA8888, 90).save(path("photo.png")));
  const QString plugIns = path("data/krita/pykrita");
  QDir(plugIns + "/user").mkpath(".");
  QFile::link(MORVALIS_SOURCES "/hosts/krita/morvalis", plugIns + "/morvalis");
  QFile::copy(MORVALIS_SOURCES "/hosts/krita/morvalis.desktop", plugIns + "/morvalis.desktop");
  QFile::copy(MORVALIS_TESTS "/editors/krita_user.py", plugIns + "/user/__init__.py");
  write("data/krita/pykrita/user.desktop",
        read("data/krita/pykrita/morvalis.desktop").replace("=morvalis", "=user"));
  write("config/kritarc", "[python]\nenable_morvalis=true\nenable_user=true\n");
  QProcess krita;
  start(&krita, "krita", {"--nosplash"});
  press(windowNamed("^Morvalis$"), {"Return"});
  EXPECT_TRUE(krita.waitForFinished(300000));
  krita.kill();
  krita.waitForFinished(10000);
  EXPECT_EQ(read("told"), "2 layers, changed\n1 layers, as before\n2 layers, as after\n3 layers\n")
      << krita.readAll().toStdString();
  run(MORVALIS_PROGRAM, {"apply", "photo.png", "--last", "--quiet", "-o", "wanted.png"});
  EXPECT_EQ(picture("above.png"), picture("wanted.png"));
}
