// morvalis_dialog_shots: photographs the dialogs without a screen, for the README and for the eye.
//   morvalis_dialog_shots SAMPLE_FOLDER PRESET_FOLDER PICTURE_FOLDER [PERCENT]
// PERCENT is the scale of the screen, 100 by itself.
// The same system gives the same bytes on every run.

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QFont>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <cstdio>

#include "dialog/controls/control_table.h"
#include "dialog/help/about_box.h"
#include "hosts/effect_runs/effect_run.h"
#include "hosts/effect_runs/open_host.h"
#include "hosts/effect_runs/selection.h"
#include "hosts/picture_files/picture_load.h"
#include "hosts/process/command_failure.h"
#include "samples/dialog_shots/dialog_user.h"
#include "services/alerts.h"

constexpr uint32_t kSeed = 1;

struct Folders {
  std::string samples;
  std::string presets;
  QString pictures;
};

static void keep(const Folders& folders, const QString& name, const QImage& picture) {
  const QString file = folders.pictures + "/dialog-" + name + ".png";
  if (!picture.save(file)) failOnFile(file.toStdString(), "cannot be written");
  std::printf("  dialog-%s.png  %d x %d\n", qPrintable(name), picture.width(), picture.height());
}

// --- The main dialog ------------------------------------------------------------------------

struct Scene {
  const char* name;
  const char* picture;
  const char* preset;  // null: the defaults
  bool preview;
  // Brings the dialog into the state to be shown, and out of it again.
  std::function<void(QWidget*)> prepare;
  std::function<void(QWidget*)> leave;
};

static void nothing(QWidget*) {
}

// In the units of the screen, which shows 100 percent as one pixel for each.
static QPoint middleOf(int32_t control) {
  const Rectangle rect = tableRect(control);
  return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

static void shoot(const Folders& folders, const Scene& scene) {
  EffectOptions options;
  if (scene.preset != nullptr) options.preset = folders.presets + "/" + scene.preset;
  const EffectPlan plan = planEffect(options, chooseEffect(options), kSeed);
  const std::string file = folders.samples + "/" + scene.picture;
  const Picture picture = loadPicture(file);
  HostSwitches switches;
  switches.dirtyMemory = false;
  switches.displayPixels = scene.preview;
  switches.display = drawIntoTarget;
  MaskOptions mask;
  mask.mask = folders.samples + "/letters.png";
  const OpenHost host(switches, picture.colors, loadSelection(mask, picture, file).mask);
  checkResult(callSelector(kSelectorParameters), file);
  copySettings(plan.settings, moduleSettings(file));
  visitWindow([] { callSelector(kSelectorStart); },
              [&](QWidget* window) {
                scene.prepare(window);
                keep(folders, scene.name, photograph(window));
                scene.leave(window);
                window->close();
              });
}

static void shootMainDialog(const Folders& folders) {
  const QPoint height = middleOf(11);
  const QPoint dragged(height.x() + 46, height.y() + 3);
  const auto drag = [height, dragged](QWidget* window) {
    pressAt(window, height);
    moveTo(window, dragged);
  };
  const auto letGo = [dragged](QWidget* window) { releaseAt(window, dragged); };
  const auto openMenu = [](int32_t picker) {
    return [picker](QWidget* window) {
      pressAt(window, middleOf(picker));
      QWidget* popup = QApplication::activePopupWidget();
      if (popup != nullptr) moveTo(popup, {popup->width() / 2, 5 * popup->height() / 13});
    };
  };
  const auto closeMenu = [](QWidget*) {
    QWidget* popup = QApplication::activePopupWidget();
    if (popup != nullptr) popup->close();
  };
  const auto zoomIn = [](QWidget* window) {
    for (auto* button : window->findChildren<QAbstractButton*>()) {
      if (button->accessibleName() == "Zoom to 100%") button->click();
    }
  };
  const Scene scenes[] = {
      {"default", "boards.jpg", nullptr, true, nothing, nothing},
      {"dragging", "boards.jpg", "gold.q9q", true, drag, letGo},
      {"shapes", "boards.jpg", "gold.q9q", true, openMenu(kShapePicker), closeMenu},
      {"textures", "boards.jpg", "gold.q9q", true, openMenu(kTexturePicker), closeMenu},
      {"blend-modes", "boards.jpg", "gold.q9q", true, openMenu(kBlendPicker), closeMenu},
      {"gold", "boards.jpg", "gold.q9q", true, nothing, nothing},
      {"glass", "boards.jpg", "clear glass.q9q", true, nothing, nothing},
      {"zoomed", "boards.jpg", "old copper.q9q", true, zoomIn, nothing},
      {"grey", "slate.png", "carved stone.q9q", true, nothing, nothing},
      {"no-preview", "boards.jpg", nullptr, false, nothing, nothing},
  };
  for (const Scene& scene : scenes) shoot(folders, scene);
}

// --- The other windows ----------------------------------------------------------------------

static void shootWindow(const Folders& folders, const QString& name,
                        const std::function<void()>& open) {
  visitWindow(open, [&](QWidget* window) {
    keep(folders, name, photograph(window));
    window->close();
  });
}

static void shootOtherWindows(const Folders& folders) {
  shootWindow(folders, "about", [] { showAboutBox(nullptr); });
  shootWindow(folders, "not-enough-memory", [] { showAlert(kNotEnoughMemoryAlert); });
  setAlertParameters("environment", "golden room.bmp", nullptr, nullptr);
  shootWindow(folders, "file-not-found", [] { showAlert(kFileNotFoundAlert); });
  shootWindow(folders, "message", [] { showStringAlert(kPreviewUnavailableString); });
}

// Large enough at every scale.
static void describeScreen(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) failOnFile(path.toStdString(), "cannot be written");
  file.write(
      "{\"screens\": [{\"name\": \"shots\", \"x\": 0, \"y\": 0, \"width\": 3200, "
      "\"height\": 2400, \"logicalDpi\": 96, \"logicalBaseDpi\": 96, \"dpr\": 1}]}");
}

int main(int argc, char** argv) {
  if (argc != 4 && argc != 5) {
    std::fputs(
        "usage: morvalis_dialog_shots SAMPLE_FOLDER PRESET_FOLDER PICTURE_FOLDER [PERCENT]\n",
        stderr);
    return kExitUsage;
  }
  // Neither the screen nor the user's habits show.
  const QTemporaryDir home;
  const QString screen = home.path() + "/screen";
  describeScreen(screen);
  qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screen).toUtf8());
  const double percent = argc == 5 ? QByteArray(argv[4]).toDouble() : 100;
  qputenv("QT_SCALE_FACTOR", QByteArray::number(percent / 100));
  qunsetenv("MORVALIS_SCALE");
  qputenv("QT_FONT_DPI", "96");
  for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME"}) {
    qputenv(variable, home.path().toUtf8());
  }
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  int oneArgument = 1;
  QApplication application(oneArgument, argv);
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  QFont font("Liberation Sans");
  font.setPixelSize(12);
  QApplication::setFont(font);
  return runReporting([argv] {
    const Folders folders = {argv[1], argv[2], argv[3]};
    shootMainDialog(folders);
    shootOtherWindows(folders);
    return kExitDone;
  });
}
