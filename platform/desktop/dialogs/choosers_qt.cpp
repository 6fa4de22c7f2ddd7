#include "platform/choosers.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <cstring>

#include "platform/desktop/session_state.h"
#include "platform/unix/program_session.h"

// Without windows nobody can choose: it is as if the user had cancelled.
static ChooserAnswer runChooser(const FileChooser& chooser, QFileDialog::AcceptMode mode,
                                QFileDialog::FileMode files, char* path, int32_t bytes) {
  if (bytes <= 0) return ChooserAnswer::cancelled;
  path[0] = '\0';
  if (!programHasWindows()) return ChooserAnswer::cancelled;
  try {
    QFileDialog dialog(QApplication::activeWindow(), QString::fromUtf8(chooser.title));
    dialog.setAcceptMode(mode);
    dialog.setFileMode(files);
    const QString more = QString::fromUtf8(morePicturePatterns());
    const bool ofPictures = std::strcmp(chooser.pattern, "*.bmp") == 0 && !more.isEmpty();
    dialog.setNameFilter(ofPictures ? "Pictures (" + more + ")"
                                    : QString::fromUtf8(chooser.filterName));
    dialog.setDefaultSuffix(QString::fromUtf8(chooser.defaultExtension));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
      return ChooserAnswer::cancelled;
    }
    const QByteArray chosen = dialog.selectedFiles().constFirst().toUtf8();
    if (chosen.size() >= bytes) return ChooserAnswer::tooLong;
    std::memcpy(path, chosen.constData(), static_cast<size_t>(chosen.size()) + 1);
    return ChooserAnswer::chosen;
  } catch (...) {
    return ChooserAnswer::cancelled;  // out of memory
  }
}

ChooserAnswer choosePlatformFileToOpen(const FileChooser& chooser, char* path, int32_t bytes) {
  return runChooser(chooser, QFileDialog::AcceptOpen, QFileDialog::ExistingFile, path, bytes);
}

ChooserAnswer choosePlatformFileToSave(const FileChooser& chooser, char* path, int32_t bytes) {
  return runChooser(chooser, QFileDialog::AcceptSave, QFileDialog::AnyFile, path, bytes);
}

static_assert(kCustomColors == 16, "as many as the chooser offers");

static void putColor(const QColor& color, uint8_t rgb[3]) {
  rgb[0] = static_cast<uint8_t>(color.red());
  rgb[1] = static_cast<uint8_t>(color.green());
  rgb[2] = static_cast<uint8_t>(color.blue());
}

static QColor takeColor(const uint8_t rgb[3]) {
  return QColor(rgb[0], rgb[1], rgb[2]);
}

bool choosePlatformColor(uint8_t color[3], uint8_t customColors[kCustomColors][3]) {
  if (!programHasWindows()) return false;
  try {
    for (int i = 0; i < kCustomColors; ++i) {
      QColorDialog::setCustomColor(i, takeColor(customColors[i]));
    }
    QColorDialog dialog(takeColor(color), QApplication::activeWindow());
    if (dialog.exec() != QDialog::Accepted) return false;
    putColor(dialog.selectedColor(), color);
    for (int i = 0; i < kCustomColors; ++i) {
      putColor(QColorDialog::customColor(i), customColors[i]);
    }
    return true;
  } catch (...) {
    return false;  // out of memory
  }
}
