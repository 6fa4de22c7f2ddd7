#include "hosts/command_line/gallery_command.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "hosts/command_line/child_processes.h"
#include "hosts/command_line/command_failure.h"
#include "hosts/command_line/contact_sheet.h"
#include "hosts/command_line/effect_run.h"
#include "hosts/command_line/file_access.h"
#include "hosts/command_line/interrupt.h"
#include "hosts/command_line/picture_load.h"
#include "hosts/command_line/picture_save.h"
#include "hosts/command_line/selection.h"

static bool comesBefore(const QFileInfo& a, const QFileInfo& b) {
  const int order =
      QString::compare(a.completeBaseName(), b.completeBaseName(), Qt::CaseInsensitive);
  return order != 0 ? order < 0 : a.fileName() < b.fileName();
}

static QFileInfoList presetFiles(const std::string& folder) {
  const QFileInfo info(QFile::decodeName(folder.c_str()));
  if (!info.exists()) failOnFile(folder, "there is no such folder");
  if (!info.isDir()) failOnFile(folder, "is not a folder");
  QFileInfoList files = QDir(info.filePath()).entryInfoList({"*.q9q"}, QDir::Files);
  if (files.isEmpty()) failOnFile(folder, "holds no settings files (.q9q)");
  std::sort(files.begin(), files.end(), comesBefore);
  return files;
}

// Leaves the picture under one preset in the file, small enough for the sheet.
static void renderCell(const GalleryOptions& options, uint32_t seed, const std::string& preset,
                       const QString& file) {
  EffectOptions effect;
  effect.preset = preset;
  effect.pictures = options.pictures;
  const EffectPlan plan = planEffect(effect, chooseEffect(effect), seed);
  Picture picture = loadPicture(options.image);
  Selection selection = loadSelection(options.mask, picture, options.image);
  renderEffect(plan, &picture, std::move(selection.mask), /*quiet=*/true, preset);
  if (!cellPicture(imageOf(picture, !picture.alpha.empty())).save(file, "png")) {
    failOnFile(preset, "its picture cannot be kept: there is no room for temporary files");
  }
}

// A picture or selection that fails would fail under every preset.
static void checkPicture(const GalleryOptions& options) {
  if (options.image == kStandardStream) readWholeFile(options.image, "a picture");
  runInChild([&options] {
    warnOfEmptiness(loadSelection(options.mask, loadPicture(options.image), options.image));
    return kExitDone;
  });
}

static std::vector<SheetCell> renderCells(const GalleryOptions& options, uint32_t seed, int jobs,
                                          const QFileInfoList& presets) {
  checkPicture(options);
  const QTemporaryDir folder;
  if (!folder.isValid()) {
    throw CommandFailure{kExitFailed, "temporary files: " + folder.errorString().toStdString()};
  }
  const auto cellFile = [&folder](size_t i) {
    return folder.filePath(QString::number(i) + ".png");
  };
  ChildWork work;
  for (const QFileInfo& preset : presets) work.names.push_back(preset.filePath().toStdString());
  work.jobs = jobs;
  work.quiet = options.quiet;
  work.command = [&](size_t i) {
    renderCell(options, seed, work.names[i], cellFile(i));
    return kExitDone;
  };
  const std::vector<bool> done = runInChildren(work);
  std::vector<SheetCell> cells;
  for (size_t i = 0; i < done.size(); ++i) {
    const QString name = presets[static_cast<qsizetype>(i)].completeBaseName();
    if (done[i]) cells.push_back({name, QImage(cellFile(i))});
  }
  return cells;
}

static const PictureFormat& sheetFormat(const std::string& file, int* argc, char** argv) {
  const QCoreApplication application(*argc, argv);
  const PictureFormat& format = pictureFormatOf(file);
  if (!format.holdsColors) failOnUsage(file + ": this format holds no colours");
  return format;
}

int runGalleryCommand(const GalleryOptions& options, char** argv) {
  const uint32_t seed = parseSeed(options.seed);
  const int jobs = parseJobs(options.jobs);
  int oneArgument = 1;
  const PictureFormat& format = sheetFormat(options.output, &oneArgument, argv);
  watchForInterrupts();
  const QFileInfoList presets = presetFiles(options.presets);
  checkWritable(options.output);
  // Only a program with a screen has fonts; this one needs none to be there.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  runInChild([&oneArgument, argv] {
    const QGuiApplication application(oneArgument, argv);
    checkFont();
    return kExitDone;
  });
  std::vector<SheetCell> cells;
  {
    // The renders run in child processes, which must not inherit the threads of a screen.
    const QCoreApplication application(oneArgument, argv);
    cells = renderCells(options, seed, jobs, presets);
  }
  if (cells.empty()) failOnFile(options.presets, "none of its presets can be shown");
  const QGuiApplication application(oneArgument, argv);
  savePicture(drawSheet(cells), format, options.output);
  if (!options.quiet && options.seed.empty()) {
    std::fprintf(options.output == kStandardStream ? stderr : stdout, "seed %u\n", seed);
  }
  const auto missing = presets.size() - static_cast<qsizetype>(cells.size());
  if (missing == 0) return kExitDone;
  throw CommandFailure{kExitFailed, std::to_string(missing) + " of " +
                                        std::to_string(presets.size()) +
                                        " presets are missing from the sheet"};
}
