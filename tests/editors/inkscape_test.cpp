// The extension in Inkscape: what it lays over the drawing, by the action that its menu has.

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <algorithm>

#include "tests/editors/editor_session.h"

constexpr int kDpi = 96;  // of the pictures that are compared

// Shapes and text in a layer that is moved, turned and half transparent; a clone of something that
// is not selected.
constexpr char kDrawing[] = R"svg(<svg xmlns="http://www.w3.org/2000/svg"
 xmlns:xlink="http://www.w3.org/1999/xlink"
 xmlns:inkscape="http://www.inkscape.org/namespaces/inkscape"
 width="80mm" height="60mm" viewBox="0 0 160 120">
<rect id="ground" width="160" height="120" fill="#335577"/>
<g id="layer" inkscape:groupmode="layer" transform="translate(14,-4) rotate(7) scale(0.9)"
 style="opacity:0.8">
<rect id="box" x="20" y="20" width="30" height="30" fill="#c03020"/>
<g id="group"><circle id="round" cx="100" cy="42" r="22" fill="#20a040"/></g>
<use id="clone" xlink:href="#box" y="45"/>
<circle id="above" cx="125" cy="90" r="12" fill="#ffffff"/></g></svg>
)svg";

class Inkscape : public EditorTest {
 protected:
  void SetUp() override {
    const QString away = missing({"inkscape", "Xvfb"});
    if (!away.isEmpty()) GTEST_SKIP() << away.toStdString() << " is missing";
    if (!hasModule("lxml")) GTEST_SKIP() << "python3-lxml is missing";
    environment.insert("INKSCAPE_PROFILE_DIR", path("inkscape"));
    QDir(path("inkscape/extensions")).mkpath(".");
    for (const char* file : {"morvalis.inx", "morvalis_render.py"}) {
      ASSERT_TRUE(QFile::copy(QString(MORVALIS_DOCUMENTS "/inkscape/") + file,
                              path(QString("inkscape/extensions/") + file)));
    }
    write("drawing.svg", kDrawing);
    openScreen();
  }

  // What the user chose in the extension's window last.
  void choose(const QByteArray& choices) const {
    write("inkscape/preferences.xml",
          "<?xml version=\"1.0\"?><inkscape version=\"1\"><group id=\"extensions\" " + choices +
              "/></inkscape>");
  }

  QString inInkscape(const QString& actions) const {
    return run("inkscape", {"--batch-process", "--actions=" + actions, "drawing.svg"});
  }

  QImage shown(const QString& drawing) const {
    run("inkscape", {"--export-type=png", "--export-filename=" + drawing + ".png",
                     QString("--export-dpi=%1").arg(kDpi), drawing});
    return picture(drawing + ".png");
  }
};

static int difference(const QImage& one, const QImage& other, QPoint at) {
  const QColor a = one.pixelColor(at);
  const QColor b = other.pixelColor(at);
  return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
                   std::abs(a.blue() - b.blue())});
}

// Where the shapes are in the picture, by Inkscape's own rendering of each in white.
static bool changedWithin(const QImage& before, const QImage& after, const QRect& area) {
  int changed = 0;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) {
      if (difference(before, after, {x, y}) > 8) ++changed;
    }
  }
  return changed > area.width() * area.height() / 10;
}

TEST_F(Inkscape, LaysTheRenderingOverWhatIsSelected) {
  choose(
      "org.quorrelin.morvalis.preset=\"gold\" org.quorrelin.morvalis.settings=\"radius=5 "
      "shape='round'\" org.quorrelin.morvalis.dpi=\"96\"");
  const QString said = inInkscape(
      "select-by-id:round,clone;org.quorrelin.morvalis.noprefs;export-filename:lit.svg;export-do");
  const QByteArray lit = read("lit.svg");
  ASSERT_EQ(lit.count("<image"), 1) << said.toStdString() << lit.toStdString();
  EXPECT_FALSE(lit.contains("morvalis-probe"));
  EXPECT_GT(lit.indexOf("<image"), lit.indexOf("id=\"clone\"")) << "above the topmost of them";
  EXPECT_LT(lit.indexOf("<image"), lit.indexOf("id=\"above\"")) << "and no higher";

  const QImage before = shown("drawing.svg");
  const QImage after = shown("lit.svg");
  ASSERT_EQ(before.size(), after.size());
  // The edges of what is lit are those of what is below: nothing but the two shapes has changed.
  write("shapes.svg", QByteArray(kDrawing)
                          .replace("#335577", "#000000")
                          .replace("#20a040", "#ffffff")
                          .replace("opacity:0.8", "")
                          .replace("id=\"above\"", "id=\"above\" display=\"none\"")
                          .replace("#c03020", "#ffffff"));
  const QImage shapes = shown("shapes.svg");
  const auto isShape = [&shapes](int x, int y) {  // the rendering is drawn with soft edges
    for (int i = 0; i < 9; ++i) {
      if (qRed(shapes.pixel(x + i % 3 - 1, y + i / 3 - 1)) != 0) return true;
    }
    return false;
  };
  int lonely = 0;
  int changed = 0;
  for (int y = 1; y < before.height() - 1; ++y) {
    for (int x = 1; x < before.width() - 1; ++x) {
      if (difference(before, after, {x, y}) <= 4) continue;
      ++changed;
      if (!isShape(x, y)) ++lonely;
    }
  }
  EXPECT_GT(changed, 2000);
  EXPECT_EQ(lonely, 0);
  const auto part = [&](double x, double y) {
    const QPoint at(static_cast<int>(x * before.width()), static_cast<int>(y * before.height()));
    return QRect(at - QPoint(6, 6), QSize(13, 13));
  };
  EXPECT_TRUE(changedWithin(before, after, part(0.62, 0.36))) << "the circle";
  EXPECT_TRUE(changedWithin(before, after, part(0.21, 0.70))) << "the clone";
  EXPECT_FALSE(changedWithin(before, after, part(0.25, 0.30))) << "what it is a clone of";
}

TEST_F(Inkscape, IsUndoneInOneStep) {
  choose("org.quorrelin.morvalis.preset=\"gold\"");
  inInkscape(
      "select-by-id:round;org.quorrelin.morvalis.noprefs;export-filename:lit.svg;export-do;"
      "undo;export-filename:undone.svg;export-do");
  EXPECT_EQ(read("lit.svg").count("<image"), 1);
  EXPECT_EQ(read("undone.svg").count("<image"), 0);
  EXPECT_EQ(shown("undone.svg"), shown("drawing.svg"));
}

TEST_F(Inkscape, LinksAPictureBesideTheDrawing) {
  choose("org.quorrelin.morvalis.preset=\"old copper\" org.quorrelin.morvalis.link=\"1\"");
  write("drawing-morvalis.png", "something else");
  inInkscape("select-by-id:round;org.quorrelin.morvalis.noprefs;export-filename:lit.svg;export-do");
  EXPECT_EQ(read("drawing-morvalis.png"), "something else");
  ASSERT_FALSE(picture("drawing-morvalis-2.png").isNull());
  EXPECT_FALSE(read("lit.svg").contains("data:image"));
  EXPECT_TRUE(changedWithin(shown("drawing.svg"), shown("lit.svg"), QRect(180, 70, 20, 20)));
}

// The file by itself, as Inkscape starts it: what it writes and what it says.
TEST_F(Inkscape, SaysWhatIsWrong) {
  const auto said = [this](const QStringList& arguments) {
    int exitCode = 0;
    const QString text = run("/usr/bin/python3",
                             QStringList{path("inkscape/extensions/morvalis_render.py")} +
                                 arguments + QStringList{"drawing.svg"},
                             &exitCode);
    EXPECT_EQ(exitCode, 1) << text.toStdString();
    EXPECT_FALSE(text.contains("<svg")) << text.toStdString();
    return text.trimmed();
  };
  EXPECT_EQ(said({}), "Morvalis: Select what is to be lit.");
  EXPECT_TRUE(said({"--id=round", "--preset=golf"}).contains("golf"));
  EXPECT_TRUE(said({"--id=round", "--settings=radius"}).contains("radius"));
  EXPECT_TRUE(said({"--id=round", "--settings='radius=5"}).contains("quot"));
  EXPECT_TRUE(said({"--id=round", "--link=true"}).contains("Save the drawing first"));
  EXPECT_TRUE(said({"--id=round", "--dpi=60000"}).contains("fewer pixels per inch"));
  write("drawing.svg",
        QByteArray(kDrawing).replace("id=\"round\"", "id=\"round\" display=\"none\""));
  EXPECT_TRUE(said({"--id=round"}).contains("can be seen"));
}
