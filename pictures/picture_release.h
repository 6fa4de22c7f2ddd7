// picture_release: gives back the picture surfaces of a run.

#pragma once

struct SessionRecord;

// Frees both surfaces and empties the settings' fields. Safe to call twice, and while the host
// holds no settings.
void releasePictures(SessionRecord* session);
