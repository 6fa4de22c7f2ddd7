#include "hosts/command_line/png_chunks.h"

#include <QtEndian>
#include <algorithm>
#include <array>

constexpr qsizetype kSignatureBytes = 8;
constexpr qsizetype kColourTypeOffset = 25;  // in the file; the header chunk always comes first
constexpr uint8_t kColourUsed = 2;           // bit of the colour type
constexpr char kGreyAndAlphaType = 4;
constexpr qsizetype kLengthBytes = 4;  // what qCompress puts before its stream
constexpr size_t kDataPieceBytes = 1 << 20;

struct PngChunk {
  QByteArray name;
  QByteArray data;
};

static std::vector<PngChunk> readChunks(const QByteArray& file) {
  std::vector<PngChunk> chunks;
  qsizetype at = kSignatureBytes;
  while (at + 12 <= file.size()) {
    const qsizetype bytes = qFromBigEndian<uint32_t>(file.cbegin() + at);
    if (bytes > file.size() - at - 12) break;
    chunks.push_back({file.mid(at + 4, 4), file.mid(at + 8, bytes)});
    at += 12 + bytes;
  }
  return chunks;
}

static std::array<uint32_t, 256> makeChecksumTable() {
  std::array<uint32_t, 256> table = {};
  for (uint32_t i = 0; i < table.size(); ++i) {
    uint32_t value = i;
    for (int bit = 0; bit < 8; ++bit)
      value = (value & 1) != 0 ? 0xEDB88320U ^ value >> 1 : value >> 1;
    table[i] = value;
  }
  return table;
}

static uint32_t checksum(const QByteArray& bytes) {
  static const std::array<uint32_t, 256> table = makeChecksumTable();
  uint32_t value = 0xFFFFFFFFU;
  for (const char byte : bytes)
    value = table[(value ^ static_cast<uint8_t>(byte)) & 255] ^ value >> 8;
  return ~value;
}

static void appendNumber(QByteArray* file, uint32_t number) {
  char bytes[4];
  qToBigEndian(number, bytes);
  file->append(bytes, sizeof(bytes));
}

static QByteArray writeChunks(const QByteArray& original, const std::vector<PngChunk>& chunks) {
  QByteArray file = original.left(kSignatureBytes);
  for (const PngChunk& chunk : chunks) {
    const QByteArray checked = chunk.name + chunk.data;
    appendNumber(&file, static_cast<uint32_t>(chunk.data.size()));
    file += checked;
    appendNumber(&file, checksum(checked));
  }
  return file;
}

bool isPngFile(const QByteArray& file) {
  return file.startsWith("\x89PNG\r\n\x1a\n") && file.size() > kColourTypeOffset;
}

bool pngIsGrey(const QByteArray& file) {
  return (file[kColourTypeOffset] & kColourUsed) == 0;
}

QByteArray pngProfile(const QByteArray& file) {
  for (const PngChunk& chunk : readChunks(file)) {
    if (chunk.name == "IDAT") break;
    if (chunk.name != "iCCP") continue;
    const qsizetype stream = chunk.data.indexOf('\0') + 2;  // behind the name and the method
    if (stream < 2) break;
    // The length is a first guess that qUncompress corrects.
    return qUncompress(QByteArray("\0\0\x10\0", kLengthBytes) + chunk.data.mid(stream));
  }
  return QByteArray();
}

QByteArray pngWithProfile(const QByteArray& file, const QByteArray& profile) {
  std::vector<PngChunk> chunks = readChunks(file);
  std::erase_if(chunks, [](const PngChunk& chunk) {
    return chunk.name == "iCCP" || chunk.name == "sRGB" || chunk.name == "gAMA" ||
           chunk.name == "cHRM";
  });
  const QByteArray stream = qCompress(profile).mid(kLengthBytes);
  const QByteArray nameAndMethod("ICC Profile\0\0", 13);
  chunks.insert(chunks.begin() + 1, {"iCCP", nameAndMethod + stream});
  return writeChunks(file, chunks);
}

// Rows as differences to the pixel on the left, which packs well and needs no second row.
static QByteArray greyAndAlphaRows(const std::vector<uint8_t>& grey,
                                   const std::vector<uint8_t>& alpha, size_t width) {
  constexpr char kLeftDifference = 1;
  QByteArray rows;
  rows.reserve(static_cast<qsizetype>(2 * grey.size() + grey.size() / width));
  for (size_t i = 0; i < grey.size(); ++i) {
    const bool first = i % width == 0;
    if (first) rows += kLeftDifference;
    rows += static_cast<char>(grey[i] - (first ? 0 : grey[i - 1]));
    rows += static_cast<char>(alpha[i] - (first ? 0 : alpha[i - 1]));
  }
  return rows;
}

QByteArray pngWithGreyAndAlpha(const QByteArray& greyFile, const std::vector<uint8_t>& grey,
                               const std::vector<uint8_t>& alpha) {
  std::vector<PngChunk> chunks = readChunks(greyFile);
  const uint32_t width = qFromBigEndian<uint32_t>(chunks.front().data.cbegin());
  chunks.front().data[9] = kGreyAndAlphaType;
  const auto isData = [](const PngChunk& chunk) { return chunk.name == "IDAT"; };
  const auto data = std::find_if(chunks.begin(), chunks.end(), isData) - chunks.begin();
  std::erase_if(chunks, isData);

  const QByteArray stream = qCompress(greyAndAlphaRows(grey, alpha, width)).mid(kLengthBytes);
  std::vector<PngChunk> pieces;
  for (qsizetype at = 0; at < stream.size(); at += kDataPieceBytes) {
    pieces.push_back({"IDAT", stream.mid(at, kDataPieceBytes)});
  }
  chunks.insert(chunks.begin() + data, pieces.begin(), pieces.end());
  return writeChunks(greyFile, chunks);
}
