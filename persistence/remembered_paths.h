// remembered_paths: the three paths kept between runs: the folder of the user's pictures and the
// environment and texture picture files of the last confirmed dialog. Failures are silent: a run
// without its remembered pictures is still a run.

#pragma once

struct SessionRecord;

// Sets pictureFolder to what is remembered, empty when nothing is.
void readPictureFolder(SessionRecord* session);
void storePictureFolder(SessionRecord* session);

// Loads the remembered environment picture over the built-in one and turns it; nothing happens
// when none is remembered.
void restoreEnvironmentPath(SessionRecord* session);

// With texture choice 13 loads the remembered texture picture, with any other generates it.
void restoreTexturePath(SessionRecord* session);

void storeEnvironmentPath(SessionRecord* session);
void storeTexturePath(SessionRecord* session);
