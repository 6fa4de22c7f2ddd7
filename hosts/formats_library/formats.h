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

// Whether as many threads can be started as the coders of HEIC and AVIF take, which wait for ever
// for those that they do not get.
bool coderThreadsStart();
constexpr char kTooFewThreads[] = "this system lets it start too few threads for this format";

// The first line of what the picture library says went wrong, which it forgets.
std::string takeReason();

std::string loadFormat(BytesView file, int32_t number, RefuseSides refuse, bool (*stop)(),
                       Picture* picture);
std::string convertAll(BytesView file, const PictureFormat& format, const SaveChoices& choices,
                       RefuseSides refuse, bool (*stop)(), const ChangePicture& change,
                       FileBytes* result);
std::string saveFormat(const Picture& picture, const PictureFormat& format,
                       const SaveChoices& choices, bool (*stop)(), FileBytes* file);
void tellProgress(void (*tell)(int32_t done, int32_t total));
std::string resizePicture(const HostPicture& from, int32_t width, int32_t height, HostPicture* to);
std::string drawText(const std::string& text, int32_t letterPixels, DrawnText* drawn);

// --- Steps of these -------------------------------------------------------------------------

constexpr char kFrameTimes[] = "delay";  // what animations say, in the picture library's words
constexpr char kFrameLoops[] = "loop";

// Pictures of the file from `first` on, counted from 0, under each other; all that are left with a
// count of -1. Null when that fails; the loader stays empty when nobody knows the file.
VipsImage* openPages(BytesView file, int first, int count, std::string* loader);

// What was opened, with all that is said about it.
bool takePicture(VipsRef* held, BytesView file, Picture* picture);
std::string loadFailure(bool (*stop)());

// Whether a TIFF file holds what a camera notes, which its reader leaves out.
bool holdsCameraNotes(BytesView file);

FileBytes webpWithoutExif(BytesView file);

// Whether a GIF file ends within a block; its reader would take what there is for all. One that
// lacks nothing but its last byte is let pass, as everywhere.
bool gifIsCutOff(BytesView file);

VipsInterpretation colorsOf(const Picture& picture);

// Colours and alpha beside each other, as the picture library wants them.
template <typename Sample>
std::vector<Sample> interleaved(const std::vector<Sample>& colors, const std::vector<Sample>& alpha,
                                int32_t planes) {
  std::vector<Sample> pixels;
  pixels.reserve(colors.size() + alpha.size());
  for (size_t i = 0; i < alpha.size(); ++i) {
    const auto color = colors.begin() + static_cast<ptrdiff_t>(i) * planes;
    pixels.insert(pixels.end(), color, color + planes);
    pixels.push_back(alpha[i]);
  }
  return pixels;
}

// To a file of the format, whatever the image is made by.
std::string encodeImage(VipsImage* image, const PictureFormat& format, const SaveChoices& choices,
                        bool (*stop)(), FileBytes* file);

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
