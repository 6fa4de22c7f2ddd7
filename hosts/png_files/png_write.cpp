#include "hosts/png_files/png_write.h"

#include <isa-l/igzip_lib.h>
#include <zlib.h>

#include <algorithm>
#include <memory>

#include "hosts/png_files/png_chunks.h"
#include "hosts/png_files/png_rows.h"
#include "hosts/process/progress_bar.h"

constexpr size_t kBandBytes = 256 * 1024;  // of rows that are packed at a time

static void putBigEndian(uint32_t number, uint8_t* to) {
  for (int i = 0; i < 4; ++i) to[i] = static_cast<uint8_t>(number >> (24 - 8 * i));
}

static void writeChunk(const std::string& name, BytesView data, OutputFile* output) {
  constexpr size_t kStartBytes = 8;
  constexpr size_t kEndBytes = 4;
  uint8_t start[kStartBytes];
  putBigEndian(static_cast<uint32_t>(data.size), start);
  std::copy_n(name.data(), 4, start + 4);
  appendOutput({start, kStartBytes}, output);
  appendOutput(data, output);
  uint8_t end[kEndBytes];
  putBigEndian(pngChecksum(name, data), end);
  appendOutput({end, kEndBytes}, output);
}

// --- Packing --------------------------------------------------------------------------------

// One of two packers: the quick one, or zlib at a level.
struct Packer {
  bool quick;
  isal_zstream quickStream;
  FileBytes quickBuffer;
  z_stream stream;
  FileBytes packed;
};

static bool openPacker(int level, Packer* packer) {
  packer->quick = level == kQuickPacking;
  packer->packed.resize(kBandBytes);
  if (!packer->quick) {
    packer->stream = {};
    return deflateInit2(&packer->stream, level, Z_DEFLATED, 15, 9, Z_FILTERED) == Z_OK;
  }
  packer->quickBuffer.resize(ISAL_DEF_LVL1_DEFAULT);
  isal_zstream& stream = packer->quickStream;
  isal_deflate_init(&stream);
  stream.level = 1;
  stream.level_buf = packer->quickBuffer.data();
  stream.level_buf_size = static_cast<uint32_t>(packer->quickBuffer.size());
  stream.gzip_flag = IGZIP_ZLIB;
  return true;
}

// Bytes that stand in packer->packed now; false once there are no more for this band.
static bool packSome(Packer* packer, bool last, size_t* count) {
  const size_t room = packer->packed.size();
  if (packer->quick) {
    isal_zstream& stream = packer->quickStream;
    stream.next_out = packer->packed.data();
    stream.avail_out = static_cast<uint32_t>(room);
    stream.end_of_stream = last ? 1 : 0;
    isal_deflate(&stream);
    *count = room - stream.avail_out;
  } else {
    z_stream& stream = packer->stream;
    stream.next_out = packer->packed.data();
    stream.avail_out = static_cast<uInt>(room);
    deflate(&stream, last ? Z_FINISH : Z_NO_FLUSH);
    *count = room - stream.avail_out;
  }
  return *count > 0;
}

static void packBand(const FileBytes& band, bool last, Packer* packer, OutputFile* output) {
  packer->quickStream.next_in = const_cast<uint8_t*>(band.data());
  packer->quickStream.avail_in = static_cast<uint32_t>(band.size());
  packer->stream.next_in = const_cast<uint8_t*>(band.data());
  packer->stream.avail_in = static_cast<uInt>(band.size());
  for (size_t count = 0; packSome(packer, last, &count);) {
    writeChunk("IDAT", BytesView(packer->packed).part(0, count), output);
  }
}

static void closePacker(Packer* packer) {
  if (!packer->quick) deflateEnd(&packer->stream);
}

// --- Rows -----------------------------------------------------------------------------------

static uint8_t* putSample(uint16_t sample, uint8_t* to) {
  *to++ = static_cast<uint8_t>(sample >> 8);
  *to++ = static_cast<uint8_t>(sample & 255);
  return to;
}

static uint8_t* putSample(uint8_t sample, uint8_t* to) {
  *to++ = sample;
  return to;
}

template <typename Sample>
static void putRow(const Sample* colors, const Sample* alpha, int32_t planes, int32_t width,
                   uint8_t* to) {
  for (int32_t x = 0; x < width; ++x) {
    for (int32_t plane = 0; plane < planes; ++plane) to = putSample(*colors++, to);
    if (alpha != nullptr) to = putSample(*alpha++, to);
  }
}

// Row y as it stands in the file; samples of two bytes begin with the larger.
static const uint8_t* fileRow(const Picture& picture, int32_t y, FileBytes* room) {
  const HostPicture& colors = picture.colors;
  const size_t pixel = static_cast<size_t>(y) * static_cast<size_t>(colors.width);
  const size_t sample = pixel * static_cast<size_t>(colors.planes);
  const bool alpha = !picture.alpha.empty();
  if (!picture.deep.colors.empty()) {
    putRow(&picture.deep.colors[sample], alpha ? &picture.deep.alpha[pixel] : nullptr,
           colors.planes, colors.width, room->data());
    return room->data();
  }
  if (!alpha) return &colors.samples[sample];
  putRow(&colors.samples[sample], &picture.alpha[pixel], colors.planes, colors.width, room->data());
  return room->data();
}

static void writeRows(const Picture& picture, size_t step, Packer* packer, OutputFile* output) {
  const size_t rowBytes = step * static_cast<size_t>(picture.colors.width);
  FileBytes rooms[2] = {FileBytes(rowBytes), FileBytes(rowBytes)};
  const FileBytes nothing(rowBytes);
  const uint8_t* above = nothing.data();
  PngFilterRows rows;
  FileBytes band;
  band.reserve(kBandBytes + rowBytes + 1);
  for (int32_t y = 0; y < picture.colors.height; ++y) {
    const uint8_t* row = fileRow(picture, y, &rooms[y % 2]);
    const int filter = filterPngRow(step, rowBytes, above, row, &rows);
    band.push_back(static_cast<uint8_t>(filter));
    band.insert(band.end(), rows.candidates[filter].begin(), rows.candidates[filter].end());
    above = row;
    const bool last = y + 1 == picture.colors.height;
    if (band.size() < kBandBytes && !last) continue;
    noteProgress(y, picture.colors.height);
    packBand(band, last, packer, output);
    band.clear();
  }
}

void writePng(const Picture& picture, int level, OutputFile* output) {
  const HostPicture& colors = picture.colors;
  const bool alpha = !picture.alpha.empty();
  const bool deep = !picture.deep.colors.empty();
  appendOutput({reinterpret_cast<const uint8_t*>(kPngSignature), kPngSignatureBytes}, output);
  uint8_t header[13] = {};  // its last three: the usual packing, filters and order
  putBigEndian(static_cast<uint32_t>(colors.width), header);
  putBigEndian(static_cast<uint32_t>(colors.height), header + 4);
  header[8] = deep ? 16 : 8;
  header[9] = static_cast<uint8_t>((colors.planes == 3 ? 2 : 0) + (alpha ? 4 : 0));
  writeChunk("IHDR", {header, sizeof(header)}, output);
  for (const PngPart& part : pngParts(picture.metadata)) writeChunk(part.name, part.data, output);

  const auto packer = std::make_unique<Packer>();
  if (!openPacker(level, packer.get())) throw std::bad_alloc();
  const size_t planes = static_cast<size_t>(colors.planes + (alpha ? 1 : 0));
  writeRows(picture, planes * (deep ? 2 : 1), packer.get(), output);
  closePacker(packer.get());
  writeChunk("IEND", {}, output);
}
