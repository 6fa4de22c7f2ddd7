// png_chunks: the few things about a PNG file that the picture library does not pass on: whether it
// is grey, its colour profile as it stands, and grey with alpha as a form of its own.

#pragma once

#include <QByteArray>
#include <cstdint>
#include <vector>

bool isPngFile(const QByteArray& file);

// Whether the header says that the samples are grey, with or without alpha.
bool pngIsGrey(const QByteArray& file);

// The embedded colour profile; empty when there is none.
QByteArray pngProfile(const QByteArray& file);

// The file with this profile in place of any other statement about its colours.
QByteArray pngWithProfile(const QByteArray& file, const QByteArray& profile);

// A grey 8-bit file turned into one of grey and alpha with the same side lengths, keeping all that
// is said about the picture. Both planes are rows from the top, without padding.
QByteArray pngWithGreyAndAlpha(const QByteArray& greyFile, const std::vector<uint8_t>& grey,
                               const std::vector<uint8_t>& alpha);
