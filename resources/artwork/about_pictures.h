// about_pictures: the pictures of the about box, all on white.

#pragma once

#include <string>

#include "resources/artwork/drawing/raster.h"

Picture drawAboutTitle();                              // 172 x 90, the name in gold
Picture drawAboutShow();                               // 262 x 152, what the effect makes of shapes
Picture drawAboutVersion(const std::string& version);  // 110 x 14
Picture drawAboutMark();                               // 18 x 18
