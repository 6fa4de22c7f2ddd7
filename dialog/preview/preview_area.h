// preview_area: the rendered preview, its zoom and its pan.

#pragma once

#include <cstdint>

#include "services/rectangle.h"

struct DialogState;

// Fits the preview frame to the area and the filter rectangle, and the factor to the frame.
void setPreviewFrame(DialogState* dialog);
int32_t previewFactor(const DialogState* dialog);

// First preview image and render; without one the dialog works without a preview.
void startPreview(DialogState* dialog);

// Draws what stands in the host's output buffer, centred; with `erase` on white.
void drawPreview(DialogState* dialog, bool erase);

// Renders with the present settings and shows the result.
void renderPreview(DialogState* dialog);

// The same without telling the user to wait: another one may follow right away.
void renderPreviewAtOnce(DialogState* dialog);

// One step in or out, or to 100 %; each renders anew whatever "Auto preview" says.
void zoomIn(DialogState* dialog);
void zoomOut(DialogState* dialog);
void zoomToFull(DialogState* dialog);

// Which zoom buttons are enabled.
void updateZoomButtons(DialogState* dialog);

// A mouse move while the preview holds the capture.
void panPreview(DialogState* dialog);

// The release that ends it; a pan is rendered whatever "Auto preview" says, as zooming is.
void finishPan(DialogState* dialog);

// Shows the part where the settings stand again.
void movePreviewBack(DialogState* dialog);

// Moves what is shown by steps to the right and down, or, with `end`, as far as it goes that way.
void stepPan(DialogState* dialog, int32_t right, int32_t down, bool end);

// The untouched picture in place of what the preview shows, and that back again as it was. Whatever
// renders or moves the preview forgets it.
void showSource(DialogState* dialog);
void hideSource(DialogState* dialog);
void forgetSource(DialogState* dialog);

// The origin kept inside the picture at a scale.
void clampOrigin(DialogState* dialog, int32_t scale);
