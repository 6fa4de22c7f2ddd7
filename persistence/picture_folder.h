// picture_folder: where the user keeps environment and texture pictures, and finding a picture
// there that is known only by its name.

#pragma once

#include <cstdint>

struct SessionRecord;

// Takes the folder from a path the user has just chosen, when the path leads through a folder
// "environments and textures" and no folder is known yet.
void learnPictureFolder(SessionRecord* session, const char* path);

// Lets the user show the folder by choosing any file in it.
void findPictureFolder(SessionRecord* session);

// Loads a picture (kEnvironmentName or kTextureName) that a settings file names, by its bare name
// in the Windows character set; the name is normalised in place. It is looked for in the folder
// that is known, around the settings file, and among the pictures that came with the module; while
// it cannot be found the user may show the folder. True when a picture was loaded; its path is in
// the settings then. An empty name asks for nothing.
bool loadNamedPicture(SessionRecord* session, int32_t kind, char* name, const char* settingsFile);
