#include "platform/choosers.h"

#include <QApplication>
#include <QFileDialog>
#include <cstring>

#include "platform/desktop/session_state.h"

// Without windows nobody can choose: it is as if the user had cancelled.
static bool runChooser(const FileChooser& chooser, QFileDialog::AcceptMode mode,
                       QFileDialog::FileMode files, char* path, int32_t bytes) {
  if (bytes <= 0) return false;
  path[0] = '\0';
  if (!programHasWindows()) return false;
  try {
    QFileDialog dialog(QApplication::activeWindow(), QString::fromUtf8(chooser.title));
    dialog.setAcceptMode(mode);
    dialog.setFileMode(files);
    dialog.setNameFilter(QString::fromUtf8(chooser.filterName));
    dialog.setDefaultSuffix(QString::fromUtf8(chooser.defaultExtension));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return false;
    const QByteArray chosen = dialog.selectedFiles().constFirst().toUtf8();
    if (chosen.size() >= bytes) return false;
    std::memcpy(path, chosen.constData(), static_cast<size_t>(chosen.size()) + 1);
    return true;
  } catch (...) {
    return false;  // out of memory
  }
}

bool choosePlatformFileToOpen(const FileChooser& chooser, char* path, int32_t bytes) {
  return runChooser(chooser, QFileDialog::AcceptOpen, QFileDialog::ExistingFile, path, bytes);
}

bool choosePlatformFileToSave(const FileChooser& chooser, char* path, int32_t bytes) {
  return runChooser(chooser, QFileDialog::AcceptSave, QFileDialog::AnyFile, path, bytes);
}
