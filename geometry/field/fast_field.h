// fast_field: the height field of height_field.h's stamps and border fill, to the byte, without
// stamps. It takes the place of these two passes, step by step, in the row machine.
//
// The field is a maximum. What the border fill leaves of the stamps are the cells of mask 255. With
// C(t, w) the cone by its two distances, a source (an unselected pixel whose neighbour toward the
// cell, along a row or a column, has a mask m > 0) gives a cell t pixels along that axis and w
// across it
//     v(t, m, w) = ((255 - m) C(t - 1, w) + m C(t, w)) >> 8,   1 <= t <= R + 1, |w| <= R.
// The stamps also reach cells beside and behind their source. There they give less than
// (255 C(|t|, w)) >> 8, and such a cell has a nearer unselected pixel that gives it at least that.
//
// The nearest source suffices. The cone falls with distance, so
// v(t, m, w) >= (255 C(t, w)) >> 8 >= v(t', m', w) for t' > t, and within one t it falls as m
// grows. Among the sources of one row or column only the nearest on either side can win, and of
// these two the one with the lesser code 256 t + m, at every w. An unselected pixel gives
// nothing along its own axis, but where it has the code 255 (t = 0, m = 255) the other axis reaches
// (255 C(0, w)) >> 8 at least. Only the first scan leans on that to leave codes out: if both did,
// two codes of the same value could each be left out for the other.
//
// So in phase 0 each cell of the field takes the code for its column, downward; in phase 1 rows are
// scanned from the last to the first, which adds the upward distance and leaves the best of all
// columns; then strips of columns are scanned down for the best of all rows. Where no pixel is
// partly selected the first scan gives the exact squared distance, and a table the final value.
// vector/field/cone_lanes.h tells which codes need no look.
//
// The scans read a copy of the mask, one byte a pixel. Should the host deliver a row other than it
// did before, or none, the answer is false and the render starts over with stamps.

#pragma once

struct SessionRecord;

// At set-up: takes the memory; afterwards render->fastField.inUse tells whether this render goes
// without stamps.
void prepareFastField(SessionRecord* session);

// One step each: image rows -1 to renderHeight; field rows 0 to renderHeight + 1. False: see above.
bool walkFieldRow(SessionRecord* session);
bool scanFieldRow(SessionRecord* session);

// Puts the field and the kernels back to where stamps may begin.
void giveUpFastField(SessionRecord* session);

// Frees what prepareFastField took. Safe to call twice.
void freeFastField(SessionRecord* session);
