#include "hosts/commands/run_notes.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"

static void tell(const std::string& text, RunNotes* notes) {
  const auto now = std::chrono::steady_clock::now();
  const double seconds = std::chrono::duration<double>(now - notes->since).count();
  char took[32];
  std::snprintf(took, sizeof(took), " (%.3f s)", seconds);
  reportNote(text + took);
  notes->since = std::chrono::steady_clock::now();
}

static std::string nameOf(const std::string& file) {
  return file == kStandardStream ? "standard input" : file;
}

static std::string beginOf(const RunNotes& notes) {
  return notes.picture.empty() ? "" : nameOf(notes.picture) + ": ";
}

// ", 12345 bytes", or nothing of a pipe.
static std::string sizeOf(const std::string& file) {
  std::error_code failed;
  if (file == kStandardStream || !std::filesystem::is_regular_file(file, failed)) return "";
  const auto bytes = std::filesystem::file_size(file, failed);
  return failed ? "" : ", " + std::to_string(bytes) + " bytes";
}

static std::string kindOf(const Picture& picture) {
  std::string text = picture.colors.planes == 1 ? "grey" : "RGB";
  if (!picture.alpha.empty()) text += " with alpha";
  return text + ", " + std::to_string(picture.sampleBits) + " bits";
}

static std::string partsIn(const PictureMetadata& metadata) {
  std::string text;
  const auto add = [&text](const char* name, size_t bytes) {
    if (bytes > 0) text += std::string(", ") + name + " of " + std::to_string(bytes) + " bytes";
  };
  add("colour profile", metadata.profile.size());
  add("EXIF", metadata.exif.size());
  add("XMP", metadata.xmp.size());
  add("IPTC", metadata.iptc.size());
  const size_t texts = metadata.texts.size() + metadata.comments.size();
  if (texts > 0) text += ", " + std::to_string(texts) + (texts == 1 ? " text" : " texts");
  if (metadata.dotsPerMeterX > 0) {
    constexpr double kInch = 0.0254;  // metres
    text += ", " + std::to_string(static_cast<int>(metadata.dotsPerMeterX * kInch + 0.5)) +
            " dots to the inch";
  }
  return text;
}

void noteLoaded(const Picture& picture, const std::string& file, RunNotes* notes) {
  if (!notes->wanted) return;
  std::string text = nameOf(file) + ": read" + sizeOf(file) + ": " +
                     std::to_string(picture.colors.width) + " x " +
                     std::to_string(picture.colors.height) + " pixels, " + kindOf(picture);
  if (!picture.converted.empty()) text += " from " + picture.converted;
  if (picture.sidesSwapped) text += ", turned as its orientation says";
  if (picture.pictureCount > 1) text += ", " + std::to_string(picture.pictureCount) + " pictures";
  tell(text + partsIn(picture.metadata), notes);
}

void noteSelection(const HostMask& mask, const std::string& source, RunNotes* notes) {
  if (!notes->wanted) return;
  const std::string name = source.empty() ? "its transparency" : source;
  if (mask.empty()) return tell(beginOf(*notes) + "selection: everything", notes);
  const auto selected = mask.size() - static_cast<size_t>(std::count(mask.begin(), mask.end(), 0));
  tell(beginOf(*notes) + "selection by " + name + ": " + std::to_string(selected) + " of " +
           std::to_string(mask.size()) + " pixels",
       notes);
}

void noteRendered(const EffectPlan& plan, const std::string& preset, RunNotes* notes) {
  if (!notes->wanted) return;
  std::string text = beginOf(*notes) + "effect: rendered";
  if (!preset.empty()) text += " by preset " + preset;
  constexpr const char* kNames[] = {"environment", "texture"};
  for (int kind = 0; kind < kPictureNames; ++kind) {
    const std::string& path = plan.found.pictures[kind].path;
    if (!path.empty()) text += std::string(", ") + kNames[kind] + " " + path;
  }
  tell(text, notes);
}

void noteSaved(const std::string& file, const std::string& kept, const std::string& dropped,
               RunNotes* notes) {
  if (!notes->wanted) return;
  std::string text =
      (file == kStandardStream ? "standard output" : file) + ": written" + sizeOf(file);
  text += "; kept " + (kept.empty() ? "pixels alone" : kept);
  if (!dropped.empty()) text += "; dropped " + dropped;
  tell(text, notes);
}
