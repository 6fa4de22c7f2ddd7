// contact_sheet: pictures of one size in rows, each with its name below.

#pragma once

#include <string>
#include <vector>

#include "hosts/picture_files/picture.h"

struct SheetCell {
  std::string name;
  HostPicture picture;  // 3 planes
};

// Ends the command when there is no font to write names with.
void checkFont();

// A picture as large as the sheet shows it, on the sheet's ground.
HostPicture cellPicture(const Picture& picture);

Picture drawSheet(const std::vector<SheetCell>& cells);
