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

// The user chooses a picture file; true when one was chosen, loaded or not.
bool openEnvironmentPicture(DialogState* dialog);
bool openTexturePicture(DialogState* dialog);
