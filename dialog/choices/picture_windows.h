// picture_windows: the texture sample and the environment thumbnail, and opening a picture for
// either.

#pragma once

#include <cstdint>

#include "platform/window.h"

struct DialogState;

void drawTextureSample(DialogState* dialog, bool withFrame);
void drawEnvironmentThumbnail(DialogState* dialog, const ItemState& state);

// A mouse move while the sample holds the capture.
void dragTexture(DialogState* dialog);

// Moves the texture by texels to the right and down.
void stepTexture(DialogState* dialog, int32_t right, int32_t down);

// The user chooses a picture file; true when one was loaded. A failure is told and changes nothing.
bool openEnvironmentPicture(DialogState* dialog);
bool openTexturePicture(DialogState* dialog);
