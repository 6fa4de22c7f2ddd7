// exif_block: what cameras note in a picture file, as one block that begins with its byte order;
// and the block that holds captions and keywords (IPTC).

#pragma once

#include "hosts/process/file_bytes.h"

// Without the name that stands before it in JPEG files.
FileBytes exifWithoutName(BytesView block);

// How the picture is to be turned, 1 to 8; 1 when it does not say.
int exifOrientation(BytesView exif);

// The block for a picture that stands upright: it says so, and has no small picture.
// `sidesSwapped`: what it says of width and height changes places.
FileBytes uprightExif(BytesView exif, bool sidesSwapped);

// The same of XMP, which may say so too.
FileBytes uprightXmp(BytesView xmp);

// Dots per metre across and down; false when the block does not say.
bool exifResolution(BytesView exif, double* x, double* y);

// Whether the block gives numbers for a resolution, but says that they have no unit.
bool exifLacksUnit(BytesView exif);

// The IPTC records out of a block of the kind that JPEG files hold, which stand there among others;
// of records alone, themselves. Empty when there are none.
FileBytes iptcRecords(BytesView block);

// Such a block of the records alone, without the name before it.
FileBytes photoshopBlock(BytesView iptc);
