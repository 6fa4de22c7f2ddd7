#include "platform/windows/window/control_access.h"

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <new>

#include "platform/windows/window/reader_calls.h"
#include "platform/windows/window/window_record.h"
// The accessible object's header wants the other one first.
#include <oleacc.h>

constexpr GUID kUnknownId = {0x00000000, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr GUID kDispatchId = {0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr GUID kAccessibleId = {
    0x618736E0, 0x3C3D, 0x11CF, {0x81, 0x0C, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};

static bool isSame(const GUID& a, const GUID& b) {
  return std::memcmp(&a, &b, sizeof(a)) == 0;
}

// --- The controls as elements, from 1 -------------------------------------------------------

static bool canBeRead(const WindowControl& control) {
  return control.name != nullptr;
}

static const WindowControl* controlOfElement(const Window* window, LONG element) {
  for (int32_t i = 0; i < window->content->controlCount; ++i) {
    const WindowControl& control = window->content->controls[i];
    if (canBeRead(control) && --element == 0) return &control;
  }
  return nullptr;
}

// 0 for a control that is none.
static LONG elementOfControl(const Window* window, int32_t id) {
  LONG element = 0;
  for (int32_t i = 0; i < window->content->controlCount; ++i) {
    const WindowControl& control = window->content->controls[i];
    if (!canBeRead(control)) continue;
    ++element;
    if (control.id == id) return element;
  }
  return 0;
}

static LONG elementCount(const Window* window) {
  LONG count = 0;
  while (controlOfElement(window, count + 1) != nullptr) ++count;
  return count;
}

static LONG roleOf(ControlRole role) {
  switch (role) {
    case ControlRole::button:
      return ROLE_SYSTEM_PUSHBUTTON;
    case ControlRole::slider:
      return ROLE_SYSTEM_SLIDER;
    case ControlRole::toggle:
      return ROLE_SYSTEM_CHECKBUTTON;
    case ControlRole::menu:
      return ROLE_SYSTEM_COMBOBOX;
    case ControlRole::dial:
      return ROLE_SYSTEM_DIAL;
    case ControlRole::image:
      return ROLE_SYSTEM_GRAPHIC;
  }
  return ROLE_SYSTEM_CLIENT;
}

// --- The object -----------------------------------------------------------------------------

static HRESULT giveText(const char* text, BSTR* given) {
  *given = nullptr;
  if (text == nullptr || text[0] == '\0' || readerCalls().allocText == nullptr) return S_FALSE;
  wchar_t wide[256] = {};
  MultiByteToWideChar(CP_ACP, 0, text, -1, wide, 255);
  *given = readerCalls().allocText(wide);
  return *given != nullptr ? S_OK : E_OUTOFMEMORY;
}

static HRESULT giveNumber(LONG number, VARIANT* given) {
  given->vt = VT_I4;
  given->lVal = number;
  return S_OK;
}

static HRESULT giveNothing(VARIANT* given) {
  given->vt = VT_EMPTY;
  return S_FALSE;
}

namespace {

// The interface is the system's, and objects end themselves.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Its elements have no objects of their own.
class WindowAccess final : public IAccessible {
 public:
  explicit WindowAccess(Window* window) : window_(window) {
  }

  void disconnect() {
    window_ = nullptr;
  }

  STDMETHODIMP QueryInterface(REFIID id, void** object) override {
    const bool known =
        isSame(id, kUnknownId) || isSame(id, kDispatchId) || isSame(id, kAccessibleId);
    *object = known ? static_cast<IAccessible*>(this) : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override {
    return static_cast<ULONG>(InterlockedIncrement(&references_));
  }
  STDMETHODIMP_(ULONG) Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    return E_NOTIMPL;
  }

  STDMETHODIMP get_accParent(IDispatch** parent) override;
  STDMETHODIMP get_accChildCount(LONG* count) override;
  STDMETHODIMP get_accChild(VARIANT element, IDispatch** child) override;
  STDMETHODIMP get_accName(VARIANT element, BSTR* name) override;
  STDMETHODIMP get_accValue(VARIANT element, BSTR* value) override;
  STDMETHODIMP get_accDescription(VARIANT element, BSTR* description) override;
  STDMETHODIMP get_accRole(VARIANT element, VARIANT* role) override;
  STDMETHODIMP get_accState(VARIANT element, VARIANT* state) override;
  STDMETHODIMP get_accHelp(VARIANT, BSTR* help) override {
    return giveText(nullptr, help);
  }
  STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT, LONG*) override {
    return giveText(nullptr, file);
  }
  STDMETHODIMP get_accKeyboardShortcut(VARIANT, BSTR* shortcut) override {
    return giveText(nullptr, shortcut);
  }
  STDMETHODIMP get_accFocus(VARIANT* focused) override;
  STDMETHODIMP get_accSelection(VARIANT* selected) override {
    return giveNothing(selected);
  }
  STDMETHODIMP get_accDefaultAction(VARIANT element, BSTR* action) override;
  STDMETHODIMP accSelect(LONG flags, VARIANT element) override;
  STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                           VARIANT element) override;
  STDMETHODIMP accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
  STDMETHODIMP accHitTest(LONG left, LONG top, VARIANT* found) override;
  STDMETHODIMP accDoDefaultAction(VARIANT element) override;
  STDMETHODIMP put_accName(VARIANT, BSTR) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP put_accValue(VARIANT element, BSTR value) override;

 private:
  ~WindowAccess() = default;
  bool isOwn(const VARIANT& element) const;
  const WindowControl* find(const VARIANT& element) const;
  bool read(const VARIANT& element, ControlReading* reading) const;

  LONG references_ = 1;
  Window* window_;
};

}  // namespace

bool WindowAccess::isOwn(const VARIANT& element) const {
  return element.vt == VT_I4 && element.lVal == CHILDID_SELF;
}

// Null for the object itself, for what is no element, and when the window has gone.
const WindowControl* WindowAccess::find(const VARIANT& element) const {
  if (window_ == nullptr || element.vt != VT_I4 || element.lVal < 1) return nullptr;
  return controlOfElement(window_, element.lVal);
}

bool WindowAccess::read(const VARIANT& element, ControlReading* reading) const {
  const WindowControl* control = find(element);
  *reading = {};
  return control != nullptr && window_->content->reader(window_->context, control->id, reading);
}

STDMETHODIMP WindowAccess::get_accParent(IDispatch** parent) {
  *parent = nullptr;
  if (window_ == nullptr || readerCalls().findParent == nullptr) return S_FALSE;
  return readerCalls().findParent(window_->handle, static_cast<DWORD>(OBJID_WINDOW), kDispatchId,
                                  reinterpret_cast<void**>(parent));
}

STDMETHODIMP WindowAccess::get_accChildCount(LONG* count) {
  *count = window_ == nullptr ? 0 : elementCount(window_);
  return S_OK;
}

STDMETHODIMP WindowAccess::get_accChild(VARIANT element, IDispatch** child) {
  *child = nullptr;
  return find(element) != nullptr ? S_FALSE : E_INVALIDARG;
}

STDMETHODIMP WindowAccess::get_accName(VARIANT element, BSTR* name) {
  if (isOwn(element)) return giveText(window_ == nullptr ? "" : window_->content->caption, name);
  ControlReading reading;
  return read(element, &reading) ? giveText(reading.name, name) : E_INVALIDARG;
}

STDMETHODIMP WindowAccess::get_accValue(VARIANT element, BSTR* value) {
  if (isOwn(element)) return giveText(nullptr, value);
  ControlReading reading;
  return read(element, &reading) ? giveText(reading.value, value) : E_INVALIDARG;
}

// There is no other place for a range, nor for an amount that the value does not tell.
STDMETHODIMP WindowAccess::get_accDescription(VARIANT element, BSTR* description) {
  if (isOwn(element)) return giveText(nullptr, description);
  ControlReading reading;
  if (!read(element, &reading)) return E_INVALIDARG;
  char text[256];
  if (reading.role == ControlRole::slider) {
    std::snprintf(text, sizeof(text), "%d to %d: %s", static_cast<int>(reading.minimum),
                  static_cast<int>(reading.maximum), reading.meaning);
  } else if (reading.hasRange) {
    std::snprintf(text, sizeof(text), "%d of %d to %d: %s", static_cast<int>(reading.amount),
                  static_cast<int>(reading.minimum), static_cast<int>(reading.maximum),
                  reading.meaning);
  } else {
    std::snprintf(text, sizeof(text), "%s", reading.meaning);
  }
  return giveText(text, description);
}

STDMETHODIMP WindowAccess::get_accRole(VARIANT element, VARIANT* role) {
  if (isOwn(element)) return giveNumber(ROLE_SYSTEM_DIALOG, role);
  ControlReading reading;
  return read(element, &reading) ? giveNumber(roleOf(reading.role), role) : E_INVALIDARG;
}

STDMETHODIMP WindowAccess::get_accState(VARIANT element, VARIANT* state) {
  if (isOwn(element)) return giveNumber(STATE_SYSTEM_FOCUSABLE, state);
  ControlReading reading;
  const WindowControl* control = find(element);
  if (!read(element, &reading)) return E_INVALIDARG;
  LONG flags = STATE_SYSTEM_FOCUSABLE;
  if (focusedControl(window_) == control->id) flags |= STATE_SYSTEM_FOCUSED;
  if (reading.disabled) flags |= STATE_SYSTEM_UNAVAILABLE;
  if (reading.on) flags |= STATE_SYSTEM_CHECKED;
  if (reading.role == ControlRole::menu) flags |= STATE_SYSTEM_HASPOPUP;
  return giveNumber(flags, state);
}

STDMETHODIMP WindowAccess::get_accFocus(VARIANT* focused) {
  const LONG element = window_ == nullptr ? 0 : elementOfControl(window_, focusedControl(window_));
  return element == 0 ? giveNothing(focused) : giveNumber(element, focused);
}

STDMETHODIMP WindowAccess::get_accDefaultAction(VARIANT element, BSTR* action) {
  ControlReading reading;
  if (isOwn(element) || !read(element, &reading)) return giveText(nullptr, action);
  switch (reading.role) {
    case ControlRole::button:
      return giveText("Press", action);
    case ControlRole::toggle:
      return giveText(reading.on ? "Uncheck" : "Check", action);
    case ControlRole::menu:
      return giveText("Open", action);
    default:
      return giveText(nullptr, action);
  }
}

STDMETHODIMP WindowAccess::accSelect(LONG flags, VARIANT element) {
  const WindowControl* control = find(element);
  if (control == nullptr || (flags & SELFLAG_TAKEFOCUS) == 0) return E_INVALIDARG;
  setFocusedControl(window_, control->id);
  return S_OK;
}

STDMETHODIMP WindowAccess::accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                       VARIANT element) {
  *left = *top = *width = *height = 0;
  if (window_ == nullptr) return E_FAIL;
  RECT rect = {};
  GetClientRect(window_->handle, &rect);
  const WindowControl* control = find(element);
  if (control != nullptr) {
    const Rectangle& place = control->rect;
    rect = {place.left, place.top, place.right, place.bottom};
  } else if (!isOwn(element)) {
    return E_INVALIDARG;
  }
  MapWindowPoints(window_->handle, nullptr, reinterpret_cast<POINT*>(&rect), 2);
  *left = rect.left;
  *top = rect.top;
  *width = rect.right - rect.left;
  *height = rect.bottom - rect.top;
  return S_OK;
}

STDMETHODIMP WindowAccess::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
  if (window_ == nullptr || start.vt != VT_I4) return giveNothing(end);
  LONG element = 0;
  if (direction == NAVDIR_FIRSTCHILD && start.lVal == CHILDID_SELF) element = 1;
  if (direction == NAVDIR_LASTCHILD && start.lVal == CHILDID_SELF) element = elementCount(window_);
  if (direction == NAVDIR_NEXT && start.lVal > 0) element = start.lVal + 1;
  if (direction == NAVDIR_PREVIOUS && start.lVal > 1) element = start.lVal - 1;
  const bool there = element > 0 && controlOfElement(window_, element) != nullptr;
  return there ? giveNumber(element, end) : giveNothing(end);
}

STDMETHODIMP WindowAccess::accHitTest(LONG left, LONG top, VARIANT* found) {
  if (window_ == nullptr) return giveNothing(found);
  POINT place = {left, top};
  ScreenToClient(window_->handle, &place);
  RECT client = {};
  GetClientRect(window_->handle, &client);
  if (PtInRect(&client, place) == FALSE) return giveNothing(found);
  const Point point = {static_cast<int16_t>(place.y), static_cast<int16_t>(place.x)};
  for (LONG element = 1;; ++element) {
    const WindowControl* control = controlOfElement(window_, element);
    if (control == nullptr) return giveNumber(CHILDID_SELF, found);
    if (pointInRect(point, &control->rect)) return giveNumber(element, found);
  }
}

STDMETHODIMP WindowAccess::accDoDefaultAction(VARIANT element) {
  const WindowControl* control = find(element);
  if (control == nullptr) return E_INVALIDARG;
  // What it opens would hold up whoever asks.
  if (control->kind == ControlKind::button) {
    postCommand(window_, control->id);
  } else {
    PostMessageA(window_->handle, kUseMessage, static_cast<WPARAM>(control->id), 0);
  }
  return S_OK;
}

STDMETHODIMP WindowAccess::put_accValue(VARIANT element, BSTR value) {
  ControlReading reading;
  if (value == nullptr || !read(element, &reading)) return E_INVALIDARG;
  wchar_t* end = nullptr;
  const long amount = std::wcstol(value, &end, 10);
  if (!reading.hasRange || end == value || *end != 0) return E_INVALIDARG;
  if (amount < reading.minimum || amount > reading.maximum) return E_INVALIDARG;
  WindowEvent event = eventOf(WindowEventKind::set);
  event.id = find(element)->id;
  event.amount = static_cast<int32_t>(amount);
  sendEvent(window_, event);
  return S_OK;
}

// --- Telling --------------------------------------------------------------------------------

static bool canBeRead(const Window* window) {
  return window->content != nullptr && window->content->reader != nullptr && !window->ended;
}

// Objects travel between processes only from threads that have said so; hosts need not have.
static bool startReading(Window* window) {
  window->access = new (std::nothrow) WindowAccess(window);
  if (window->access == nullptr) return false;
  const ReaderCalls& calls = readerCalls();
  const bool both = calls.openLibrary != nullptr && calls.closeLibrary != nullptr;
  window->opensAccess = both && SUCCEEDED(calls.openLibrary(nullptr));
  return true;
}

INT_PTR answerReader(Window* window, WPARAM wParam, LPARAM lParam) {
  // Only the lower half of what is asked for counts.
  const auto object = static_cast<LONG>(static_cast<DWORD>(lParam));
  if (object != OBJID_CLIENT || !canBeRead(window)) return 0;
  if (readerCalls().wrapObject == nullptr) return 0;
  if (window->access == nullptr && !startReading(window)) return 0;
  const LRESULT answer = readerCalls().wrapObject(kAccessibleId, wParam, window->access);
  SetWindowLongPtrA(window->handle, DWLP_MSGRESULT, answer);
  return 1;
}

static void tell(Window* window, DWORD event, int32_t id) {
  if (!canBeRead(window) || notifyCall() == nullptr) return;
  const LONG element = elementOfControl(window, id);
  if (element != 0) notifyCall()(event, window->handle, OBJID_CLIENT, element);
}

void tellFocus(Window* window, int id) {
  tell(window, EVENT_OBJECT_FOCUS, id);
}

void tellReading(Window* window, int32_t id) {
  ControlReading reading = {};
  if (!canBeRead(window) || !window->content->reader(window->context, id, &reading)) return;
  const bool toggle = reading.role == ControlRole::toggle;
  tell(window, toggle ? EVENT_OBJECT_STATECHANGE : EVENT_OBJECT_VALUECHANGE, id);
}

void endReading(Window* window) {
  if (window->access == nullptr) return;
  auto* access = static_cast<WindowAccess*>(window->access);
  window->access = nullptr;
  access->disconnect();
  if (readerCalls().disconnectObject != nullptr) readerCalls().disconnectObject(access, 0);
  access->Release();
  if (window->opensAccess) readerCalls().closeLibrary();
  window->opensAccess = false;
}
