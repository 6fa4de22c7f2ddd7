#include "dialog/choices/picture_menus.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>

#include "dialog/controls/dialog_reading.h"
#include "dialog/dialog_scale.h"
#include "dialog/dialog_state.h"
#include "platform/clock.h"
#include "platform/dialog_text.h"
#include "services/memory_blocks.h"
#include "settings/setting_ranges.h"

// Pixels at 100 percent.
constexpr int32_t kRowHeight = 36;
constexpr int32_t kRowPadding = 36;  // width beside check mark and name
constexpr int32_t kInPlace = 3;      // between a press and its release
constexpr int32_t kPictureSide = 32;

constexpr int32_t kCheckMark = 202;     // icon
constexpr uint32_t kInPlaceTime = 300;  // milliseconds
constexpr Rgb8 kMenuGround = {192, 192, 192};

struct MenuRow {
  int32_t picker;
  int32_t value;
  int32_t picture;  // bitmap
};

// In the order of their commands.
constexpr MenuRow kMenuRows[] = {
    {kShapePicker, 1, 146},    {kShapePicker, 2, 152},    {kShapePicker, 3, 153},
    {kShapePicker, 4, 154},    {kShapePicker, 5, 155},    {kShapePicker, 6, 156},
    {kShapePicker, 7, 157},    {kShapePicker, 8, 160},    {kShapePicker, 9, 163},
    {kShapePicker, 10, 161},   {kShapePicker, 11, 162},   {kShapePicker, 12, 166},
    {kShapePicker, 13, 168},   {kTexturePicker, 1, 187},  {kTexturePicker, 2, 188},
    {kTexturePicker, 3, 189},  {kTexturePicker, 4, 190},  {kTexturePicker, 5, 191},
    {kTexturePicker, 6, 192},  {kTexturePicker, 7, 193},  {kTexturePicker, 8, 194},
    {kTexturePicker, 9, 195},  {kTexturePicker, 10, 196}, {kTexturePicker, 11, 197},
    {kTexturePicker, 12, 198}, {kTexturePicker, 13, 199}, {kBlendPicker, 1, 169},
    {kBlendPicker, 2, 175},    {kBlendPicker, 3, 176},    {kBlendPicker, 4, 177},
    {kBlendPicker, 5, 178},    {kBlendPicker, 6, 179},    {kBlendPicker, 7, 180},
    {kBlendPicker, 8, 181},    {kBlendPicker, 9, 182},    {kBlendPicker, 10, 183},
    {kBlendPicker, 11, 184},   {kBlendPicker, 12, 185}};
constexpr int32_t kMenuRowCount = sizeof(kMenuRows) / sizeof(kMenuRows[0]);

const char* choiceName(int32_t picker, int32_t value) {
  for (const Picker& each : kPickers) {
    if (each.id != picker) continue;
    const SettingRange* range = findSetting(each.setting);
    if (value < range->minimum || value > range->maximum) return "*";
    return range->choices[value - range->minimum];
  }
  return "*";
}

// First row of a picker's list; its rows follow one another.
static int32_t firstRowOf(int32_t picker) {
  int32_t row = 0;
  while (row < kMenuRowCount && kMenuRows[row].picker != picker) ++row;
  return row;
}

static int32_t rowsOf(int32_t picker) {
  return static_cast<int32_t>(
      std::count_if(std::begin(kMenuRows), std::end(kMenuRows),
                    [picker](const MenuRow& row) { return row.picker == picker; }));
}

static const char* shownName(const MenuRow& row) {
  return row.picker == kBlendPicker ? choiceName(row.picker, row.value) : "";
}

static int32_t rowWidth(const MenuRow& row) {
  return scaled(menuLook().checkMarkWidth + kRowPadding) + textWidth(shownName(row), dialogScale());
}

static int32_t settingOfPicker(const EffectSettings* settings, int32_t id) {
  if (id == kShapePicker) return settings->shape;
  return id == kTexturePicker ? settings->textureChoice : settings->blendMode;
}

// The tool tip names the present choice.
static void tellChoice(DialogState* dialog, int32_t id, int32_t value) {
  if (dialog->tipTold[id] && dialog->toldValue[id] == value) return;
  dialog->tipTold[id] = true;
  dialog->toldValue[id] = value;
  for (const Picker& picker : kPickers) {
    if (picker.id != id) continue;
    char tip[160];
    std::snprintf(tip, sizeof(tip), "%s %s: %s", picker.name, choiceName(id, value),
                  picker.meaning);
    setToolTip(dialog->window, id, tip);
  }
}

void drawPicker(DialogState* dialog, int32_t id) {
  const Rectangle r = controlRect(id);
  Canvas* canvas = &dialog->canvas;
  const auto side = [](int32_t value) { return static_cast<int16_t>(value); };
  const int32_t width = pen();
  const int32_t top = r.top + scaled(2);
  const int32_t right = r.left + 2 * width + scaled(kPictureSide);  // of the picture
  const int32_t bottom = top + 2 * width + scaled(kPictureSide);
  drawBevel(canvas, {side(top), r.left, side(bottom - 1), side(right - 1)}, kBlack, kBlack);
  drawBevel(
      canvas,
      {side(top + width), side(r.left + width), side(bottom - 1 - width), side(right - 1 - width)},
      kWhite, kWhite);
  drawLine(canvas, right, top + 3 * width, right, bottom, kBlack);
  drawLine(canvas, right, bottom, r.left + 2 * width, bottom, kBlack);
  const int32_t value = settingOfPicker(settingsOf(dialog), id);
  tellChoice(dialog, id, value);
  tellIfNews(dialog, id, value);
  const MenuRow* shown = &kMenuRows[0];
  for (const MenuRow& row : kMenuRows) {
    if (row.picker == id && row.value == value) shown = &row;
  }
  drawResource(canvas, shown->picture, r.left + 2 * width, top + 2 * width);
}

void postChoice(DialogState* dialog, int32_t picker, int32_t value) {
  if (value < 1 || value > rowsOf(picker)) return;
  postCommand(dialog->window, kFirstMenuCommand + firstRowOf(picker) + value - 1);
}

int32_t choiceFromCommand(DialogState* dialog, int32_t command) {
  const int32_t index = command - kFirstMenuCommand;
  if (index < 0 || index >= kMenuRowCount) return 0;
  dialog->controlValue[kMenuRows[index].picker] = kMenuRows[index].value;
  return kMenuRows[index].picker;
}

// --- The pop-up -----------------------------------------------------------------------------

// Pixels at 100 percent to the right of the rows, for names that a narrow check mark leaves too
// little room. Pop-ups whose frame leaves them room show them.
constexpr int32_t kRoomBeside = 10;

static void drawMenuRow(DialogState* dialog, int32_t index, const MenuRow& row, bool selected) {
  Canvas* canvas = &dialog->popupCanvas;
  const MenuLook look = menuLook();
  const int32_t top = index * scaled(kRowHeight);
  const auto side = [](int32_t value) { return static_cast<int16_t>(value); };
  const Rgb8 ground =
      selected ? Rgb8{look.highlight[0], look.highlight[1], look.highlight[2]} : kMenuGround;
  fillArea(canvas,
           {side(top), 0, side(top + scaled(kRowHeight)),
            side(dialog->popupWidth + scaled(kRoomBeside))},
           ground);
  drawResource(canvas, row.picture, scaled(14), top + scaled(2));
  if (row.value == dialog->controlValue[row.picker]) {
    drawIcon(canvas, kCheckMark, scaled(4), top + scaled(kRowHeight / 2 - 2));
  }
  const bool enabled = dialog->session->dialog.controlEnabled[row.picker] == 1;
  const Rgb8 text = !enabled ? kDisabledText
                    : selected
                        ? Rgb8{look.highlightText[0], look.highlightText[1], look.highlightText[2]}
                        : kBlack;
  drawText(canvas, shownName(row), scaled(52), top + scaled(10), text);
}

static void drawPopup(DialogState* dialog) {
  const PixelTarget& target = dialog->popupCanvas.target;
  const Rectangle all = {0, 0, static_cast<int16_t>(target.height),
                         static_cast<int16_t>(target.width)};
  fillArea(&dialog->popupCanvas, all, kMenuGround);
  const int32_t first = firstRowOf(dialog->popupPicker);
  const int32_t rows = rowsOf(dialog->popupPicker);
  for (int32_t i = 0; i < rows; ++i) {
    drawMenuRow(dialog, i, kMenuRows[first + i], i + 1 == dialog->popupHot);
  }
  presentPixels(dialog->popup, target, all);
}

static int32_t rowUnder(const DialogState* dialog, Point point) {
  const int32_t row = point.v / scaled(kRowHeight) + 1;
  const bool outside =
      point.h < 0 || point.h > dialog->popupWidth || row < 1 || row > rowsOf(dialog->popupPicker);
  return outside ? 0 : row;
}

static void releasePopup(DialogState* dialog) {
  Window* popup = dialog->popup;
  dialog->popup = nullptr;
  releaseMouse(popup);
  closePopup(popup);
  freeModuleBlock(dialog->popupCanvas.target.rgb);
  dialog->popupCanvas = {};
  tellIfNews(dialog, dialog->popupPicker, dialog->controlValue[dialog->popupPicker]);
}

// The user hears or reads which row it is.
static void tellHotRow(DialogState* dialog) {
  const int32_t hot = dialog->popupHot;
  if (hot == 0) return nameRow(dialog->popup, {}, nullptr, false);
  const MenuRow& row = kMenuRows[firstRowOf(dialog->popupPicker) + hot - 1];
  const auto side = [](int32_t value) { return static_cast<int16_t>(value); };
  const Rectangle place = {side((hot - 1) * scaled(kRowHeight)), 0, side(hot * scaled(kRowHeight)),
                           side(dialog->popupWidth)};
  nameRow(dialog->popup, place, choiceName(row.picker, row.value), shownName(row)[0] != 0);
  tellIfNews(dialog, row.picker, row.value);
}

static void setHot(DialogState* dialog, int32_t row) {
  if (row == dialog->popupHot) return;
  dialog->popupHot = row;
  drawPopup(dialog);
  tellHotRow(dialog);
}

// Closes the pop-up and posts the command of the row that is chosen, if any.
static void choose(DialogState* dialog, int32_t row) {
  const bool enabled = dialog->session->dialog.controlEnabled[dialog->popupPicker] == 1;
  releasePopup(dialog);
  if (row == 0 || !enabled) return;
  postChoice(dialog, dialog->popupPicker, row);
}

// --- Its user -------------------------------------------------------------------------------

static bool releasedInPlace(const DialogState* dialog, Point point) {
  const Point screen = clientToScreen(dialog->popup, point);
  return std::abs(screen.h - dialog->popupPress.h) <= scaled(kInPlace) &&
         std::abs(screen.v - dialog->popupPress.v) <= scaled(kInPlace) &&
         millisecondsNow() - dialog->popupTime <= kInPlaceTime;
}

static void releaseOverPopup(DialogState* dialog, Point point) {
  if (!dialog->popupStays && releasedInPlace(dialog, point)) {
    dialog->popupStays = true;
    return;
  }
  choose(dialog, dialog->popupHot);
}

// The next row, behind the hot one, whose name begins like this.
static int32_t rowNamed(const DialogState* dialog, char letter) {
  const int32_t first = firstRowOf(dialog->popupPicker);
  const int32_t rows = rowsOf(dialog->popupPicker);
  const char small = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
  for (int32_t i = 0; i < rows; ++i) {
    const int32_t row = (dialog->popupHot + i) % rows;
    if (choiceName(dialog->popupPicker, kMenuRows[first + row].value)[0] == small) return row + 1;
  }
  return dialog->popupHot;
}

static bool keyOverPopup(DialogState* dialog, const WindowEvent& event) {
  const int32_t rows = rowsOf(dialog->popupPicker);
  const int32_t hot = dialog->popupHot;
  switch (event.key) {
    case WindowKey::up:
      setHot(dialog, hot > 1 ? hot - 1 : rows);
      return true;
    case WindowKey::down:
      setHot(dialog, hot < rows ? hot + 1 : 1);
      return true;
    case WindowKey::home:
    case WindowKey::pageUp:
      setHot(dialog, 1);
      return true;
    case WindowKey::end:
    case WindowKey::pageDown:
      setHot(dialog, rows);
      return true;
    case WindowKey::enter:
      choose(dialog, hot);
      return true;
    case WindowKey::escape:
      choose(dialog, 0);
      return true;
    case WindowKey::character:
      if (event.character == ' ') {
        choose(dialog, hot);
      } else {
        setHot(dialog, rowNamed(dialog, event.character));
      }
      return true;
    default:
      return true;  // nothing else has the keyboard meanwhile
  }
}

static bool popupProcedure(Window* popup, const WindowEvent& event, void* context) {
  auto* dialog = static_cast<DialogState*>(context);
  switch (event.kind) {
    case WindowEventKind::initialise:
      dialog->popup = popup;
      drawPopup(dialog);
      return true;
    case WindowEventKind::mouseMove:
      setHot(dialog, rowUnder(dialog, event.point));
      return true;
    case WindowEventKind::buttonDown:
      setHot(dialog, rowUnder(dialog, event.point));
      if (dialog->popupHot == 0) choose(dialog, 0);
      return true;
    case WindowEventKind::buttonUp:
      releaseOverPopup(dialog, event.point);
      return true;
    case WindowEventKind::key:
      return keyOverPopup(dialog, event);
    default:
      return false;
  }
}

// --- Opening --------------------------------------------------------------------------------

static void openPopupAt(DialogState* dialog, int32_t id, Point screenPoint, bool byKey) {
  if (dialog->popup != nullptr) return;
  const int32_t first = firstRowOf(id);
  const int32_t rows = rowsOf(id);
  dialog->popupPicker = id;
  dialog->popupHot = 0;
  dialog->popupWidth = 0;
  dialog->popupStays = byKey;
  dialog->popupPress = screenPoint;
  dialog->popupTime = millisecondsNow();
  for (int32_t i = 0; i < rows; ++i) {
    const MenuRow& row = kMenuRows[first + i];
    dialog->popupWidth = std::max(dialog->popupWidth, rowWidth(row));
    if (byKey && row.value == dialog->controlValue[id]) dialog->popupHot = i + 1;
  }
  const int32_t height = rows * scaled(kRowHeight);
  PixelTarget target = {dialog->popupWidth + scaled(kRoomBeside), height, nullptr};
  target.rgb = static_cast<uint8_t*>(newModuleBlock(
      uint64_t{3} * static_cast<uint32_t>(target.width) * static_cast<uint32_t>(target.height)));
  if (target.rgb == nullptr) return;
  dialog->popupCanvas = {target,
                         {0, 0, static_cast<int16_t>(height), static_cast<int16_t>(target.width)}};
  int32_t y = std::max(screenPoint.v - height / 2, 0);
  if (y + height > screenHeight()) y = screenHeight() - height;
  const Point origin = {static_cast<int16_t>(y), screenPoint.h};
  if (openPopup(dialog->window, origin, dialog->popupWidth, height, popupProcedure, dialog) ==
      nullptr) {
    dialog->popup = nullptr;
    freeModuleBlock(target.rgb);
    dialog->popupCanvas = {};
  } else if (dialog->popupHot != 0) {
    tellHotRow(dialog);
  }
}

void openPicker(DialogState* dialog, int32_t id, Point screenPoint) {
  openPopupAt(dialog, id, screenPoint, /*byKey=*/false);
}

void openPickerByKey(DialogState* dialog, int32_t id) {
  const Rectangle rect = controlRect(id);
  const Point beside = {static_cast<int16_t>((rect.top + rect.bottom) / 2), rect.right};
  openPopupAt(dialog, id, clientToScreen(dialog->window, beside), /*byKey=*/true);
}
