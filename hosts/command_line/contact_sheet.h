// contact_sheet: pictures of one size in rows, each with its name below.

#pragma once

#include <QImage>
#include <QString>
#include <vector>

#include "hosts/command_line/picture.h"

struct SheetCell {
  QString name;
  QImage picture;
};

// Ends the command when there is no font to write names with.
void checkFont();

// A picture as large as the sheet shows it.
QImage cellPicture(const QImage& picture);

Picture drawSheet(const std::vector<SheetCell>& cells);
