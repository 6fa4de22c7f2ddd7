// drawn_shapes: letters and ornaments built from lines and arcs, so that no font is needed.

#pragma once

#include <QImage>

// Three heavy rounded letters with a flourish below, white on black: a selection.
QImage drawLetterMask(int width, int height);

// Thin slanted letters, white on black, on 240 x 90 pixels or so many times as many.
QImage drawSlantedMask(int times);

// A star in a ring on brushed steel, transparent around it and in the gaps.
QImage drawEmblem(int side);
