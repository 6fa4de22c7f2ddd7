// bitmap_file_check: what the decoder does not look at in a Windows bitmap file. It fills the rows
// that a cut-off file lacks with nothing, and reports success.

#pragma once

#include <QByteArray>

// Whether the file begins as a Windows bitmap does.
bool isBitmapFile(const QByteArray& file);

// Whether every row that the header promises is there. Compressed rows are not counted: true.
bool bitmapFileIsWhole(const QByteArray& file);
