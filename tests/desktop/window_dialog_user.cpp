// The dialog's user on Qt.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QCursor>
#include <QFileDialog>
#include <QHelpEvent>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QSettings>
#include <QThread>
#include <QTimer>
#include <QToolTip>
#include <map>

#include "dialog/controls/control_table.h"
#include "dialog/dialog_scale.h"
#include "platform/desktop/popup_qt.h"
#include "platform/unix/program_session.h"
#include "platform/user_files.h"
#include "tests/desktop/window_pointer.h"
#include "tests/desktop/window_user.h"
#include "tests/support/dialog/dialog_answers.h"
#include "tests/support/dialog/dialog_user.h"

// How often the screen is looked at until it shows what was drawn.
constexpr int kScreenTurns = 200;
constexpr unsigned long kScreenMilliseconds = 10;

struct DialogWindow {
  WindowUser user;
};

// Qt counts in units of the screen.
static QPointF placeOf(Point point) {
  return QPointF(point.h, point.v) / qApp->devicePixelRatio();
}

static QRect unitsOf(const Rectangle& rect) {
  const double ratio = qApp->devicePixelRatio();
  const QPoint first(qFloor(rect.left / ratio), qFloor(rect.top / ratio));
  const QPoint behind(qCeil(rect.right / ratio), qCeil(rect.bottom / ratio));
  return QRect(first, behind - QPoint(1, 1));
}

void DialogUser::press(Point point) {
  window_->user.press(placeOf(point));
}

void DialogUser::move(Point point) {
  window_->user.move(placeOf(point));
}

void DialogUser::release(Point point) {
  window_->user.release(placeOf(point));
}

void DialogUser::click(Point point) {
  window_->user.click(placeOf(point));
}

void DialogUser::doubleClick(Point point) {
  window_->user.doubleClick(placeOf(point));
}

void DialogUser::otherDown(Point point) {
  window_->user.press(placeOf(point), Qt::RightButton);
}

void DialogUser::otherUp(Point point) {
  window_->user.release(placeOf(point), Qt::RightButton);
}

void DialogUser::wheel(Point point, int32_t notches, bool shift) {
  window_->user.wheel(placeOf(point), 120 * notches, shift ? Qt::ShiftModifier : Qt::NoModifier);
}

void DialogUser::clickButton(int32_t id) {
  const Rectangle rect = controlRect(id);
  window_->user.click(placeOf({static_cast<int16_t>((rect.top + rect.bottom) / 2),
                               static_cast<int16_t>((rect.left + rect.right) / 2)}));
}

struct SystemKey {
  WindowKey key;
  Qt::Key qt;
  Qt::KeyboardModifiers modifiers;
};

static const SystemKey kKeys[] = {
    {WindowKey::left, Qt::Key_Left, {}},
    {WindowKey::right, Qt::Key_Right, {}},
    {WindowKey::up, Qt::Key_Up, {}},
    {WindowKey::down, Qt::Key_Down, {}},
    {WindowKey::pageUp, Qt::Key_PageUp, {}},
    {WindowKey::pageDown, Qt::Key_PageDown, {}},
    {WindowKey::home, Qt::Key_Home, {}},
    {WindowKey::end, Qt::Key_End, {}},
    {WindowKey::enter, Qt::Key_Return, {}},
    {WindowKey::escape, Qt::Key_Escape, {}},
    {WindowKey::backspace, Qt::Key_Backspace, {}},
    {WindowKey::undo, Qt::Key_Z, Qt::ControlModifier},
    {WindowKey::redo, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier},
    {WindowKey::copy, Qt::Key_C, Qt::ControlModifier},
    {WindowKey::tab, Qt::Key_Tab, {}},
    {WindowKey::help, Qt::Key_F1, {}}};

void DialogUser::key(WindowKey key, bool shift) {
  for (const SystemKey& each : kKeys) {
    if (each.key != key) continue;
    const bool back = key == WindowKey::tab && shift;
    window_->user.key(back ? Qt::Key_Backtab : each.qt,
                      each.modifiers | (shift ? Qt::ShiftModifier : Qt::NoModifier));
  }
}

void DialogUser::type(const char* characters) {
  for (; *characters != 0; ++characters) {
    const auto code = static_cast<Qt::Key>(static_cast<unsigned char>(*characters));
    window_->user.key(code, {}, QString(QLatin1Char(*characters)));
  }
}

void DialogUser::escape() {
  window_->user.key(Qt::Key_Escape);
}

void DialogUser::close() {
  window_->user.window()->close();
}

void DialogUser::wait(int32_t time) {
  passMilliseconds(static_cast<uint32_t>(time));
}

// --- The pop-up -----------------------------------------------------------------------------

bool DialogUser::hasPopup() {
  return QApplication::activePopupWidget() != nullptr;
}

// The events still come in at the window that the button was pressed in.
static QPointF fromPopup(const WindowUser& user, Point point) {
  const QWidget* popup = QApplication::activePopupWidget();
  if (popup == nullptr) return placeOf(point);  // gone with the press
  const auto frame = static_cast<int16_t>(kPopupFrame * pen());
  const QPointF inside = placeOf(point) + QPointF(frame, frame) / qApp->devicePixelRatio();
  return user.window()->mapFromGlobal(popup->mapToGlobal(inside));
}

void DialogUser::popupPress(Point point) {
  window_->user.press(fromPopup(window_->user, point));
}

void DialogUser::popupMove(Point point) {
  window_->user.move(fromPopup(window_->user, point));
}

void DialogUser::releaseOverPopup(Point point) {
  window_->user.release(placeOf(point));
}

void DialogUser::popupRelease(Point point) {
  window_->user.release(fromPopup(window_->user, point));
}

static QImage imageOf(const QPixmap& shown) {
  return shown.toImage().convertToFormat(QImage::Format_RGB888);
}

// On a real screen what really stands there, which comes a while after it was drawn.
static QImage shownBy(QWidget* widget) {
  const QImage drawn = imageOf(widget->grab());
  if (!hasRealScreen()) return drawn;
  QImage shown;
  for (int turn = 0; turn < kScreenTurns && shown != drawn; ++turn) {
    if (turn > 0) QThread::msleep(kScreenMilliseconds);
    settle();
    shown = imageOf(widget->screen()->grabWindow(widget->winId()));
  }
  return shown;
}

static WindowPicture grabbed(QWidget* widget) {
  const QImage image = shownBy(widget);
  WindowPicture picture = {image.width(), image.height(), {}};
  for (int y = 0; y < image.height(); ++y) {
    const uint8_t* row = image.constScanLine(y);
    picture.rgb.insert(picture.rgb.end(), row, row + 3 * image.width());
  }
  return picture;
}

// As wide as the rows, beside which only their ground goes on.
static WindowPicture withoutFrame(const WindowPicture& whole) {
  WindowPicture rows = {
      whole.width - scaled(kPopupRoomAcross), whole.height - scaled(kPopupRoomDown), {}};
  const int frame = kPopupFrame * pen();
  for (int y = 0; y < rows.height; ++y) {
    const auto row = whole.rgb.begin() + 3 * ((y + frame) * int64_t{whole.width} + frame);
    rows.rgb.insert(rows.rgb.end(), row, row + 3 * rows.width);
  }
  return rows;
}

WindowPicture DialogUser::popupPixels() {
  return withoutFrame(grabbed(QApplication::activePopupWidget()));
}

// --- The window -----------------------------------------------------------------------------

bool DialogUser::isOpen() {
  return window_->user.window()->isVisible();
}

WindowPicture DialogUser::pixels() {
  return grabbed(window_->user.window());
}

bool DialogUser::showsHand() {
  return window_->user.window()->cursor().shape() == Qt::BitmapCursor;
}

std::string DialogUser::toolTip(int32_t id) {
  QWidget* window = window_->user.window();
  const QPoint at = unitsOf(controlRect(id)).topLeft() + QPoint(1, 1);
  QWidget* under = window->childAt(at);
  if (under == nullptr) under = window;
  QHelpEvent help(QEvent::ToolTip, under->mapFrom(window, at), window->mapToGlobal(at));
  QApplication::sendEvent(under, &help);
  const std::string text = QToolTip::isVisible() ? QToolTip::text().toStdString() : "";
  // Asked to hide, it would stay for a while.
  for (QWidget* tip : QApplication::topLevelWidgets()) {
    if (tip->inherits("QTipLabel")) tip->hide();
  }
  return text;
}

static const std::map<QAccessible::Role, const char*> kRoles = {
    {QAccessible::PushButton, "button"}, {QAccessible::Slider, "slider"},
    {QAccessible::CheckBox, "toggle"},   {QAccessible::ComboBox, "menu"},
    {QAccessible::Dial, "dial"},         {QAccessible::Graphic, "image"}};

// Where the control is in the accessibility tree; null when it is not.
static QAccessibleInterface* findAccess(QWidget* window, int32_t id) {
  QRect place = unitsOf(controlRect(id));
  place.moveTopLeft(window->mapToGlobal(place.topLeft()));
  QAccessibleInterface* root = QAccessible::queryAccessibleInterface(window);
  for (int i = 0; i < root->childCount(); ++i) {
    if (root->child(i)->rect() == place) return root->child(i);
  }
  return nullptr;
}

std::string DialogUser::reading(int32_t id) {
  QAccessibleInterface* access = findAccess(window_->user.window(), id);
  if (access == nullptr) return "";
  const auto role = kRoles.find(access->role());
  std::string text = role == kRoles.end() ? "?" : role->second;
  const std::string value = access->text(QAccessible::Value).toStdString();
  text += ", " + access->text(QAccessible::Name).toStdString() + ", " + value;
  if (QAccessibleValueInterface* range = access->valueInterface()) {
    text += ", " + range->currentValue().toString().toStdString() + " of " +
            range->minimumValue().toString().toStdString() + " to " +
            range->maximumValue().toString().toStdString();
  }
  const QAccessible::State state = access->state();
  if (state.checkable) text += state.checked ? ", checked" : ", not checked";
  if (state.focused) text += ", focused";
  if (state.disabled) text += ", disabled";
  std::string meaning = access->text(QAccessible::Description).toStdString();
  // What is no number stands before it.
  if (meaning.rfind(value + ": ", 0) == 0) meaning = meaning.substr(value.size() + 2);
  return text + ", " + (meaning == value ? "" : meaning);
}

std::string DialogUser::rowName() {
  const std::string name = QApplication::activePopupWidget()->accessibleName().toStdString();
  if (!name.empty() && QToolTip::isVisible()) {  // it stays a moment longer than its row
    EXPECT_EQ(QToolTip::text().toStdString(), name);
  }
  return name;
}

std::string DialogUser::clipboard() {
  return QGuiApplication::clipboard()->text().toStdString();
}

// --- Answers --------------------------------------------------------------------------------

void resetDialogUser() {
  forgetAnswers();
  fixClock(1);
  passMilliseconds(0);
  QSettings("Quorrelin", "Morvalis").clear();
  char path[260];
  if (cachedSettingsPath(/*forWriting=*/false, path, sizeof(path))) std::remove(path);
  QGuiApplication::clipboard()->clear();
}

void offerPicture(const std::string& path, int32_t width, int32_t height,
                  const std::vector<uint8_t>& rgb) {
  const QImage image(rgb.data(), width, height, 3 * width, QImage::Format_RGB888);
  ASSERT_TRUE(image.save(QString::fromStdString(path), "BMP"));
}

static void answerFileDialog(QFileDialog* dialog) {
  noteChooser(dialog->windowTitle().toStdString());
  const std::string path = nextFileAnswer();
  if (path.empty()) return dialog->reject();
  dialog->selectFile(QString::fromStdString(path));
  static_cast<QDialog*>(dialog)->accept();
}

static void answerColorDialog(QColorDialog* dialog) {
  const ColorAnswer color = nextColorAnswer();
  if (!color.has_value()) return dialog->reject();
  dialog->setCurrentColor(QColor((*color)[0], (*color)[1], (*color)[2]));
  dialog->accept();
}

// --- Playing --------------------------------------------------------------------------------

static bool isPlayed(const QWidget& window) {
  return window.objectName() == kMainDialog.name || window.objectName() == "ABOUTBOX";
}

// Two timers, as one does not fire while what it has called still runs.
class Player {
 public:
  explicit Player(const DialogPlay& play) : play_(play) {
    QObject::connect(&playTimer_, &QTimer::timeout, [this] { playNext(); });
    QObject::connect(&answerTimer_, &QTimer::timeout, [] { answerNext(); });
    playTimer_.start(2);
    answerTimer_.start(2);
  }

 private:
  void playNext() {
    auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (window == nullptr || !isPlayed(*window) || !window->isActiveWindow()) return;
    DialogWindow shown = {WindowUser(window)};
    DialogUser user(&shown);
    play_(user);
    if (window->isVisible()) window->close();
  }

  static void answerNext() {
    auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (window == nullptr || !window->isVisible() || isPlayed(*window)) return;
    answer(window);
    // Without a window manager nobody else gives the dialog the keyboard back.
    for (QWidget* other : QApplication::topLevelWidgets()) {
      if (isPlayed(*other)) other->activateWindow();
    }
  }

  static void answer(QDialog* window) {
    if (auto* file = qobject_cast<QFileDialog*>(window)) return answerFileDialog(file);
    if (auto* color = qobject_cast<QColorDialog*>(window)) return answerColorDialog(color);
    window->objectName() == "sheet" ? noteSheet() : noteAlert();
    window->close();
  }

  const DialogPlay& play_;
  QTimer playTimer_;
  QTimer answerTimer_;
};

int16_t playDialog(const DialogPlay& play, const std::function<int16_t()>& run) {
  const Player player(play);
  return run();
}
