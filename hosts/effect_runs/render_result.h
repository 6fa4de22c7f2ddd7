// render_result: how the open host's result becomes the picture's, whatever its depth.

#pragma once

#include "hosts/effect_runs/selection.h"
#include "hosts/substitute_host/substitute_host.h"

// Deep samples are mixed from the effect alone, so that the host leaves it as it is.
InPlace placeFor(const Picture& picture, const Selection& selection);

// Mixes the filtered picture of a host that does not work in place into the picture it was opened
// on: the preview of a dialog leaves traces in what it writes.
void mixResult(const Selection& selection, Picture* picture);

// Takes the filtered picture out of the host. `mask` and `whole`: of a deep picture's selection.
void takeResult(const HostMask& mask, bool whole, Picture* picture);
