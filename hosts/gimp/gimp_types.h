// gimp_types: how the plug-in library of either GIMP names things. What differs by no more than
// this is called the same way in both.

#pragma once

#include <libgimp/gimp.h>

#if GIMP_CHECK_VERSION(2, 99, 0)
using GimpDrawableName = GimpDrawable*;
using GimpImageName = GimpImage*;
using GimpItemName = GimpItem*;
#define MORVALIS_DRAWABLE_OFFSETS gimp_drawable_get_offsets
#else
using GimpDrawableName = gint32;
using GimpImageName = gint32;
using GimpItemName = gint32;
#define MORVALIS_DRAWABLE_OFFSETS gimp_drawable_offsets
#endif
