#include "hosts/picture_files/picture_save.h"

#include <algorithm>

#include "hosts/picture_files/exif_block.h"
#include "hosts/picture_files/formats_library.h"
#include "hosts/picture_files/picture_load.h"
#include "hosts/png_files/png_write.h"
#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"
#include "hosts/process/interrupt.h"
#include "hosts/process/libraries/library_guard.h"
#include "hosts/small_formats/small_formats.h"

// A comment of the form "key: value" is such a text of another format.
static PictureText textOfComment(const std::string& comment) {
  const size_t colon = comment.find(": ");
  const std::string key = comment.substr(0, colon);
  const bool named = colon != std::string::npos && colon > 0 && colon < 80 &&
                     key.find_first_of("\n\r") == std::string::npos;
  return named ? PictureText{key, comment.substr(colon + 2), "", ""}
               : PictureText{"Comment", comment, "", ""};
}

// Nothing but pixels where that is wanted. What the format has no place for goes; words find the
// place that it has for them.
static void fitToFormat(const PictureFormat& format, bool strip, Picture* picture) {
  PictureMetadata& metadata = picture->metadata;
  if (strip) metadata = {};
  // One that does not fit would make readers refuse the file.
  if (!format.profile || !profileFits(format, *picture)) metadata.profile.clear();
  // Its numbers would become a TIFF file's resolution.
  if (!format.exif && exifLacksUnit(metadata.exif)) metadata.exif.clear();
  if (!format.alpha) {
    picture->alpha.clear();
    picture->deep.alpha.clear();
  }
  if (!format.depth) picture->deep = {};
  if (format.kind == FormatKind::jpeg) {
    for (const PictureText& text : metadata.texts) {
      metadata.comments.push_back(text.key == "Comment" ? text.text : text.key + ": " + text.text);
    }
  } else if (metadata.texts.empty()) {
    for (const std::string& comment : metadata.comments) {
      metadata.texts.push_back(textOfComment(comment));
    }
  }
}

// Under the guard nothing waits for those who read the result.
static FileBytes coded(const Picture& picture, const PictureFormat& format,
                       const SaveChoices& choices, const std::string& file) {
  FileBytes contents;
  const FormatsLibrary& library = formatsLibrary();
  const LibraryGuard guard;
  const std::string reason = library.save(picture, format, choices, interrupted, &contents);
  stopIfInterrupted();
  if (!reason.empty()) failOnFile(file, "cannot be written: " + reason);
  return contents;
}

void savePicture(Picture picture, const PictureFormat& format, const SaveChoices& choices,
                 const std::string& file) {
  fitToFormat(format, choices.strip, &picture);
  OutputFile output;
  openOutput(file, &output);
  switch (format.kind) {
    case FormatKind::png:
      writePng(picture, choices.compression < 0 ? kQuickPacking : choices.compression, &output);
      break;
    case FormatKind::bmp:
      writeBitmap(picture, &output);
      break;
    case FormatKind::pnm:
      writePortableMap(picture, &output);
      break;
    default:
      appendOutput(coded(picture, format, choices, file), &output);
  }
  finishOutput(&output);
}

void convertPictures(const FileBytes& contents, const std::string& image,
                     const PictureFormat& format, const SaveChoices& choices,
                     const ChangePicture& change, const std::string& file) {
  const ChangePicture changeAndFit = [&](int32_t number, Picture* picture) {
    standNotesUpright(picture);
    change(number, picture);
    fitToFormat(format, choices.strip, picture);
  };
  FileBytes result;
  {
    const FormatsLibrary& library = formatsLibrary();
    const LibraryGuard guard;
    const std::string reason = library.convertAll(contents, format, choices, refuseSides,
                                                  interrupted, changeAndFit, &result);
    stopIfInterrupted();
    if (!reason.empty()) failOnFile(image, reason);
  }
  writeWholeFile(file, result);
}
