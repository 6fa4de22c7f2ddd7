// context_drawing: draws a preview as hosts do, on the device context that the module gives.

#pragma once

#include "hosts/substitute_host/substitute_host.h"

void drawOnContext(const HostPicture& shown, int32_t row, int32_t column, void* context);
