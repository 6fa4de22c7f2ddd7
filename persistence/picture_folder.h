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

// Loads a picture (kEnvironmentName or kTextureName) by its bare name in the Windows character set;
// the name is normalised in place. While it cannot be found the user may show the folder. True when
// a picture was loaded; its path is in the settings then.
bool loadNamedPicture(SessionRecord* session, int32_t kind, char* name);
