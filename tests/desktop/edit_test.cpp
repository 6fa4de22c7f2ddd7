// `morvalis edit`: the dialog on a picture file, from the choice of the picture to the file.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <QWheelEvent>
#include <fstream>
#include <thread>

#include "dialog/controls/control_table.h"
#include "dialog/controls/focus.h"
#include "settings/effect_settings.h"
#include "tests/desktop/edit_user.h"
#include "vector/instruction_sets.h"

constexpr char kProgress[] = "progress";

static const EditStep kOk = pressInDialog("OK");
static const EditStep kCancel = pressInDialog("Cancel");

static EditStep closeMessage(const QString& part) {
  return {"QMessageBox", [part](QWidget* window) {
            auto* box = qobject_cast<QMessageBox*>(window);
            EXPECT_TRUE(box->text().contains(part)) << box->text().toStdString();
            box->accept();
          }};
}

// The wheel over the radius slider: one step wider per notch.
static EditStep widenBevel(int notches) {
  return {kEditDialog, [notches](QWidget* window) {
            const QPointF at(130, 60);
            QWheelEvent wheel(at, window->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(window, &wheel);
          }};
}

class Edit : public EditTest {
 protected:
  Edit() {
    savePicture("photo.png", 90, 70);
    savePicture("sky.bmp", 64, 64);
  }
};

TEST_F(Edit, WritesWhatApplyWrites) {
  const EditResult plain = edit(editOf("photo.png"), {kOk});
  EXPECT_EQ(plain.exitCode, 0);
  EXPECT_EQ(plain.output, "photo-morvalis.png\n");
  EXPECT_EQ(plain.errors, "");
  EXPECT_EQ(read("photo-morvalis.png"), apply({"photo.png"}));

  EditOptions options = editOf("photo.png");
  options.output = "out.png";
  options.mask.mask = "photo.png";
  options.effect.assignments = {"radius=23", "reflection=70", "textureChoice=cells",
                                "environmentTurns=3"};
  options.effect.environment = "sky.bmp";
  const EditResult varied = edit(options, {kOk});
  EXPECT_EQ(varied.exitCode, 0);
  EXPECT_EQ(varied.output, "");
  EXPECT_EQ(read("out.png"), apply({"photo.png", "--mask", "photo.png", "--set", "radius=23",
                                    "--set", "reflection=70", "--set", "textureChoice=cells",
                                    "--set", "environmentTurns=3", "--environment", "sky.bmp"}));
}

TEST_F(Edit, KeepsWhatHasTheResultsName) {
  EditOptions options = editOf("photo.png");
  options.keep = true;
  for (const char* name : {"photo-morvalis.png", "photo-morvalis-2.png", "photo-morvalis-3.png"}) {
    EXPECT_EQ(edit(options, {kOk}).output, name + std::string("\n"));
    options.effect.assignments = {"radius=" + std::to_string(20 + files().size())};
  }
  EXPECT_EQ(read("photo-morvalis.png"), apply({"photo.png"}));
  EXPECT_NE(read("photo-morvalis-2.png"), read("photo-morvalis-3.png"));
  // In the picture's folder, wherever the program runs; taken only once the dialog is confirmed.
  options.image = path("photo.png");
  options.output = "{folder}/{name}-gold.b.png";
  const auto takeName = [this](QWidget*) {
    EXPECT_TRUE(QFile::copy(QString::fromStdString(path("photo.png")),
                            QString::fromStdString(path("photo-gold.b.png"))));
  };
  const EditResult late = edit(options, {{kEditDialog, takeName}, kOk});
  EXPECT_EQ(late.output, path("photo-gold.b-2.png") + "\n");
  EXPECT_EQ(read("photo-gold.b.png"), read("photo.png"));
}

TEST_F(Edit, RemembersWhatWasConfirmed) {
  EditOptions first = editOf("photo.png");
  first.effect.environment = path("sky.bmp");
  first.effect.assignments = {"textureChoice=none", "reflection=60", "radius=20"};
  EXPECT_EQ(edit(first, {widenBevel(3), kOk}).exitCode, 0);
  const QByteArray written = read("photo-morvalis.png");
  const QStringList same = {"photo.png",     "--set", "radius=23",          "--set",
                            "reflection=60", "--set", "textureChoice=none", "--environment",
                            "sky.bmp"};
  EXPECT_EQ(written, apply(same)) << "the wheel has turned the radius";
  EXPECT_EQ(written, apply({"photo.png", "--last"}));

  EXPECT_EQ(edit(editOf("photo.png"), {kOk}).exitCode, 0);
  EXPECT_EQ(read("photo-morvalis.png"), written) << "the next dialog begins where this one ended";

  EditOptions onTop = editOf("photo.png");
  onTop.effect.assignments = {"height=-30"};
  EXPECT_EQ(edit(onTop, {kOk}).exitCode, 0);
  EXPECT_EQ(read("photo-morvalis.png"), apply(same + QStringList{"--set", "height=-30"}));
}

static void pressKey(QWidget* window, int key, int times = 1) {
  for (int i = 0; i < times; ++i) {
    QWidget* target = QApplication::activePopupWidget();
    if (target == nullptr) target = window->focusWidget();
    if (target == nullptr) target = window;
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(target, &press);
    QCoreApplication::processEvents();  // what the menu has posted
  }
}

static void tabTo(QWidget* window, int32_t id) {
  for (const int32_t stop : kTabOrder) {
    pressKey(window, Qt::Key_Tab);
    if (stop == id) return;
  }
}

// The texture is drawn anew twice, the light stands between hundredths, and the built-in
// environment is turned.
static EditStep chooseTexture(int row, QStringList* copied) {
  return {kEditDialog, [row, copied](QWidget* window) {
            tabTo(window, kLight2Pad);
            pressKey(window, Qt::Key_Right, 4);
            pressKey(window, Qt::Key_Tab, 2);  // the texture picker
            for (int i = 0; i < 2; ++i) {
              pressKey(window, Qt::Key_Down);
              pressKey(window, Qt::Key_Home);
              pressKey(window, Qt::Key_Down, row - 1);
              pressKey(window, Qt::Key_Return);
            }
            pressInDialog("Spin").act(window);
            QKeyEvent copy(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier);
            QApplication::sendEvent(window->focusWidget(), &copy);
            *copied = QApplication::clipboard()->text().split(' ');
          }};
}

TEST_F(Edit, MakesTheSamePictureAgain) {
  for (int choice = 1; choice < kTextureChoiceFile; ++choice) {
    SCOPED_TRACE(choice);
    EditOptions options = editOf("photo.png");
    options.seed = "";
    options.effect.assignments = {"reflection=40", "texture=90", "light2Color=#ffd080",
                                  "environmentTurns=0"};
    QStringList command;
    const EditResult result = edit(options, {chooseTexture(choice, &command), kOk});
    const QByteArray written = read("photo-morvalis.png");
    EXPECT_EQ(written, applyUnseeded({"photo.png", "--last"}));

    ASSERT_EQ(command.mid(0, 5), QStringList({"morvalis", "apply", "IMAGE", "-o", "OUT"}));
    EXPECT_EQ(written, applyUnseeded(QStringList{"photo.png"} + command.mid(5)));
    const QString seed = command.value(command.indexOf("--seed") + 1);
    EXPECT_EQ(result.output, choice == kTextureChoiceNone
                                 ? "photo-morvalis.png\n"
                                 : "photo-morvalis.png\nseed " + seed.toStdString() + "\n");
    EXPECT_EQ(command.contains("--seed"), choice != kTextureChoiceNone);
    EXPECT_NE(written == apply({"photo.png", "--last"}), choice != kTextureChoiceNone)
        << "another seed";
  }
}

// The dialog's file chooser runs within the press of its button.
static EditStep pressToSave() {
  return {kEditDialog, [](QWidget* window) {
            QTimer::singleShot(0, window, [window] { pressInDialog("Save").act(window); });
          }};
}

TEST_F(Edit, TakesPicturesOfOtherFormatsAndPutsBitmapsBesidePresets) {
  savePicture("other.png", 64, 64);
  EditOptions options = editOf("photo.png");
  options.effect.environment = path("other.png");
  options.effect.assignments = {"textureChoice=none", "reflection=60", "radius=20"};
  const QString preset = QString::fromStdString(path("look.q9q"));
  const EditStep save = {"QFileDialog", [preset](QWidget* window) {
                           window->findChild<QLineEdit*>()->setText(preset);
                           static_cast<QDialog*>(qobject_cast<QFileDialog*>(window))->accept();
                         }};
  const EditResult result = edit(options, {pressToSave(), save, kOk});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_NE(result.errors.find("other.png.bmp"), std::string::npos) << result.errors;
  const QByteArray written = read("photo-morvalis.png");
  EXPECT_EQ(written, apply({"photo.png", "--set", "textureChoice=none", "--set", "reflection=60",
                            "--set", "radius=20", "--environment", "other.png"}));
  EXPECT_EQ(written, apply({"photo.png", "--last"}));
  QFile::remove(QString::fromStdString(path("other.png")));
  EXPECT_EQ(written, apply({"photo.png", "--preset", "look.q9q"}));
}

TEST_F(Edit, StartsAtAPreset) {
  EditOptions before = editOf("photo.png");
  before.effect.environment = path("sky.bmp");
  EXPECT_EQ(edit(before, {kOk}).exitCode, 0);

  const QString presets = QString(MORVALIS_PRESETS) + "/";
  for (const QString name : {"gold.q9q", "leather.q9q", "chrome.q9q"}) {
    EditOptions options = editOf("photo.png");
    options.effect.preset = (presets + name).toStdString();
    options.effect.assignments = {"radius=9"};
    EXPECT_EQ(edit(options, {kOk}).exitCode, 0);
    EXPECT_EQ(read("photo-morvalis.png"),
              apply({"photo.png", "--preset", presets + name, "--set", "radius=9"}))
        << name.toStdString() << ": what was remembered before does not show through";
    EXPECT_EQ(read("photo-morvalis.png"), apply({"photo.png", "--last"})) << name.toStdString();
  }
}

TEST_F(Edit, CancelLeavesNothing) {
  EXPECT_EQ(edit(editOf("photo.png"), {kOk}).exitCode, 0);
  const QByteArray last = apply({"photo.png", "--last"});
  const QByteArray written = read("photo-morvalis.png");
  const QStringList before = files();

  EditOptions options = editOf("photo.png");
  options.effect.environment = path("sky.bmp");
  options.effect.assignments = {"reflection=90"};
  const EditResult result = edit(options, {widenBevel(20), kCancel});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.output + result.errors, "");
  EXPECT_EQ(edit(options, {{kEditDialog, [](QWidget* window) { window->close(); }}}).exitCode, 1);
  EXPECT_EQ(files(), before);
  EXPECT_EQ(read("photo-morvalis.png"), written);
  EXPECT_EQ(apply({"photo.png", "--last"}), last);
}

TEST_F(Edit, NamesTheResultAfterThePicture) {
  const auto expectName = [this](const QString& image, const QString& result) {
    EXPECT_EQ(edit(editOf(image.toStdString()), {kOk}).output, result.toStdString() + "\n");
    EXPECT_FALSE(read(result).isEmpty()) << result.toStdString();
  };
  savePicture("my photo.v2.JPG", 20, 20);
  expectName("my photo.v2.JPG", "my photo.v2-morvalis.JPG");
  savePicture("old.pbm", 20, 20);
  expectName("old.pbm", "old-morvalis.png");
  ASSERT_TRUE(QDir(path("").c_str()).mkdir("album"));
  savePicture("album/page.bmp", 20, 20);
  expectName("album/page.bmp", "album/page-morvalis.bmp");
  // The ending promises what the format cannot hold.
  QImage clear(20, 20, QImage::Format_RGBA8888);
  clear.fill(QColor(200, 100, 50, 100));
  ASSERT_TRUE(clear.save(QString::fromStdString(path("clear.bmp")), "png"));
  expectName("clear.bmp", "clear-morvalis.png");
}

TEST_F(Edit, AsksForAPicture) {
  const QString chosen = QString::fromStdString(path("photo.png"));
  const EditStep choose = {"QFileDialog", [chosen](QWidget* window) {
                             auto* chooser = qobject_cast<QFileDialog*>(window);
                             EXPECT_TRUE(chooser->nameFilters().join("").contains("*.png"));
                             chooser->findChild<QLineEdit*>()->setText(chosen);
                             static_cast<QDialog*>(chooser)->accept();
                           }};
  EXPECT_EQ(edit(editOf(""), {choose, kOk}).exitCode, 0);
  EXPECT_EQ(read("photo-morvalis.png"), apply({"photo.png"}));

  const EditStep cancel = {"QFileDialog", [](QWidget* window) { window->close(); }};
  const EditResult cancelled = edit(editOf(""), {cancel});
  EXPECT_EQ(cancelled.exitCode, 1);
  EXPECT_EQ(cancelled.errors, "");
}

TEST_F(Edit, StopsTheRender) {
  savePicture("large.png", 3000, 2500);
  savePicture("kept.png", 5, 5);
  const QByteArray kept = read("kept.png");
  const QStringList before = files();
  EditOptions options = editOf("large.png");
  options.output = "kept.png";
  options.effect.assignments = {"radius=90"};
  const EditStep stop = {kProgress, [](QWidget* window) {
                           auto* progress = qobject_cast<QProgressDialog*>(window);
                           EXPECT_LT(progress->value(), 100);
                           progress->findChild<QPushButton*>()->click();
                         }};
  const EditStep shut = {kProgress, [](QWidget* window) { window->close(); }};
  limitInstructionSet(InstructionSet::kPlain);  // slow enough to be stopped
  for (const EditStep& end : {stop, shut}) {
    const EditResult result = edit(options, {kOk, end});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.output + result.errors, "");
    EXPECT_EQ(read("kept.png"), kept);
    EXPECT_EQ(files(), before);
  }
  limitInstructionSet(InstructionSet::kAvx2);
}

// A picture that comes through a pipe takes as long as the test wants.
TEST_F(Edit, ShowsThatItReadsAndWrites) {
  constexpr int kWidth = 2100;
  constexpr int kHeight = 2000;
  const std::string pipe = path("slow.ppm");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EditOptions options = editOf("slow.ppm");
  options.output = "out.png";
  const auto expectWorking = [](QWidget* window, const QString& label) {
    const auto* progress = qobject_cast<QProgressDialog*>(window);
    EXPECT_TRUE(progress->isVisible());
    EXPECT_EQ(progress->labelText(), label);
  };
  // Without someone who may write, the pipe would be at its end.
  const int held = open(pipe.c_str(), O_RDWR | O_NONBLOCK);
  std::thread writer;
  const EditStep reading = {"reading", [&](QWidget* window) {
                              expectWorking(window, "Reading the picture...");
                              writer = std::thread([&] {
                                std::ofstream file(pipe, std::ios::binary);
                                close(held);
                                file << "P6 " << kWidth << " " << kHeight << " 255\n";
                                file << std::string(size_t{3} * kWidth * kHeight, '\x55');
                              });
                            }};
  const EditStep writing = {
      "writing", [&](QWidget* window) { expectWorking(window, "Writing the picture..."); }};
  const EditResult result = edit(options, {reading, kOk, writing});
  if (writer.joinable()) writer.join();
  EXPECT_EQ(result.exitCode, 0) << result.errors;
  EXPECT_EQ(QImage(QString::fromStdString(path("out.png"))).size(), QSize(kWidth, kHeight));

  const EditStep stop = {"reading", [&](QWidget* window) { window->close(); }};
  const int again = open(pipe.c_str(), O_RDWR | O_NONBLOCK);
  const EditResult stopped = edit(options, {stop});
  close(again);
  EXPECT_EQ(stopped.exitCode, 1);
  EXPECT_EQ(stopped.output + stopped.errors, "");
}

TEST_F(Edit, ShowsFailuresInAWindow) {
  const auto expectMessage = [this](const EditOptions& options, const QString& part) {
    const EditResult result = edit(options, {closeMessage(part)});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find(part.toStdString()), std::string::npos) << result.errors;
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1);
  };
  const QStringList before = files();
  expectMessage(editOf("missing.png"), "missing.png: there is no such file");
  EditOptions unwritable = editOf("photo.png");
  unwritable.output = "none/out.png";
  expectMessage(unwritable, "none/out.png: its folder does not exist");
  EditOptions noPreset = editOf("photo.png");
  noPreset.effect.preset = "missing.q9q";
  expectMessage(noPreset, "missing.q9q: there is no such file");

  // Whoever types a command reads its answer.
  const auto expectUsage = [this](const EditOptions& options) {
    const EditResult result = edit(options, {});
    EXPECT_EQ(result.exitCode, 2) << result.errors;
    EXPECT_NE(result.errors, "");
  };
  expectUsage(editOf("-"));
  EditOptions unknown = editOf("photo.png");
  unknown.output = "out.xyz";
  expectUsage(unknown);
  EditOptions slip = editOf("photo.png");
  slip.effect.assignments = {"radus=5"};
  expectUsage(slip);
  EXPECT_EQ(files(), before);
}
