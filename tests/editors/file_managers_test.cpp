// The program among the actions of a picture file, by the keys that a user presses.

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include "tests/editors/editor_session.h"

struct FileManager {
  const char* program;
  const char* window;  // its title
  const char* menuKey;
  int edit;  // how far from the menu's end
};

static std::ostream& operator<<(std::ostream& text, const FileManager& manager) {
  return text << manager.program;
}

constexpr int kSettling = 3000;  // milliseconds until a window shows its files, or a menu
constexpr int kAgain = 2;        // the same for several pictures

constexpr FileManager kFileManagers[] = {
    {"dolphin", "^pictures", "Menu", 2},
    {"nautilus", "^pictures", "shift+F10", 3},
};

class FileManagers : public EditorTest, public testing::WithParamInterface<FileManager> {
 protected:
  void choose(const FileManager& manager, int place) {
    const QString window = windowNamed(manager.window);
    QThread::msleep(kSettling);
    press(window, {manager.menuKey});
    QThread::msleep(kSettling);
    press("", QStringList(place, "Up") + QStringList{"Return"});
  }
};

TEST_P(FileManagers, OfferTheProgramForPictures) {
  const FileManager& manager = GetParam();
  const QString away = missing({manager.program, "Xvfb", "xdotool", "dbus-run-session"});
  if (!away.isEmpty()) GTEST_SKIP() << away.toStdString() << " is missing";
  const QString documents = MORVALIS_DOCUMENTS "/file_managers/";
  for (const char* place : {"data/kio/servicemenus", "data/nautilus-python/extensions"}) {
    QDir(path(place)).mkpath(".");
  }
  for (const char* action : {"morvalis-edit.desktop", "morvalis-again.desktop"}) {
    ASSERT_TRUE(QFile::copy(documents + action, path("data/kio/servicemenus/") + action));
  }
  ASSERT_TRUE(QFile::copy(documents + "morvalis_nautilus.py",
                          path("data/nautilus-python/extensions/morvalis_nautilus.py")));
  QDir(path("pictures")).mkpath(".");
  const QString image = path("pictures/my 'own' {name}.png");
  ASSERT_TRUE(disc(QImage::Format_RGBA8888, 90).save(image));
  openScreen();
  environment.insert("GSK_RENDERER", "cairo");
  environment.insert("GDK_BACKEND", "x11");
  QProcess session;
  start(&session, "dbus-run-session", {manager.program, "--select", image});

  const auto appears = [this](const QString& name) {
    return waitUntil([&] { return !QImage(path("pictures/" + name)).isNull(); });
  };
  choose(manager, manager.edit);
  press(windowNamed("^Morvalis$"), {"Return"});
  EXPECT_TRUE(appears("my 'own' {name}-morvalis.png"));
  press(windowNamed(manager.window), {"Home", "ctrl+a"});  // two pictures by now
  choose(manager, kAgain);
  EXPECT_TRUE(appears("my 'own' {name}-morvalis-2.png"));
  EXPECT_TRUE(appears("my 'own' {name}-morvalis-morvalis.png"));
  EXPECT_EQ(read("pictures/my 'own' {name}-morvalis.png"),
            read("pictures/my 'own' {name}-morvalis-2.png"));
  session.terminate();
  if (!session.waitForFinished(10000)) session.kill();
  session.waitForFinished(10000);
}

INSTANTIATE_TEST_SUITE_P(All, FileManagers, testing::ValuesIn(kFileManagers),
                         [](const auto& each) { return each.param.program; });
