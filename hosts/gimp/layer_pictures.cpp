#include "hosts/gimp/layer_pictures.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>

#include "hosts/picture_files/picture_load.h"
#include "hosts/process/command_failure.h"

constexpr int kBandRows = 64;

using Buffer = std::unique_ptr<GeglBuffer, void (*)(GeglBuffer*)>;

static Buffer owned(GeglBuffer* buffer) {
  return {buffer, [](GeglBuffer* gone) {
            if (gone != nullptr) g_object_unref(gone);
          }};
}

static void inBands(const GeglRectangle& area, const std::function<void(const GeglRectangle&)>& f) {
  for (int y = area.y; y < area.y + area.height; y += kBandRows) {
    f({area.x, y, area.width, std::min(kBandRows, area.y + area.height - y)});
  }
}

static size_t pixelsOf(const GeglRectangle& area) {
  return static_cast<size_t>(area.width) * static_cast<size_t>(area.height);
}

// --- Formats --------------------------------------------------------------------------------

// How the layer keeps its samples, and how they are worked on: gamma-encoded as in picture files,
// in 8 bits where the layer has those, else in 16.
struct LayerFormat {
  const Babl* own;
  const Babl* work;
  bool deep;
  size_t colors;  // 1 or 3
  size_t parts;   // with alpha
  size_t ownBytes;
};

static LayerFormat formatOf(GeglBuffer* buffer) {
  LayerFormat format = {};
  format.own = gegl_buffer_get_format(buffer);
  format.parts = static_cast<size_t>(babl_format_get_n_components(format.own));
  format.colors = format.parts < 3 ? 1 : 3;
  format.ownBytes = static_cast<size_t>(babl_format_get_bytes_per_pixel(format.own));
  const bool alpha = format.parts > format.colors;
  const std::string model = std::string(format.colors == 1 ? "Y'" : "R'G'B'") + (alpha ? "A" : "");
  const auto named = [&](const char* bits) {
    return babl_format_with_space((model + bits).c_str(), format.own);
  };
  format.deep = format.own != named(" u8");
  format.work = named(format.deep ? " u16" : " u8");
  return format;
}

static size_t workBytes(const LayerFormat& format) {
  return format.parts * (format.deep ? 2 : 1);
}

static uint8_t sampleAt(const LayerFormat& format, const std::vector<uint8_t>& band, size_t i) {
  if (!format.deep) return band[i];
  uint16_t sample = 0;
  std::memcpy(&sample, &band[2 * i], sizeof(sample));
  return shallow(sample);
}

// --- Into memory ----------------------------------------------------------------------------

static void checkLayer(GimpDrawableName drawable, const std::string& name) {
  const auto item = reinterpret_cast<GimpItemName>(drawable);
  if (gimp_item_is_group(item)) {
    failOnFile(name, "is a layer group; choose one of its layers");
  }
  if (gimp_drawable_is_indexed(drawable)) {
    failOnFile(name, "belongs to an indexed picture; make it RGB first (Image > Mode > RGB)");
  }
  if (gimp_item_get_lock_content(item)) {
    failOnFile(name, "is locked; unlock its pixels in the Layers dialog first");
  }
}

static void fetchColors(GeglBuffer* buffer, const LayerFormat& format, const GeglRectangle& area,
                        Picture* picture) {
  const auto width = static_cast<size_t>(picture->colors.width);
  std::vector<uint8_t> samples;
  inBands(area, [&](const GeglRectangle& band) {
    samples.resize(pixelsOf(band) * workBytes(format));
    gegl_buffer_get(buffer, &band, 1.0, format.work, samples.data(), GEGL_AUTO_ROWSTRIDE,
                    GEGL_ABYSS_NONE);
    size_t from = 0;
    for (int y = band.y; y < band.y + band.height; ++y) {
      size_t pixel = static_cast<size_t>(y) * width + static_cast<size_t>(band.x);
      for (int x = 0; x < band.width; ++x, ++pixel) {
        for (size_t part = 0; part < format.colors; ++part) {
          picture->colors.samples[pixel * format.colors + part] = sampleAt(format, samples, from++);
        }
        if (format.parts > format.colors) picture->alpha[pixel] = sampleAt(format, samples, from++);
      }
    }
  });
}

static bool hasSelection(GimpImageName image) {
  return !gimp_selection_is_empty(image);
}

static void fetchSelection(GimpDrawableName drawable, GimpImageName image,
                           const GeglRectangle& area, int32_t width, HostMask* mask) {
  const Buffer buffer = owned(gimp_drawable_get_buffer(
      reinterpret_cast<GimpDrawableName>(gimp_image_get_selection(image))));
  int left = 0;
  int top = 0;
  MORVALIS_DRAWABLE_OFFSETS(drawable, &left, &top);
  const GeglRectangle inImage = {area.x + left, area.y + top, area.width, area.height};
  uint8_t* start = mask->data() + size_t(area.y) * size_t(width) + size_t(area.x);
  gegl_buffer_get(buffer.get(), &inImage, 1.0, babl_format("Y u8"), start, width, GEGL_ABYSS_NONE);
}

static bool isEmpty(const HostMask& mask) {
  return std::all_of(mask.begin(), mask.end(), [](uint8_t weight) { return weight == 0; });
}

LayerPicture fetchLayer(GimpDrawableName drawable, bool whole) {
  const auto item = reinterpret_cast<GimpItemName>(drawable);
  char* ownName = gimp_item_get_name(item);
  const std::string name = ownName == nullptr ? "the layer" : ownName;
  g_free(ownName);
  checkLayer(drawable, name);

  const GimpImageName image = gimp_item_get_image(item);
  const Buffer buffer = owned(gimp_drawable_get_buffer(drawable));
  const LayerFormat format = formatOf(buffer.get());
  const GeglRectangle all = *gegl_buffer_get_extent(buffer.get());
  const std::string refusal = refuseSides(all.width, all.height);
  if (!refusal.empty()) failOnFile(name, refusal);

  LayerPicture layer = {};
  layer.mixes = hasSelection(image);
  GeglRectangle* area = &layer.area;
  if (!gimp_drawable_mask_intersect(drawable, &area->x, &area->y, &area->width, &area->height)) {
    failOnFile(name, "nothing of this layer is selected");
  }
  Picture* picture = &layer.picture;
  const size_t pixels = pixelsOf(all);
  picture->colors = {all.width, all.height, static_cast<int32_t>(format.colors), {}};
  picture->colors.samples.resize(pixels * format.colors);
  if (format.parts > format.colors) picture->alpha.resize(pixels);
  fetchColors(buffer.get(), format, whole ? all : *area, picture);

  HostMask* mask = &layer.selection.mask;
  if (layer.mixes) {
    mask->resize(pixels);
    fetchSelection(drawable, image, *area, all.width, mask);
  } else {
    *mask = picture->alpha;
  }
  layer.selection.coversAgain = true;
  if (!mask->empty() && isEmpty(*mask)) {
    failOnFile(name, layer.mixes ? "nothing of this layer is selected"
                                 : "nothing is selected, and the layer is transparent everywhere");
  }
  return layer;
}

// --- And back -------------------------------------------------------------------------------

static uint8_t weightAt(const LayerPicture& layer, size_t pixel) {
  return layer.selection.mask.empty() ? 255 : layer.selection.mask[pixel];
}

// The effect in the layer's own format, opaque.
static void effectInBand(const LayerPicture& layer, const LayerFormat& format,
                         const GeglRectangle& band, const Babl* toOwn, std::vector<uint8_t>* own) {
  const HostPicture& colors = layer.picture.colors;
  std::vector<uint16_t> deep;
  std::vector<uint8_t> shallowOnes;
  for (int y = band.y; y < band.y + band.height; ++y) {
    const size_t start =
        (static_cast<size_t>(y) * static_cast<size_t>(colors.width) + static_cast<size_t>(band.x)) *
        format.colors;
    for (size_t i = 0; i < static_cast<size_t>(band.width) * format.colors; ++i) {
      const uint8_t sample = colors.samples[start + i];
      const bool last = i % format.colors == format.colors - 1 && format.parts > format.colors;
      if (format.deep) {
        deep.push_back(static_cast<uint16_t>(sample * 257));
        if (last) deep.push_back(65535);
      } else {
        shallowOnes.push_back(sample);
        if (last) shallowOnes.push_back(255);
      }
    }
  }
  own->resize(pixelsOf(band) * format.ownBytes);
  const void* from = format.deep ? static_cast<const void*>(deep.data()) : shallowOnes.data();
  babl_process(toOwn, from, own->data(), static_cast<long>(pixelsOf(band)));
}

// Over the samples that are there: colours where something is selected, and nothing else.
static void putBand(const LayerPicture& layer, const LayerFormat& format, const GeglRectangle& band,
                    const std::vector<uint8_t>& effect, std::vector<uint8_t>* samples) {
  const size_t colorBytes = format.ownBytes / format.parts * format.colors;
  const auto width = static_cast<size_t>(layer.picture.colors.width);
  size_t at = 0;
  for (int y = band.y; y < band.y + band.height; ++y) {
    const size_t start = static_cast<size_t>(y) * width + static_cast<size_t>(band.x);
    for (size_t x = 0; x < static_cast<size_t>(band.width); ++x, at += format.ownBytes) {
      if (weightAt(layer, start + x) == 0) continue;
      std::memcpy(&(*samples)[at], &effect[at], colorBytes);
    }
  }
}

static void getOwn(GeglBuffer* buffer, const LayerFormat& format, const GeglRectangle& band,
                   std::vector<uint8_t>* samples) {
  samples->resize(pixelsOf(band) * format.ownBytes);
  gegl_buffer_get(buffer, &band, 1.0, format.own, samples->data(), GEGL_AUTO_ROWSTRIDE,
                  GEGL_ABYSS_NONE);
}

static void setOwn(GeglBuffer* buffer, const LayerFormat& format, const GeglRectangle& band,
                   const std::vector<uint8_t>& samples) {
  gegl_buffer_set(buffer, &band, 0, format.own, samples.data(), GEGL_AUTO_ROWSTRIDE);
}

// GIMP mixes in single precision and by light, in which deep samples lose their last bits. Putting
// those back that are selected altogether or not at all, and transparency, leaves nothing more to
// undo.
static void sharpen(GimpDrawableName drawable, const LayerPicture& layer, const LayerFormat& format,
                    GeglBuffer* exact) {
  const Buffer buffer = owned(gimp_drawable_get_buffer(drawable));
  const auto width = static_cast<size_t>(layer.picture.colors.width);
  const size_t colorBytes = format.ownBytes / format.parts * format.colors;
  std::vector<uint8_t> wanted;
  std::vector<uint8_t> mixed;
  inBands(layer.area, [&](const GeglRectangle& band) {
    getOwn(exact, format, band, &wanted);
    getOwn(buffer.get(), format, band, &mixed);
    size_t at = 0;
    for (int y = band.y; y < band.y + band.height; ++y) {
      const size_t start = static_cast<size_t>(y) * width + static_cast<size_t>(band.x);
      for (size_t x = 0; x < static_cast<size_t>(band.width); ++x, at += format.ownBytes) {
        const uint8_t weight = weightAt(layer, start + x);
        const size_t first = weight == 0 || weight == 255 || !layer.mixes ? 0 : colorBytes;
        std::copy(&wanted[at + first], &wanted[at] + format.ownBytes, &mixed[at + first]);
      }
    }
    setOwn(buffer.get(), format, band, mixed);
  });
  gegl_buffer_flush(buffer.get());
}

void storeEffect(GimpDrawableName drawable, const LayerPicture& layer) {
  const Buffer buffer = owned(gimp_drawable_get_buffer(drawable));
  const Buffer shadow = owned(gimp_drawable_get_shadow_buffer(drawable));
  const LayerFormat format = formatOf(buffer.get());
  const GeglRectangle& area = layer.area;
  const Buffer exact = owned(format.deep ? gegl_buffer_new(&area, format.own) : nullptr);
  const Babl* toOwn = babl_fish(format.work, format.own);
  std::vector<uint8_t> samples;
  std::vector<uint8_t> effect;
  inBands(area, [&](const GeglRectangle& band) {
    getOwn(buffer.get(), format, band, &samples);
    effectInBand(layer, format, band, toOwn, &effect);
    putBand(layer, format, band, effect, &samples);
    if (format.deep) setOwn(exact.get(), format, band, samples);
    setOwn(shadow.get(), format, band, samples);
  });
  gegl_buffer_flush(shadow.get());
  gimp_drawable_merge_shadow(drawable, TRUE);
  if (format.deep) sharpen(drawable, layer, format, exact.get());
  gimp_drawable_update(drawable, area.x, area.y, area.width, area.height);
}
