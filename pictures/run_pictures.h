// run_pictures: the two picture surfaces of a run, from Start to its end.

#pragma once

struct SessionRecord;

// Each creates its surface with the built-in picture, then brings back what is remembered or
// generates what is chosen. Without memory the settings field stays null.
void createBuiltInEnvironment(SessionRecord* session);
void createBuiltInTexture(SessionRecord* session);
