#include "hosts/png_files/png_read.h"

#include <isa-l/igzip_lib.h>

#include <algorithm>
#include <memory>

#include "hosts/png_files/png_chunks.h"
#include "hosts/png_files/png_rows.h"
#include "hosts/process/progress_bar.h"

constexpr size_t kHeaderBytes = 13;
constexpr size_t kBandBytes = 256 * 1024;  // unpacked at a time
constexpr size_t kMostPacking = 1100;      // the format cannot pack closer

constexpr int kColorUsed = 2;  // bits of the colour type
constexpr int kAlphaUsed = 4;

bool isPngFile(BytesView file) {
  return beginsWith(file, {kPngSignature, kPngSignatureBytes});
}

bool readPngHeader(BytesView file, PngHeader* header) {
  size_t at = kPngSignatureBytes;
  PngChunk chunk = nextPngChunk(file, &at);
  if (chunk.name != "IHDR" || chunk.data.size != kHeaderBytes || !isWholePngChunk(chunk)) {
    return false;
  }
  header->width = bigEndianAt(chunk.data, 0, 4);
  header->height = bigEndianAt(chunk.data, 4, 4);
  header->bits = chunk.data.data[8];
  header->colorType = chunk.data.data[9];
  header->interlaced = chunk.data.data[12] != 0;
  header->oneTransparentColor = false;
  const bool packed = chunk.data.data[10] == 0 && chunk.data.data[11] == 0;
  for (chunk = nextPngChunk(file, &at); !chunk.name.empty() && chunk.name != "IDAT";
       chunk = nextPngChunk(file, &at)) {
    if (chunk.name == "tRNS") header->oneTransparentColor = true;
  }
  return packed && header->width > 0 && header->height > 0;
}

bool isPlainPng(const PngHeader& header) {
  const bool plainType = (header.colorType & ~(kColorUsed | kAlphaUsed)) == 0;
  const bool wholeBytes = header.bits == 8 || header.bits == 16;
  return plainType && wholeBytes && !header.interlaced && !header.oneTransparentColor;
}

// --- The stream of rows ---------------------------------------------------------------------

// The data chunks as one stream, unpacked.
struct PngStream {
  BytesView file;
  size_t at;
  std::unique_ptr<inflate_state> state;
  bool ended = false;    // of the data chunks
  bool damaged = false;  // a chunk's checksum is wrong
};

static bool openStream(BytesView file, PngStream* stream) {
  stream->file = file;
  stream->at = kPngSignatureBytes;
  size_t before = stream->at;
  for (;;) {
    const PngChunk chunk = nextPngChunk(file, &stream->at);
    if (chunk.name.empty()) return false;
    if (chunk.name == "IDAT") break;
    before = stream->at;
  }
  stream->at = before;
  stream->state = std::make_unique<inflate_state>();
  isal_inflate_init(stream->state.get());
  stream->state->crc_flag = ISAL_ZLIB;
  return true;
}

static void feed(PngStream* stream) {
  size_t at = stream->at;
  const PngChunk chunk = nextPngChunk(stream->file, &at);
  if (chunk.name != "IDAT") {
    stream->ended = true;
    return;
  }
  stream->damaged = stream->damaged || !isWholePngChunk(chunk);
  stream->at = at;
  stream->state->next_in = const_cast<uint8_t*>(chunk.data.data);
  stream->state->avail_in = static_cast<uint32_t>(chunk.data.size);
}

static bool readStream(PngStream* stream, uint8_t* to, size_t bytes) {
  inflate_state* state = stream->state.get();
  state->next_out = to;
  state->avail_out = static_cast<uint32_t>(bytes);
  while (state->avail_out > 0) {
    const uint32_t before = state->avail_out;
    if (state->avail_in == 0 && !stream->ended) feed(stream);
    if (stream->damaged) return false;
    if (isal_inflate(state) < 0) return false;
    const bool stuck = state->avail_out == before && state->avail_in == 0;
    if (stuck && (stream->ended || state->block_state == ISAL_BLOCK_FINISH)) return false;
    if (state->avail_out > 0 && state->block_state == ISAL_BLOCK_FINISH) return false;
  }
  return true;
}

// The stream's own checksum, and the chunks behind it.
static bool endsWhole(PngStream* stream) {
  inflate_state* state = stream->state.get();
  uint8_t surplus[64];
  for (int turns = 0; state->block_state != ISAL_BLOCK_FINISH; ++turns) {
    state->next_out = surplus;
    state->avail_out = sizeof(surplus);
    if (state->avail_in == 0 && !stream->ended) feed(stream);
    if (stream->damaged || isal_inflate(state) < 0) return false;
    if (state->avail_out != sizeof(surplus)) break;  // more than the picture: let it be
    if (state->avail_in == 0 && stream->ended && turns > 1) return false;
  }
  for (;;) {
    const PngChunk chunk = nextPngChunk(stream->file, &stream->at);
    if (chunk.name.empty()) return false;
    if (chunk.name == "IEND") return true;
  }
}

// --- Pixels ---------------------------------------------------------------------------------

static uint16_t sampleAt(const uint8_t* at) {
  return static_cast<uint16_t>(at[0] << 8 | at[1]);
}

static void takeShallowRow(const uint8_t* row, size_t bytes, bool alpha, Picture* picture) {
  std::vector<uint8_t>& colors = picture->colors.samples;
  if (!alpha) {
    colors.insert(colors.end(), row, row + bytes);
    return;
  }
  const size_t planes = static_cast<size_t>(picture->colors.planes);
  const size_t pixels = bytes / (planes + 1);
  const size_t start = picture->alpha.size();
  colors.resize(colors.size() + pixels * planes);
  picture->alpha.resize(start + pixels);
  uint8_t* to = &colors[start * planes];
  for (size_t x = 0; x < pixels; ++x) {
    for (size_t plane = 0; plane < planes; ++plane) *to++ = *row++;
    picture->alpha[start + x] = *row++;
  }
}

static void takeDeepRow(const uint8_t* row, size_t bytes, bool alpha, Picture* picture) {
  const int32_t planes = picture->colors.planes + (alpha ? 1 : 0);
  int32_t plane = 0;
  for (size_t i = 0; i < bytes; i += 2) {
    const uint16_t sample = sampleAt(row + i);
    const bool isAlpha = plane == picture->colors.planes;
    (isAlpha ? picture->deep.alpha : picture->deep.colors).push_back(sample);
    (isAlpha ? picture->alpha : picture->colors.samples).push_back(shallow(sample));
    if (++plane == planes) plane = 0;
  }
}

static void reserve(const PngHeader& header, bool alpha, Picture* picture) {
  const size_t pixels = size_t{header.width} * header.height;
  const size_t samples = pixels * static_cast<size_t>(picture->colors.planes);
  picture->colors.samples.reserve(samples);
  if (alpha) picture->alpha.reserve(pixels);
  if (header.bits == 8) return;
  picture->deep.colors.reserve(samples);
  if (alpha) picture->deep.alpha.reserve(pixels);
}

// As many bytes as the header promises cannot come out of too small a file.
static bool canHold(BytesView file, size_t rowBytes, size_t rows) {
  return rowBytes * rows / kMostPacking <= file.size;
}

bool readPngPixels(BytesView file, const PngHeader& header, bool (*stop)(), Picture* picture) {
  const bool alpha = (header.colorType & kAlphaUsed) != 0;
  picture->colors.width = static_cast<int32_t>(header.width);
  picture->colors.height = static_cast<int32_t>(header.height);
  picture->colors.planes = (header.colorType & kColorUsed) != 0 ? 3 : 1;
  picture->sampleBits = header.bits;
  const size_t step = static_cast<size_t>(picture->colors.planes + (alpha ? 1 : 0)) *
                      static_cast<size_t>(header.bits / 8);
  const size_t rowBytes = step * header.width;
  PngStream stream;
  if (!canHold(file, rowBytes, header.height) || !openStream(file, &stream)) return false;
  reserve(header, alpha, picture);

  const size_t line = rowBytes + 1;  // with the filter's number
  const size_t bandRows = std::clamp<size_t>(kBandBytes / line, 1, header.height);
  std::vector<uint8_t> above(rowBytes, 0);
  std::vector<uint8_t> band(bandRows * line);
  for (size_t top = 0; top < header.height; top += bandRows) {
    if (stop()) return false;
    noteProgress(static_cast<int32_t>(top), static_cast<int32_t>(header.height));
    const size_t rows = std::min<size_t>(bandRows, header.height - top);
    if (!readStream(&stream, band.data(), rows * line)) return false;
    const uint8_t* before = above.data();
    for (size_t y = 0; y < rows; ++y) {
      uint8_t* row = &band[y * line + 1];
      if (!unfilterPngRow(row[-1], step, rowBytes, before, row)) return false;
      if (header.bits == 8) {
        takeShallowRow(row, rowBytes, alpha, picture);
      } else {
        takeDeepRow(row, rowBytes, alpha, picture);
      }
      before = row;
    }
    std::copy_n(before, rowBytes, above.data());
  }
  return endsWhole(&stream);
}
