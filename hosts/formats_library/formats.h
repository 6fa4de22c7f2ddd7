// formats: the procedures behind the library's door; see hosts/picture_files/formats_library.h.

#pragma once

#include <vips/vips.h>

#include <string>

#include "hosts/picture_files/formats_library.h"

// A vips object that goes with its scope.
struct VipsRef {
  VipsRef() = default;
  explicit VipsRef(VipsImage* held) : image(held) {
  }
  ~VipsRef() {
    if (image != nullptr) g_object_unref(image);
  }
  VipsRef(const VipsRef&) = delete;
  VipsRef& operator=(const VipsRef&) = delete;

  // Takes another one, which a procedure has made of this one.
  void replace(VipsImage* other) {
    if (image != nullptr) g_object_unref(image);
    image = other;
  }

  VipsImage* image = nullptr;
};

bool moreFormatsWanted();
void loadPlugIn(const char* name);

// The first line of what the picture library says went wrong, which it forgets.
std::string takeReason();

std::string loadFormat(BytesView file, std::string (*refuse)(int64_t, int64_t), bool (*stop)(),
                       Picture* picture);
std::string saveFormat(const Picture& picture, const PictureFormat& format,
                       const SaveChoices& choices, bool (*stop)(), FileBytes* file);
void tellProgress(void (*tell)(int32_t done, int32_t total));
std::string resizePicture(const HostPicture& from, int32_t width, int32_t height, HostPicture* to);
std::string drawText(const std::string& text, int32_t letterPixels, DrawnText* drawn);

// What the picture library has found besides the pixels.
void takeMetadata(VipsImage* image, BytesView file, bool turned, PictureMetadata* metadata);
void giveMetadata(const PictureMetadata& metadata, VipsImage* image);

// Whether a TIFF file has a directory whose entries name more than the file holds.
bool namesTooMuch(BytesView file);

// Lets `stop` end whatever the image is made by.
void watchStop(VipsImage* image, bool (*stop)());

// The parts of a JPEG file that stand before its pixels.
std::vector<std::string> jpegComments(BytesView file);
FileBytes jpegWithMetadata(const FileBytes& file, const PictureMetadata& metadata);
