// palette: the colours that all pictures of the dialog share: a light, warm grey instrument with
// one accent, deep gold. Light comes from the upper left everywhere.

#pragma once

#include "resources/artwork/drawing/raster.h"

constexpr Rgb kPaper = {255, 255, 255};
constexpr Rgb kInk = {52, 50, 46};
constexpr Rgb kSoftInk = {126, 123, 116};

constexpr Rgb kPanel = {232, 231, 228};
constexpr Rgb kDeepPanel = {224, 222, 218};
constexpr Rgb kGrooveDark = {188, 186, 180};
constexpr Rgb kGrooveLight = {250, 249, 247};

constexpr Rgb kButtonFace = {222, 222, 222};  // as the dialog fills its buttons

constexpr Rgb kGold = {178, 132, 38};
constexpr Rgb kLightGold = {236, 204, 122};
constexpr Rgb kDarkGold = {108, 76, 18};
constexpr Rgb kGraphite = {62, 62, 65};
constexpr Rgb kSteel = {164, 164, 166};
constexpr Rgb kVerdigris = {74, 164, 137};
