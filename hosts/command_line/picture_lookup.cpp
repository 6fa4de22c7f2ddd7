#include "hosts/command_line/picture_lookup.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <cstring>

#include "hosts/command_line/preset_file.h"
#include "persistence/path_parts.h"
#include "platform/user_files.h"

constexpr char kUsualName[] = "environments and textures";

std::string usualPictureFolder(const std::string& presetFile) {
  const QFileInfo preset(QFile::decodeName(presetFile.c_str()));
  const QString path = QDir::cleanPath(preset.absoluteFilePath());
  const QString marker = QString("/%1/").arg(kUsualName);
  const qsizetype found = path.indexOf(marker);
  if (found >= 0) return path.left(found + marker.size() - 1).toStdString();
  return QFileInfo(path).dir().filePath(kUsualName).toStdString();
}

std::string findPictureByName(const std::string& folder, const char* windowsName) {
  char normalised[kPathBytes];
  std::snprintf(normalised, sizeof(normalised), "%s", windowsName);
  normalisePictureName(normalised);
  const std::string name = nameInUtf8(normalised);
  if (name.find('/') != std::string::npos) return "";
  const QDir place(QFile::decodeName(folder.c_str()));
  std::string path = place.absoluteFilePath(QString::fromStdString(name)).toStdString();
  path.resize(path.size() + kPathBytes);  // letters with accents taken apart need more room
  takeFileAsWritten(path.data(), static_cast<int32_t>(path.size()));
  path.resize(std::strlen(path.c_str()));
  return QFileInfo(QFile::decodeName(path.c_str())).isFile() ? path : "";
}
