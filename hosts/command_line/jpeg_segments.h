// jpeg_segments: what the picture library does not look at or pass on in a JPEG file.

#pragma once

#include <QByteArray>

bool isJpegFile(const QByteArray& file);

// Whether the end marker is there. Of a cut-off file the library delivers what it has.
bool jpegIsWhole(const QByteArray& file);

// The embedded colour profile, put together from its segments; empty when there is none.
QByteArray jpegProfile(const QByteArray& file);

// A file without a profile, with this one added.
QByteArray jpegWithProfile(const QByteArray& file, const QByteArray& profile);
