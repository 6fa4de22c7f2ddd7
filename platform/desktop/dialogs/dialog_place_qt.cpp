#include "platform/desktop/dialogs/dialog_place_qt.h"

#include <xcb/xcb.h>

#include <QApplication>
#include <QDialog>
#include <QScreen>
#include <QWindow>
#include <cstdlib>
#include <memory>

#include "platform/desktop/desktop_session.h"
#include "services/dialog_placement.h"

constexpr int kCaptionButtonWidth = 18;  // where the system does not tell

struct FreeReply {
  void operator()(void* reply) const {
    std::free(reply);
  }
};
template <typename Answer>
using Reply = std::unique_ptr<Answer, FreeReply>;

static std::unique_ptr<QWindow> foreignOwner;

// Not every system lets windows of two programs belong together.
void belongToWindow(uint64_t number) {
  foreignOwner.reset(number == 0 ? nullptr : QWindow::fromWinId(static_cast<WId>(number)));
}

// Qt knows a foreign window's place within its frame only; empty when the server does not tell
// more.
static QRect foreignPlace() {
  auto* system = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (system == nullptr) return QRect();
  xcb_connection_t* server = system->connection();
  const auto window = static_cast<xcb_window_t>(foreignOwner->winId());
  const Reply<xcb_get_geometry_reply_t> size(
      xcb_get_geometry_reply(server, xcb_get_geometry(server, window), nullptr));
  if (size == nullptr) return QRect();
  const Reply<xcb_translate_coordinates_reply_t> corner(xcb_translate_coordinates_reply(
      server, xcb_translate_coordinates(server, window, size->root, 0, 0), nullptr));
  if (corner == nullptr) return QRect();
  const double scale = QApplication::primaryScreen()->devicePixelRatio();
  const auto scaled = [scale](int pixels) { return static_cast<int>(pixels / scale); };
  return QRect(scaled(corner->dst_x), scaled(corner->dst_y), scaled(size->width),
               scaled(size->height));
}

static QRect surroundingsOf(const QWidget* owner, const QRect& screen) {
  if (owner != nullptr) return QRect(owner->mapToGlobal(QPoint(0, 0)), owner->size());
  const QRect place = foreignOwner == nullptr ? QRect() : foreignPlace();
  return place.isEmpty() ? screen : place;
}

void placeDialog(QDialog* dialog, const QWidget* owner) {
  const QRect screen = QApplication::primaryScreen()->geometry();
  if (owner == nullptr && foreignOwner != nullptr) {
    dialog->winId();  // makes its window
    dialog->windowHandle()->setTransientParent(foreignOwner.get());
  }
  const QRect around = surroundingsOf(owner, screen);
  const DialogOrigin origin =
      centreDialog({around.left(), around.top(), around.width(), around.height(), dialog->width(),
                    dialog->height(), kCaptionButtonWidth,
                    /*hasSystemMenu=*/true, screen.width(), screen.height()});
  dialog->move(origin.x, origin.y);
}
