// randomize: a random look.

#pragma once

struct SessionRecord;

// Draws most settings anew; pictures, directions and the preview stay.
void randomizeSettings(SessionRecord* session);
