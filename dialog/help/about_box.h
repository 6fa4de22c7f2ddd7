// about_box: a small dialog made only of pictures.

#pragma once

// Shows it modally, owned by a window (null: no owner).
void showAboutBox(void* ownerWindow);
