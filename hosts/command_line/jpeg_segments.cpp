#include "hosts/command_line/jpeg_segments.h"

#include <QtEndian>
#include <cstdint>
#include <map>

constexpr uint8_t kStartOfScan = 0xDA;
constexpr uint8_t kFirstAppSegment = 0xE0;
constexpr uint8_t kProfileSegment = 0xE2;
constexpr uint8_t kCommentSegment = 0xFE;
constexpr qsizetype kLargestSegment = 65533;  // bytes besides the two of its length

static const QByteArray kProfileMark("ICC_PROFILE\0", 12);

struct JpegSegment {
  uint8_t marker;
  qsizetype start;  // of the contents, in the file
  qsizetype bytes;
};

// The segments up to and with the start of the first scan.
static std::vector<JpegSegment> readSegments(const QByteArray& file) {
  std::vector<JpegSegment> segments;
  qsizetype at = 2;
  while (at + 4 <= file.size()) {
    if (static_cast<uint8_t>(file[at]) != 0xFF) break;
    const uint8_t marker = static_cast<uint8_t>(file[at + 1]);
    if (marker == 0xFF) {  // filling
      ++at;
      continue;
    }
    const qsizetype bytes = qFromBigEndian<uint16_t>(file.cbegin() + at + 2);
    if (bytes < 2 || bytes > file.size() - at - 2) break;
    segments.push_back({marker, at + 4, bytes - 2});
    if (marker == kStartOfScan) break;
    at += 2 + bytes;
  }
  return segments;
}

bool isJpegFile(const QByteArray& file) {
  return file.startsWith("\xFF\xD8\xFF");
}

// Within the packed samples 0xFF never stands before the end marker's second byte, and small
// pictures inside the file end before the first scan.
bool jpegIsWhole(const QByteArray& file) {
  const std::vector<JpegSegment> segments = readSegments(file);
  if (segments.empty() || segments.back().marker != kStartOfScan) return false;
  return file.indexOf("\xFF\xD9", segments.back().start) >= 0;
}

QByteArray jpegProfile(const QByteArray& file) {
  std::map<int, QByteArray> parts;  // by their number; they may stand in any order
  for (const JpegSegment& segment : readSegments(file)) {
    if (segment.marker != kProfileSegment) continue;
    const QByteArray contents = file.mid(segment.start, segment.bytes);
    const qsizetype head = kProfileMark.size() + 2;
    if (!contents.startsWith(kProfileMark) || contents.size() < head) continue;
    parts[static_cast<uint8_t>(contents[kProfileMark.size()])] = contents.mid(head);
  }
  QByteArray profile;
  for (const auto& [number, part] : parts) profile += part;
  return profile;
}

static QByteArray segmentOf(uint8_t marker, const QByteArray& contents) {
  char head[4] = {'\xFF', static_cast<char>(marker), 0, 0};
  qToBigEndian(static_cast<uint16_t>(2 + contents.size()), head + 2);
  return QByteArray(head, sizeof(head)) + contents;
}

// Readers expect the first application segment at the very beginning.
static QByteArray withSegments(const QByteArray& file, const QByteArray& added) {
  qsizetype at = 2;
  const std::vector<JpegSegment> segments = readSegments(file);
  if (!segments.empty() && segments.front().marker == kFirstAppSegment) {
    at = segments.front().start + segments.front().bytes;
  }
  return file.left(at) + added + file.mid(at);
}

QByteArray jpegWithProfile(const QByteArray& file, const QByteArray& profile) {
  const qsizetype room = kLargestSegment - kProfileMark.size() - 2;
  const qsizetype count = (profile.size() + room - 1) / room;
  if (count > 255) return file;  // more than the form can hold
  QByteArray inserted;
  for (qsizetype i = 0; i < count; ++i) {
    const QByteArray part = profile.mid(i * room, room);
    const char numbers[2] = {static_cast<char>(i + 1), static_cast<char>(count)};
    inserted += segmentOf(kProfileSegment, kProfileMark + QByteArray(numbers, 2) + part);
  }
  return withSegments(file, inserted);
}

std::vector<QByteArray> jpegComments(const QByteArray& file) {
  std::vector<QByteArray> comments;
  for (const JpegSegment& segment : readSegments(file)) {
    if (segment.marker != kCommentSegment) continue;
    comments.push_back(file.mid(segment.start, segment.bytes));
  }
  return comments;
}

QByteArray jpegWithComments(const QByteArray& file, const std::vector<QByteArray>& comments) {
  QByteArray inserted;
  for (const QByteArray& comment : comments) inserted += segmentOf(kCommentSegment, comment);
  return withSegments(file, inserted);
}
