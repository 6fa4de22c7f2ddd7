// jpeg_segments: what the picture library does not look at or pass on in a JPEG file.

#pragma once

#include <QByteArray>
#include <vector>

bool isJpegFile(const QByteArray& file);

// Whether the end marker is there. Of a cut-off file the library delivers what it has.
bool jpegIsWhole(const QByteArray& file);

// The embedded colour profile, put together from its segments; empty when there is none.
QByteArray jpegProfile(const QByteArray& file);

// A file without a profile, with this one added.
QByteArray jpegWithProfile(const QByteArray& file, const QByteArray& profile);

// The comments as they stand in the file, and a file with these added. The library takes and writes
// them as pairs of key and value only.
std::vector<QByteArray> jpegComments(const QByteArray& file);
QByteArray jpegWithComments(const QByteArray& file, const std::vector<QByteArray>& comments);
