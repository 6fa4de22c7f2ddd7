#include "tests/desktop/edit_user.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSettings>
#include <QTimer>
#include <cstdio>

constexpr int kLook = 10;         // milliseconds between two looks at the windows
constexpr int kPatience = 20000;  // milliseconds for a step to come to its turn
constexpr int kHasty = 500;       // milliseconds for a window to get the keyboard; some never do
constexpr char kSeed[] = "7";

EditTest::EditTest() {
  // Where this process keeps what it remembers, other processes look too.
  const QFileInfo kept(QSettings("Quorrelin", "Morvalis").fileName());
  qputenv("XDG_CONFIG_HOME", QFileInfo(kept.path()).path().toUtf8());
}

// Nothing that a test confirmed is there for the next one.
EditTest::~EditTest() {
  QSettings("Quorrelin", "Morvalis").clear();
  QDir(qEnvironmentVariable("XDG_STATE_HOME")).removeRecursively();
}

EditStep pressInDialog(const QString& button) {
  return {kEditDialog, [button](QWidget* window) {
            for (auto* candidate : window->findChildren<QAbstractButton*>()) {
              if (candidate->accessibleName() == button) return candidate->click();
            }
            ADD_FAILURE() << "no button " << button.toStdString();
            window->close();
          }};
}

// Takes the steps in turn; what does not come to its turn in time is closed and fails.
// The window that told of the reading goes away with the first turn of the dialog's loop.
static bool isBeforeOthers(const QWidget* window) {
  for (const QWidget* other : QApplication::topLevelWidgets()) {
    if (other != window && other->isVisible() && other->inherits("QProgressDialog")) return true;
  }
  return false;
}

class EditUser {
 public:
  explicit EditUser(const std::vector<EditStep>& steps) : steps_(steps) {
    QObject::connect(&timer_, &QTimer::timeout, [this] { look(); });
    timer_.start(kLook);
  }
  size_t taken() const {
    return next_;
  }

 private:
  void look() {
    QWidget* window = QApplication::activeModalWidget();
    if (window == nullptr || !window->isVisible() || acting_) return;
    const bool ready = window->isActiveWindow() && !isBeforeOthers(window);
    if (!ready && (settling_ += kLook) < kHasty) return;
    settling_ = 0;
    waited_ += kLook;
    const bool awaited =
        next_ < steps_.size() && (window->objectName() == steps_[next_].window ||
                                  window->inherits(qPrintable(steps_[next_].window)));
    if (awaited) {
      waited_ = 0;
      acting_ = true;
      last_ = window;
      steps_[next_++].act(window);
      acting_ = false;
    } else if (waited_ > kPatience || (next_ == steps_.size() && window != last_)) {
      if (window == left_) return;
      left_ = window;
      ADD_FAILURE() << "a window nobody waits for: " << window->windowTitle().toStdString();
      window->close();
    }
  }

  std::vector<EditStep> steps_;
  size_t next_ = 0;
  int waited_ = 0;
  int settling_ = 0;
  bool acting_ = false;
  QWidget* left_ = nullptr;
  QWidget* last_ = nullptr;  // that a step has been taken in; it may go by itself
  QTimer timer_;
};

EditResult EditTest::edit(const EditOptions& options, const std::vector<EditStep>& steps) const {
  const EditUser user(steps);
  const QString before = QDir::currentPath();
  QDir::setCurrent(folder_.path());
  // As in the program: the library's remarks are not for the user.
  const QtMessageHandler handler =
      qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EditResult result = {};
  result.exitCode = runEditCommand(options);
  result.output = testing::internal::GetCapturedStdout();
  result.errors = testing::internal::GetCapturedStderr();
  qInstallMessageHandler(handler);
  // What the steps found wrong went the same way.
  if (HasFailure()) std::fputs(result.output.c_str(), stderr);
  QDir::setCurrent(before);
  EXPECT_EQ(user.taken(), steps.size()) << result.errors;
  return result;
}

QByteArray EditTest::apply(const QStringList& arguments) const {
  return applyUnseeded(QStringList{"--seed", kSeed} + arguments);
}

QByteArray EditTest::applyUnseeded(const QStringList& arguments) const {
  QProcess process;
  process.setWorkingDirectory(folder_.path());
  process.start(MORVALIS_PROGRAM, QStringList{"apply", "--quiet", "-o", "applied.png"} + arguments);
  process.waitForFinished(60000);
  EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  const QByteArray bytes = read("applied.png");
  EXPECT_FALSE(bytes.isEmpty());
  QFile::remove(folder_.filePath("applied.png"));
  return bytes;
}

std::string EditTest::path(const QString& name) const {
  return folder_.filePath(name).toStdString();
}

QByteArray EditTest::read(const QString& name) const {
  QFile file(folder_.filePath(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList EditTest::files() const {
  return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

void EditTest::savePicture(const QString& name, int width, int height) const {
  QImage image(width, height, QImage::Format_RGB888);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      image.setPixel(x, y, qRgb(x * 5 % 256, y * 3 % 256, (x ^ y) % 256));
    }
  }
  ASSERT_TRUE(image.save(folder_.filePath(name), nullptr, 100));
}

EditOptions editOf(const std::string& image) {
  EditOptions options;
  options.image = image;
  options.seed = kSeed;
  return options;
}
