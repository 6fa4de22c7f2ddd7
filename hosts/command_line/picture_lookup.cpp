#include "hosts/command_line/picture_lookup.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cstdio>

#include "hosts/command_line/preset_file.h"
#include "persistence/path_parts.h"

constexpr char kUsualName[] = "environments and textures";

std::string usualPictureFolder(const std::string& presetFile) {
  const QFileInfo preset(QFile::decodeName(presetFile.c_str()));
  const QString path = QDir::cleanPath(preset.absoluteFilePath());
  const QString marker = QString("/%1/").arg(kUsualName);
  const qsizetype found = path.indexOf(marker);
  if (found >= 0) return path.left(found + marker.size() - 1).toStdString();
  return QFileInfo(path).dir().filePath(kUsualName).toStdString();
}

// Some systems take letters with accents apart in names of files.
static QString foldedFileName(const QString& name) {
  QString folded = name.normalized(QString::NormalizationForm_C);
  for (QChar& c : folded) {
    if (c >= u'A' && c <= u'Z') c = QChar(c.unicode() - u'A' + u'a');
  }
  return folded;
}

std::string findPictureByName(const std::string& folder, const char* windowsName) {
  char normalised[kPathBytes];
  std::snprintf(normalised, sizeof(normalised), "%s", windowsName);
  normalisePictureName(normalised);
  const QString name = QString::fromStdString(nameInUtf8(normalised));
  const QDir place(QFile::decodeName(folder.c_str()));
  const QStringList files = place.entryList(QDir::Files | QDir::Hidden, QDir::Name);
  if (files.contains(name)) return place.absoluteFilePath(name).toStdString();
  const auto found = std::find_if(files.begin(), files.end(), [&name](const QString& file) {
    return foldedFileName(file) == name;
  });
  return found == files.end() ? std::string() : place.absoluteFilePath(*found).toStdString();
}
