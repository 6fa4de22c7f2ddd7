#include "platform/desktop/control_access_qt.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QVariant>
#include <algorithm>

#include "platform/desktop/item_button_qt.h"
#include "platform/desktop/window_record_qt.h"

// Properties by which a widget is known as a control.
constexpr char kWindowProperty[] = "morvalisWindow";
constexpr char kControlProperty[] = "morvalisControl";

static Window* windowOf(const QObject* object) {
  return reinterpret_cast<Window*>(object->property(kWindowProperty).value<quintptr>());
}

static int32_t controlOf(const QObject* object) {
  return object->property(kControlProperty).toInt();
}

static QAccessible::Role roleOf(ControlRole role) {
  switch (role) {
    case ControlRole::button:
      return QAccessible::PushButton;
    case ControlRole::slider:
      return QAccessible::Slider;
    case ControlRole::toggle:
      return QAccessible::CheckBox;
    case ControlRole::menu:
      return QAccessible::ComboBox;
    case ControlRole::dial:
      return QAccessible::Dial;
    case ControlRole::image:
      return QAccessible::Graphic;
  }
  return QAccessible::Client;
}

namespace {

class ControlAccess final : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit ControlAccess(QWidget* widget) : QAccessibleWidget(widget) {
  }

  QAccessible::Role role() const override;
  QAccessible::State state() const override;
  QString text(QAccessible::Text kind) const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  QVariant currentValue() const override;
  void setCurrentValue(const QVariant& value) override;
  QVariant maximumValue() const override;
  QVariant minimumValue() const override;
  QVariant minimumStepSize() const override;

  QStringList actionNames() const override;
  void doAction(const QString& name) override;
  QStringList keyBindingsForAction(const QString& name) const override;

 private:
  ControlReading reading() const;
};

}  // namespace

// Nothing once the window has ended.
ControlReading ControlAccess::reading() const {
  ControlReading reading = {};
  Window* window = windowOf(object());
  const int32_t id = controlOf(object());
  if (!window->ended) window->content->reader(window->context, id, &reading);
  return reading;
}

QAccessible::Role ControlAccess::role() const {
  return roleOf(reading().role);
}

QAccessible::State ControlAccess::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  const ControlReading now = reading();
  const Window* window = windowOf(object());
  state.focusable = true;
  state.focused = focusedControl(window) == controlOf(object()) && widget()->isActiveWindow();
  state.disabled = now.disabled;
  state.checkable = now.role == ControlRole::toggle;
  state.checked = now.on;
  state.hasPopup = now.role == ControlRole::menu;
  return state;
}

// What is no number is told with the meaning as well: not every reader asks for the value's text.
QString ControlAccess::text(QAccessible::Text kind) const {
  const ControlReading now = reading();
  const QString value = QString::fromUtf8(now.value);
  const QString meaning = QString::fromUtf8(now.meaning);
  switch (kind) {
    case QAccessible::Name:
      return QString::fromUtf8(now.name);
    case QAccessible::Value:
      return value;
    case QAccessible::Description:
      if (now.role == ControlRole::slider || value.isEmpty()) return meaning;
      return meaning.isEmpty() ? value : value + ": " + meaning;
    default:
      return QAccessibleWidget::text(kind);
  }
}

void* ControlAccess::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::ValueInterface) {
    return reading().hasRange ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
  }
  return QAccessibleWidget::interface_cast(type);
}

QVariant ControlAccess::currentValue() const {
  return reading().amount;
}

void ControlAccess::setCurrentValue(const QVariant& value) {
  const ControlReading now = reading();
  WindowEvent event = eventOf(WindowEventKind::set);
  event.id = controlOf(object());
  const double wanted = value.toDouble();
  event.amount = static_cast<int32_t>(std::clamp<double>(wanted, now.minimum, now.maximum));
  sendInput(windowOf(object()), event);
}

QVariant ControlAccess::maximumValue() const {
  return reading().maximum;
}

QVariant ControlAccess::minimumValue() const {
  return reading().minimum;
}

QVariant ControlAccess::minimumStepSize() const {
  return 1;
}

static bool canBeUsed(ControlRole role) {
  return role == ControlRole::button || role == ControlRole::toggle || role == ControlRole::menu;
}

QStringList ControlAccess::actionNames() const {
  QStringList names = {setFocusAction()};
  if (canBeUsed(reading().role)) names.prepend(pressAction());
  return names;
}

QStringList ControlAccess::keyBindingsForAction(const QString& name) const {
  return name == pressAction() ? QStringList("Space") : QStringList();
}

void ControlAccess::doAction(const QString& name) {
  Window* window = windowOf(object());
  const int32_t id = controlOf(object());
  if (window->ended) return;
  ItemButton* button = findButton(window, id);
  if (name == setFocusAction()) {
    setFocusedControl(window, id);
  } else if (name == pressAction()) {
    // Later: what it opens would hold up whoever asks.
    const auto use = [window, button, id] {
      if (button != nullptr) return button->click();
      WindowEvent event = eventOf(WindowEventKind::use);
      event.id = id;
      sendInput(window, event);
    };
    QMetaObject::invokeMethod(window->widget, use, Qt::QueuedConnection);
  }
}

static QAccessibleInterface* accessOf(const QString&, QObject* object) {
  if (object == nullptr || !object->isWidgetType()) return nullptr;
  if (!object->property(kWindowProperty).isValid()) return nullptr;
  return new ControlAccess(static_cast<QWidget*>(object));
}

void introduceControl(Window* window, int32_t id, QWidget* widget) {
  static const bool installed = (static_cast<void>(QAccessible::installFactory(accessOf)), true);
  if (!installed || window->content->reader == nullptr) return;
  widget->setProperty(kWindowProperty, QVariant::fromValue(reinterpret_cast<quintptr>(window)));
  widget->setProperty(kControlProperty, id);
  window->readable[id] = widget;
}

void addReadableArea(Window* window, const WindowControl& control) {
  auto* area = new QWidget(window->widget);
  introduceControl(window, control.id, area);
  area->setGeometry(inUnits(*window, control.rect));
  area->setAttribute(Qt::WA_TransparentForMouseEvents);
  area->setAccessibleName(QString::fromUtf8(control.name));
}

static QWidget* findReadable(const Window* window, int32_t id) {
  const auto found = window->readable.find(id);
  return found == window->readable.end() ? nullptr : found->second;
}

void tellFocus(Window* window, int32_t id) {
  QWidget* widget = findReadable(window, id);
  if (widget == nullptr || !QAccessible::isActive()) return;
  QAccessibleEvent event(widget, QAccessible::Focus);
  QAccessible::updateAccessibility(&event);
}

void tellReading(Window* window, int32_t id) {
  QWidget* widget = findReadable(window, id);
  if (widget == nullptr || window->ended || !QAccessible::isActive()) return;
  ControlReading reading = {};
  if (!window->content->reader(window->context, id, &reading)) return;
  if (reading.role == ControlRole::toggle) {
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(widget, changed);
    QAccessible::updateAccessibility(&event);
    return;
  }
  QAccessibleEvent described(widget, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&described);
  if (!reading.hasRange) return;
  QAccessibleValueChangeEvent event(widget, reading.amount);
  QAccessible::updateAccessibility(&event);
}
