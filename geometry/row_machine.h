// row_machine: every render is one fixed sequence of row passes, advanced one row at a time.
//
//   stamp -> border -> smooth forward -> smooth backward -> profile and relief -> shade
//
// The first two need the selection from the host, the next three nothing, the last one a row of the
// picture. The final render steps as the host delivers rows; the preview
// (preview/preview_render) runs to the end at once.

#pragma once

struct SessionRecord;

// One row of the current pass. In the final render reports progress before it and asks the host's
// abort test after it; an abort sets the result word to kUserInformed.
void step(SessionRecord* session);

// Starts the pass that follows the smoothing, on the field as it is.
void enterProfile(SessionRecord* session);

// Starts the shading pass on the height field as it is.
void enterShading(SessionRecord* session);
