// height_field: from the selection to a value per cell that says how near the outside is: 3000 on
// and outside the edge, falling to 0 at the radius inside it. Four row passes, each on currentRow:
//
// stampRow           every unselected pixel next to a selected one stamps a cone, larger wins
// fillBorderRow      marks what is outside, and what is only partly selected
// smoothForwardRow   3 x 3 smoothing from the top left
// smoothBackwardRow  the same from the bottom right
//
// No pass allocates; each does nothing without its buffers.

#pragma once

struct RenderState;
struct SessionRecord;

void clearField(RenderState* render);            // as the first stamp needs it
void stampRow(SessionRecord* session);           // image rows -1 to renderHeight
void fillBorderRow(SessionRecord* session);      // field rows 0 to renderHeight + 1
void smoothForwardRow(SessionRecord* session);   // field rows 0 to renderHeight
void smoothBackwardRow(SessionRecord* session);  // field rows renderHeight down to 0
