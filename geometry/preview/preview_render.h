// preview_render: runs the row machine to its end on the picture that the host has delivered for
// the preview. The height field is built over more than is shown, and kept: settings that do not
// change it cost the frame alone.
//
// At full size the result is the final render's, byte for byte, under the checkerboard: the field
// is that of the whole picture.

#pragma once

struct SessionRecord;

// Renders into the host's output buffer. A nonzero result word stops it with an alert.
void runPreview(SessionRecord* session);

// The same within the time of a drag: of a large picture the field is built around the frame only,
// which may move a sample by a little.
void runQuickPreview(SessionRecord* session);

// Frees what previews have kept. Safe to call twice.
void freePreviewRender(SessionRecord* session);
