// The Qt back end with its windows: alerts, choosers, remembered values, names between systems.

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>
#include <csignal>
#include <functional>

#include "entry/handles.h"
#include "persistence/path_parts.h"
#include "persistence/settings_file.h"
#include "persistence/settings_items.h"
#include "pictures/run_pictures.h"
#include "platform/choosers.h"
#include "platform/remembered_values.h"
#include "platform/user_files.h"
#include "services/alerts.h"
#include "tests/desktop/desktop_session_fixture.h"

// Plays the user: answers one modal window after another, in order.
class Visitor {
 public:
  using Answer = std::function<void(QWidget* window)>;

  explicit Visitor(std::vector<Answer> answers) : answers_(std::move(answers)) {
    QObject::connect(&timer_, &QTimer::timeout, [this] { visit(); });
    timer_.start(5);
  }
  size_t answered() const {
    return next_;
  }

 private:
  void visit() {
    QWidget* window = QApplication::activeModalWidget();
    if (window == nullptr || window == last_ || next_ == answers_.size()) return;
    last_ = window;
    answers_[next_++](window);
    last_ = nullptr;
  }

  std::vector<Answer> answers_;
  size_t next_ = 0;
  QWidget* last_ = nullptr;
  QTimer timer_;
};

static Visitor::Answer press(const char* button) {
  return [button](QWidget* window) {
    auto* push = window->findChild<QPushButton*>(button);
    ASSERT_NE(push, nullptr) << button;
    push->click();
  };
}

static Visitor::Answer choose(const QString& path) {
  return [path](QWidget* window) {
    auto* dialog = qobject_cast<QFileDialog*>(window);
    ASSERT_NE(dialog, nullptr);
    dialog->selectFile(path);
    static_cast<QDialog*>(dialog)->accept();
  };
}

static void cancelChooser(QWidget* window) {
  ASSERT_NE(qobject_cast<QFileDialog*>(window), nullptr);
  qobject_cast<QDialog*>(window)->reject();
}

TEST(QtAlerts, TitlesTextsButtons) {
  setAlertParameters("texture", "gold.bmp", nullptr, nullptr);
  bool looked = false;
  const Visitor visitor({[&looked](QWidget* window) {
    EXPECT_EQ(window->windowTitle(), "Can't open file");
    EXPECT_EQ(window->findChild<QLabel*>("text99")->text(),
              "Can't open the texture file \"gold.bmp\".");
    EXPECT_TRUE(window->findChild<QLabel*>("text100")->text().contains("\n\nOr, help Morvalis"));
    EXPECT_EQ(window->findChild<QPushButton*>("button2")->text(), "Find folder...");
    EXPECT_TRUE(window->findChild<QPushButton*>("button1")->isDefault());
    // Over the whole screen, a third of the free height above.
    const QSize room = QApplication::primaryScreen()->size() - window->size();
    EXPECT_EQ(window->pos(), QPoint(room.width() / 2 - 18, room.height() / 3));
    // Everything that is said fits its place.
    for (const QLabel* label : window->findChildren<QLabel*>()) {
      EXPECT_TRUE(window->rect().contains(label->geometry()));
      EXPECT_LE(label->heightForWidth(label->width()), label->height());
    }
    looked = true;
    window->findChild<QPushButton*>("button2")->click();
  }});
  EXPECT_EQ(showAlert(kFileNotFoundAlert), kFindFolder);
  EXPECT_TRUE(looked);
}

TEST(QtAlerts, CancelAndClosing) {
  const Visitor visitor({press("button1"), [](QWidget* window) { window->close(); },
                         [](QWidget* window) { window->close(); }});
  EXPECT_EQ(showAlert(kNotEnoughMemoryAlert), 1);
  EXPECT_EQ(showAlert(kNotEnoughMemoryAlert), -1);
  showStringAlert(kPreviewUnavailableString);
  EXPECT_EQ(visitor.answered(), 3U);
}

static void savePicture(const QString& path) {
  QImage picture(64, 64, QImage::Format_RGB888);
  picture.fill(QColor(210, 20, 10));
  ASSERT_TRUE(picture.save(path, "BMP"));
}

// The folder that the user shows need not carry the usual name.
TEST(QtNotFoundFlow, FindFolderCancelledThenShown) {
  QTemporaryDir folder;
  const QString shown = folder.path() + "/pictures here/";
  ASSERT_TRUE(QDir().mkpath(shown));
  savePicture(shown + "gold raum \u00e4.bmp");
  savePicture(shown + "any.bmp");
  DesktopSession desktop;
  desktop.writePreset(folder.path() + "/p.q9q", "Gold Raum \xE4.BMP");
  const Visitor visitor(
      {press("button2"), cancelChooser, press("button2"), choose(shown + "any.bmp")});
  readSettingsFile(desktop.session(), desktop.presetPath(), /*loadPictures=*/true);
  EXPECT_EQ(visitor.answered(), 4U);
  EXPECT_EQ(QString::fromUtf8(desktop.settings()->environmentPath), shown + "gold raum \u00e4.bmp");
  char remembered[260] = {};
  ASSERT_TRUE(readRememberedValue("EnviroPath", remembered, sizeof(remembered)));
  EXPECT_EQ(QString::fromUtf8(remembered), shown);
  // The name goes back into a preset as it came.
  char name[260];
  fileNameForSettings(desktop.settings()->environmentPath, name);
  EXPECT_STREQ(name, "gold raum \xE4.bmp");
}

TEST(QtNotFoundFlow, Cancelled) {
  QTemporaryDir folder;
  DesktopSession desktop;
  desktop.writePreset(folder.path() + "/p.q9q", "missing");
  const Visitor visitor({press("button1")});
  readSettingsFile(desktop.session(), desktop.presetPath(), /*loadPictures=*/true);
  EXPECT_EQ(visitor.answered(), 1U);
  EXPECT_STREQ(desktop.settings()->environmentPath, "");
}

// What is saved opens again with its picture, whose name was in capitals, and the folder that the
// preset lies in is learnt.
TEST(QtPresets, SavedAndOpenedThroughTheChoosers) {
  QTemporaryDir folder;
  const QString pictures = folder.path() + "/environments and textures/";
  const QString picture = pictures + QString::fromUtf8("Gold Raum \u00c4.BMP");
  ASSERT_TRUE(QDir().mkpath(pictures + "presets"));
  savePicture(picture);
  const auto choosePreset = [](const QString& title, const QString& path) {
    return [title, path](QWidget* window) {
      auto* dialog = qobject_cast<QFileDialog*>(window);
      ASSERT_NE(dialog, nullptr);
      EXPECT_EQ(dialog->windowTitle(), title);
      EXPECT_EQ(dialog->nameFilters(), QStringList("Morvalis presets (*.q9q)"));
      choose(path)(window);
    };
  };
  DesktopSession saving;
  std::strcpy(saving.settings()->environmentPath, picture.toUtf8().constData());
  saving.settings()->gloss = 12;
  const Visitor visitor({choosePreset("Save a settings file", pictures + "presets/gold"),
                         choosePreset("Open a settings file", pictures + "presets/gold.q9q"),
                         press("button1")});
  EXPECT_TRUE(savePreset(settingsOf(saving.session())));
  DesktopSession opening;
  EXPECT_TRUE(openPreset(opening.session()));
  EXPECT_EQ(visitor.answered(), 2U) << "nothing is missing";
  EXPECT_EQ(opening.settings()->gloss, 12);
  EXPECT_EQ(QString::fromUtf8(opening.settings()->environmentPath), picture);
  EXPECT_EQ(QString::fromUtf8(opening.settings()->pictureFolder), pictures);
}

TEST(QtChoosers, PathsThatFitAndPathsThatDoNot) {
  QTemporaryDir folder;
  savePicture(folder.path() + "/a.bmp");
  const FileChooser chooser = {"Open", "Bitmap files (*.bmp)", "*.bmp", "bmp"};
  char path[260];
  {
    const Visitor visitor({choose(folder.path() + "/a.bmp")});
    EXPECT_EQ(choosePlatformFileToOpen(chooser, path, sizeof(path)), ChooserAnswer::chosen);
    EXPECT_EQ(QString::fromUtf8(path), folder.path() + "/a.bmp");
  }
  {
    const Visitor visitor({choose(folder.path() + "/a.bmp")});
    EXPECT_EQ(choosePlatformFileToOpen(chooser, path, 10), ChooserAnswer::tooLong);
    EXPECT_STREQ(path, "");
  }
}

TEST(DesktopFiles, CachedSettingsAndNames) {
  char path[260];
  ASSERT_TRUE(cachedSettingsPath(/*forWriting=*/true, path, sizeof(path)));
  EXPECT_EQ(QString::fromUtf8(path),
            qEnvironmentVariable("XDG_STATE_HOME") + "/morvalis/Morvalis cached settings");
  DesktopSession desktop;
  desktop.settings()->gloss = 93;
  saveCachedSettings(desktop.session());
  desktop.settings()->gloss = 0;
  loadCachedSettings(desktop.session());
  EXPECT_EQ(desktop.settings()->gloss, 93);
  EXPECT_FALSE(cachedSettingsPath(false, path, 20));

  // Every Windows character comes back from a path as it went in, but for the unassigned ones.
  for (int32_t code = 1; code < 256; ++code) {
    const char name[2] = {static_cast<char>(code), 0};
    char back[8];
    pathFromWindowsName(name, path, sizeof(path));
    windowsNameFromPath(path, back, sizeof(back));
    const bool unassigned =
        code == 0x81 || code == 0x8D || code == 0x8F || code == 0x90 || code == 0x9D;
    EXPECT_EQ(static_cast<uint8_t>(back[0]), unassigned ? '_' : code);
  }
  char cut[4];
  pathFromWindowsName("ab\xE4\xE4", cut, sizeof(cut));
  EXPECT_STREQ(cut, "ab") << "no half character";
}

static QByteArray contentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

// Whole or not at all: a disk that is full leaves the old file, and nothing beside it.
TEST(DesktopFiles, OverwritingKeepsTheOldFileWhenItFails) {
  const QTemporaryDir folder;
  const QByteArray path = folder.filePath("settings").toUtf8();
  const std::vector<uint8_t> first(20, 'a');
  const std::vector<uint8_t> second(8, 'b');
  ASSERT_TRUE(overwriteUserFile(path, first.data(), first.size()));
  ASSERT_TRUE(overwriteUserFile(path, second.data(), second.size()));
  const QByteArray overwritten = QByteArray(8, 'b') + QByteArray(12, 'a');
  EXPECT_EQ(contentOf(path), overwritten) << "the end of a longer file stays";

  rlimit before = {};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit full = {4, before.rlim_max};
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
  EXPECT_FALSE(overwriteUserFile(path, first.data(), first.size()));
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(contentOf(path), overwritten);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
  EXPECT_FALSE(overwriteUserFile("/dev/null", first.data(), first.size())) << "no ordinary file";
}

TEST(DesktopFiles, InOtherCapitals) {
  QTemporaryDir folder;
  const auto found = [&folder](const QString& name, int32_t room) {
    char path[260];
    const QByteArray wanted = (folder.path() + "/" + name).toUtf8();
    std::strcpy(path, wanted.constData());
    takeFileAsWritten(path, static_cast<int32_t>(wanted.size()) + 1 + room);
    return QString::fromUtf8(path).mid(folder.path().size() + 1);
  };
  const QString apart = QString::fromUtf8("Se\u0301.BMP");  // letter and accent
  savePicture(folder.path() + "/" + apart);
  EXPECT_EQ(found(QString::fromUtf8("s\u00e9.bmp"), 1), apart);
  EXPECT_EQ(found(QString::fromUtf8("s\u00e9.bmp"), 0), QString::fromUtf8("s\u00e9.bmp"))
      << "does not fit";
  EXPECT_EQ(found("se.bmp", 9), "se.bmp");
  savePicture(folder.path() + "/A.bmp");
  savePicture(folder.path() + "/a.bmp");
  EXPECT_EQ(found("a.bmp", 9), "a.bmp") << "the name as it is comes first";
}

TEST(DesktopFiles, RememberedValues) {
  char text[20] = "before";
  EXPECT_FALSE(readRememberedValue("Nothing", text, sizeof(text)));
  EXPECT_STREQ(text, "before");
  writeRememberedValue("TextureFile", "/b\xC3\xA4r/leder.bmp");
  ASSERT_TRUE(readRememberedValue("TextureFile", text, sizeof(text)));
  EXPECT_STREQ(text, "/b\xC3\xA4r/leder.bmp");
}
