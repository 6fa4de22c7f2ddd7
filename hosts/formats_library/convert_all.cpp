// Files of several pictures, animations and documents, from one to the other.

#include <algorithm>
#include <exception>

#include "hosts/formats_library/formats.h"
#include "hosts/process/libraries/quiet_errors.h"

// The pictures as they are asked for. The saver wants them under each other as one high picture,
// whose rows it asks for from the top.
struct Feed {
  BytesView file;
  bool (*stop)() = nullptr;
  const ChangePicture* change = nullptr;
  VipsRef frames;  // of an animation, under each other; none: each is opened by itself
  int32_t count = 0;
  int32_t current = 0;  // counted from 1; 0: none yet
  Picture first;
  std::vector<uint8_t> shallow;  // the current one's pixels stand in one of these
  std::vector<uint16_t> deep;
  std::string reason;
  std::exception_ptr thrown;  // must not pass through the picture library
};

static VipsImage* openFirst(BytesView file, int count) {
  const QuietErrors quiet;
  std::string loader;
  return openPages(file, 0, count, &loader);
}

static VipsImage* openNext(const Feed& feed) {
  const int next = feed.current;
  std::string loader;
  if (feed.frames.image == nullptr) return openPages(feed.file, next, 1, &loader);
  VipsRef part;
  VipsImage* all = feed.frames.image;
  const int height = vips_image_get_page_height(all);
  if (vips_extract_area(all, &part.image, 0, next * height, all->Xsize, height, nullptr) != 0) {
    return nullptr;
  }
  return vips_image_copy_memory(part.image);
}

static bool readNext(const Feed& feed, Picture* picture) {
  const QuietErrors quiet;
  VipsRef held(openNext(feed));
  return held.image != nullptr && takePicture(&held, feed.file, picture);
}

static bool sameKind(const Picture& a, const Picture& b) {
  return a.colors.width == b.colors.width && a.colors.height == b.colors.height &&
         a.colors.planes == b.colors.planes && a.alpha.empty() == b.alpha.empty() &&
         a.deep.colors.empty() == b.deep.colors.empty();
}

// Colours alone are as they should be already.
static void takeRows(Picture* picture, Feed* feed) {
  const int32_t planes = picture->colors.planes;
  const bool alpha = !picture->alpha.empty();
  if (!picture->deep.colors.empty()) {
    feed->deep = alpha ? interleaved(picture->deep.colors, picture->deep.alpha, planes)
                       : std::move(picture->deep.colors);
  } else {
    feed->shallow = alpha ? interleaved(picture->colors.samples, picture->alpha, planes)
                          : std::move(picture->colors.samples);
  }
}

static bool advance(Feed* feed) {
  if (feed->stop()) {
    feed->reason = kStopped;
    return false;
  }
  Picture picture;
  if (!readNext(*feed, &picture)) {
    feed->reason = loadFailure(feed->stop);
    return false;
  }
  try {
    (*feed->change)(feed->current + 1, &picture);
  } catch (...) {
    feed->thrown = std::current_exception();
    return false;
  }
  if (feed->current == 0) {
    feed->first = picture;
  } else if (!sameKind(picture, feed->first)) {
    feed->reason = "its pictures are not alike";
    return false;
  }
  takeRows(&picture, feed);
  ++feed->current;
  return true;
}

static int giveRows(VipsRegion* out, void*, void*, void* context, gboolean*) {
  auto* feed = static_cast<Feed*>(context);
  const VipsRect& wanted = out->valid;
  const int height = feed->first.colors.height;
  const size_t pixel = VIPS_IMAGE_SIZEOF_PEL(out->im);
  const size_t row = pixel * static_cast<size_t>(out->im->Xsize);
  const bool deep = !feed->deep.empty();
  for (int y = wanted.top; y < wanted.top + wanted.height; ++y) {
    const int number = y / height + 1;
    if (number < feed->current) {
      feed->reason = "its rows are asked for twice";
      return -1;
    }
    while (feed->current < number) {
      if (!advance(feed)) return -1;
    }
    const uint8_t* pixels =
        deep ? reinterpret_cast<const uint8_t*>(feed->deep.data()) : feed->shallow.data();
    std::copy_n(
        pixels + static_cast<size_t>(y % height) * row + static_cast<size_t>(wanted.left) * pixel,
        static_cast<size_t>(wanted.width) * pixel, VIPS_REGION_ADDR(out, wanted.left, y));
  }
  return 0;
}

// The pictures under each other, made as they are asked for.
static VipsImage* imageOf(Feed* feed) {
  const Picture& first = feed->first;
  const PictureMetadata& metadata = first.metadata;
  const int bands = first.colors.planes + (first.alpha.empty() ? 0 : 1);
  VipsImage* image = vips_image_new();
  // 72 to the inch where nothing is said.
  vips_image_init_fields(image, first.colors.width, first.colors.height * feed->count, bands,
                         feed->deep.empty() ? VIPS_FORMAT_UCHAR : VIPS_FORMAT_USHORT,
                         VIPS_CODING_NONE, colorsOf(first),
                         metadata.dotsPerMeterX > 0 ? metadata.dotsPerMeterX / 1000 : 72 / 25.4,
                         metadata.dotsPerMeterY > 0 ? metadata.dotsPerMeterY / 1000 : 72 / 25.4);
  vips_image_set_int(image, VIPS_META_PAGE_HEIGHT, first.colors.height);
  vips_image_set_int(image, VIPS_META_SEQUENTIAL, 1);
  giveMetadata(metadata, image);
  if (vips_image_pipelinev(image, VIPS_DEMAND_STYLE_THINSTRIP, nullptr) != 0 ||
      vips_image_generate(image, nullptr, giveRows, nullptr, nullptr, feed) != 0) {
    g_object_unref(image);
    return nullptr;
  }
  return image;
}

// How long each picture stands, and how often all are shown.
static void copyTimes(VipsImage* from, VipsImage* to) {
  int* times = nullptr;
  int count = 0;
  if (vips_image_get_typeof(from, kFrameTimes) != 0 &&
      vips_image_get_array_int(from, kFrameTimes, &times, &count) == 0) {
    vips_image_set_array_int(to, kFrameTimes, times, count);
  }
  int loops = 0;
  if (vips_image_get_typeof(from, kFrameLoops) != 0 &&
      vips_image_get_int(from, kFrameLoops, &loops) == 0) {
    vips_image_set_int(to, kFrameLoops, loops);
  }
}

// The picture library writes the height of all of them into what cameras note.
static void correctExifHeight(uint32_t wrong, uint32_t right, FileBytes* file) {
  constexpr size_t kEntryBytes = 12;  // tag, form, count, value
  for (size_t i = 0; i + kEntryBytes <= file->size(); ++i) {
    const BytesView entry = BytesView(*file).part(i, kEntryBytes);
    uint8_t* value = file->data() + i + 8;
    if (beginsWith(entry, {"\x03\xA0\x04\0\1\0\0\0", 8}) && littleEndianAt(entry, 8, 4) == wrong) {
      for (int k = 0; k < 4; ++k) value[k] = static_cast<uint8_t>(right >> (8 * k));
    } else if (beginsWith(entry, {"\xA0\x03\0\4\0\0\0\1", 8}) &&
               bigEndianAt(entry, 8, 4) == wrong) {
      for (int k = 0; k < 4; ++k) value[k] = static_cast<uint8_t>(right >> (24 - 8 * k));
    }
  }
}

std::string convertAll(BytesView file, const PictureFormat& format, const SaveChoices& choices,
                       RefuseSides refuse, bool (*stop)(), const ChangePicture& change,
                       FileBytes* result) {
  Feed feed;
  feed.file = file;
  feed.stop = stop;
  feed.change = &change;
  const bool animation = format.sequence == Sequence::animation;
  VipsRef first(openFirst(file, animation ? -1 : 1));
  if (first.image == nullptr) return loadFailure(stop);
  feed.count = std::max(1, vips_image_get_n_pages(first.image));
  const std::string refused = refuse(first.image->Xsize, vips_image_get_page_height(first.image));
  if (!refused.empty()) return refused;
  if (animation) std::swap(feed.frames.image, first.image);
  if (!advance(&feed)) {
    if (feed.thrown) std::rethrow_exception(feed.thrown);
    return feed.reason;
  }
  const VipsRef all(imageOf(&feed));
  if (all.image == nullptr) return takeReason();
  if (animation) copyTimes(feed.frames.image, all.image);
  const std::string reason = encodeImage(all.image, format, choices, stop, result);
  if (feed.thrown) std::rethrow_exception(feed.thrown);
  if (!feed.reason.empty()) return feed.reason;
  if (format.kind == FormatKind::webp) {
    const auto height = static_cast<uint32_t>(feed.first.colors.height);
    correctExifHeight(height * static_cast<uint32_t>(feed.count), height, result);
  }
  return reason.empty() ? "" : "its result cannot be written: " + reason;
}
