#include "dialog/preview/preview_zoom.h"

#include <algorithm>
#include <cstdlib>

#include "dialog/dialog_state.h"
#include "geometry/field/cone_kernel.h"
#include "geometry/field/selection_mask.h"
#include "services/memory_blocks.h"

constexpr int32_t kLastSingleStep = 8;
constexpr int32_t kSelected = 128;     // of 255
constexpr int32_t kVisibleRadius = 2;  // pixels of the preview

int32_t zoomedIn(int32_t scale) {
  if (scale <= kLastSingleStep) return std::max(scale - 1, 1);
  int32_t step = kLastSingleStep;
  while (2 * step < scale) step *= 2;
  return step;
}

int32_t zoomedOut(int32_t scale, int32_t fit) {
  if (scale < kLastSingleStep) return std::min(scale + 1, fit);
  int32_t step = 2 * kLastSingleStep;
  while (step <= scale) step *= 2;
  return std::min(step, fit);
}

// --- The shapes of the selection ------------------------------------------------------------

// In pixels of the picture as it is shown.
struct Shape {
  int32_t pixels;
  int32_t left;
  int32_t top;
  int32_t right;  // both included
  int32_t bottom;
};

static void addPixel(Shape* shape, int32_t x, int32_t y) {
  const bool first = shape->pixels++ == 0;
  shape->left = first ? x : std::min(shape->left, x);
  shape->top = first ? y : std::min(shape->top, y);
  shape->right = first ? x : std::max(shape->right, x);
  shape->bottom = first ? y : std::max(shape->bottom, y);
}

struct SelectionMap {
  uint8_t* open;     // pixels of the selection that belong to no shape yet
  int32_t* waiting;  // pixels whose neighbours are to be looked at
  int32_t width;
  int32_t height;
};

static Shape takeShape(const SelectionMap& map, int32_t start) {
  Shape shape = {};
  int32_t waiting = 0;
  map.waiting[waiting++] = start;
  map.open[start] = 0;
  while (waiting > 0) {
    const int32_t at = map.waiting[--waiting];
    const int32_t x = at % map.width;
    const int32_t y = at / map.width;
    addPixel(&shape, x, y);
    for (int32_t v = std::max(y - 1, 0); v <= std::min(y + 1, map.height - 1); ++v) {
      for (int32_t u = std::max(x - 1, 0); u <= std::min(x + 1, map.width - 1); ++u) {
        const int32_t next = v * map.width + u;
        if (map.open[next] == 0) continue;
        map.open[next] = 0;
        map.waiting[waiting++] = next;
      }
    }
  }
  return shape;
}

// The selection as a whole, with the pixel of it that is nearest to its middle, and the largest of
// its shapes.
struct SelectionShapes {
  Shape all;
  Point middle;
  Shape largest;
};

static void findMiddle(const SelectionMap& map, SelectionShapes* shapes) {
  const int32_t x = (shapes->all.left + shapes->all.right) / 2;
  const int32_t y = (shapes->all.top + shapes->all.bottom) / 2;
  int32_t nearest = INT32_MAX;
  for (int32_t i = 0; i < map.width * map.height; ++i) {
    if (map.open[i] == 0) continue;
    const int32_t u = i % map.width;
    const int32_t v = i / map.width;
    const int32_t distance = (u - x) * (u - x) + (v - y) * (v - y);
    if (distance >= nearest) continue;
    nearest = distance;
    shapes->middle = {static_cast<int16_t>(v), static_cast<int16_t>(u)};
  }
}

static bool findShapes(const SessionRecord* session, const SelectionMap& map,
                       SelectionShapes* shapes) {
  for (int32_t y = 0; y < map.height; ++y) {
    const MaskRow row = maskRow(session, y);
    for (int32_t x = 0; x < map.width; ++x) {
      const bool selected = row.value(x) >= kSelected;
      map.open[y * map.width + x] = selected ? 1 : 0;
      if (selected) addPixel(&shapes->all, x, y);
    }
  }
  if (shapes->all.pixels == 0) return false;
  findMiddle(map, shapes);
  for (int32_t i = 0; i < map.width * map.height; ++i) {
    if (map.open[i] == 0) continue;
    const Shape shape = takeShape(map, i);
    if (shape.pixels > shapes->largest.pixels) shapes->largest = shape;
  }
  return true;
}

static bool readShapes(const SessionRecord* session, SelectionShapes* shapes) {
  SelectionMap map = {nullptr, nullptr, session->render.renderWidth, session->render.renderHeight};
  const uint64_t pixels =
      uint64_t{static_cast<uint32_t>(map.width)} * static_cast<uint32_t>(map.height);
  map.open = static_cast<uint8_t*>(newModuleBlock(pixels));
  map.waiting = static_cast<int32_t*>(newModuleBlock(sizeof(int32_t) * pixels));
  const bool found =
      map.open != nullptr && map.waiting != nullptr && findShapes(session, map, shapes);
  freeModuleBlock(map.open);
  freeModuleBlock(map.waiting);
  return found;
}

// --- The opening ----------------------------------------------------------------------------

// The least reduction at which so many pixels of the picture fit into a side of the frame.
static int32_t scaleFor(int32_t pixels, int32_t side, int32_t fit) {
  int32_t scale = 1;
  while (scale < fit && pixels > side * scale) scale = zoomedOut(scale, fit);
  return scale;
}

static void showAround(DialogState* dialog, int32_t scale, int32_t x, int32_t y) {
  EffectSettings* settings = settingsOf(dialog);
  const Rectangle& frame = dialog->session->render.previewFrame;
  settings->previewScale = scale;
  settings->previewOriginX = x - (frame.right - frame.left) * scale / 2;
  settings->previewOriginY = y - (frame.bottom - frame.top) * scale / 2;
}

bool openAtBevel(DialogState* dialog) {
  const Rectangle& frame = dialog->session->render.previewFrame;
  const int32_t fit = dialog->fitScale;
  const int32_t radius = fullRadius(settingsOf(dialog)->radius);
  if (fit <= kLastSingleStep) return false;
  SelectionShapes shapes = {};
  if (!readShapes(dialog->session, &shapes)) return false;
  const Shape& shape = shapes.largest;
  // A pixel of the shown picture more on every side: that much may be hidden in the reduction.
  const int32_t width = (shape.right - shape.left + 3) * fit;
  const int32_t height = (shape.bottom - shape.top + 3) * fit;
  const int32_t scale = std::max(scaleFor(width, frame.right - frame.left, fit),
                                 scaleFor(height, frame.bottom - frame.top, fit));
  if (radius / scale >= kVisibleRadius) {
    showAround(dialog, scale, (shape.left + shape.right + 1) * fit / 2,
               (shape.top + shape.bottom + 1) * fit / 2);
  } else {
    showAround(dialog, 1, shapes.middle.h * fit + fit / 2, shapes.middle.v * fit + fit / 2);
  }
  return true;
}
