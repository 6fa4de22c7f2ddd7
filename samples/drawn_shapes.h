// drawn_shapes: letters and ornaments built from lines and arcs, so that no font is needed.

#pragma once

#include <QImage>

// Three heavy rounded letters with a flourish below, white on black: a selection.
QImage drawLetterMask(int width, int height);

// A star in a ring on brushed steel, transparent around it and in the gaps.
QImage drawEmblem(int side);
