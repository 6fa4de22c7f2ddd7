#include "platform/user_files.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QString>
#include <cstring>
#include <string>

#include "platform/desktop/session_state.h"

constexpr char kStateFolder[] = "morvalis";
constexpr char kCachedSettingsName[] = "Morvalis cached settings";

constexpr char16_t kNone = u'_';

// Characters 0x80 to 0x9F of the Windows character set for Western Europe; all others are those of
// the same number.
constexpr char16_t kWindowsCharacters[32] = {
    0x20AC, kNone,  0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, kNone,  0x017D, kNone,  kNone,  0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, kNone,  0x017E, 0x0178};

char pathSeparator() {
  return '/';
}

static char16_t fromWindows(uint8_t character) {
  return character >= 0x80 && character < 0xA0 ? kWindowsCharacters[character - 0x80] : character;
}

static char toWindows(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
    return static_cast<char>(character);
  }
  for (int i = 0; i < 32; ++i) {
    if (kWindowsCharacters[i] == character) return static_cast<char>(0x80 + i);
  }
  return kNone;
}

// Cuts between two characters of UTF-8, of which all bytes but the first begin with the bits 10.
static void copyPath(const std::string& text, char* path, int32_t bytes) {
  size_t length = text.size();
  if (length >= static_cast<size_t>(bytes)) {
    length = static_cast<size_t>(bytes) - 1;
    while (length > 0 && (static_cast<uint8_t>(text[length]) & 0xC0) == 0x80) --length;
  }
  std::memcpy(path, text.data(), length);
  path[length] = '\0';
}

void pathFromWindowsName(const char* name, char* path, int32_t bytes) {
  if (bytes <= 0) return;
  try {
    QString text;
    for (const char* at = name; *at != '\0'; ++at) text += QChar(fromWindows(uint8_t(*at)));
    copyPath(text.toStdString(), path, bytes);
  } catch (...) {
    path[0] = '\0';  // out of memory
  }
}

void windowsNameFromPath(const char* path, char* name, int32_t bytes) {
  if (bytes <= 0) return;
  int32_t length = 0;
  try {
    for (const char32_t character : QString::fromUtf8(path).toStdU32String()) {
      if (length == bytes - 1) break;
      name[length++] = toWindows(character);
    }
  } catch (...) {
    length = 0;  // out of memory
  }
  name[length] = '\0';
}

// Some systems take letters with accents apart in names of files.
static QString foldedFileName(const QString& name) {
  QString folded = name.normalized(QString::NormalizationForm_C);
  for (QChar& c : folded) {
    if (c >= u'A' && c <= u'Z') c = QChar(c.unicode() - u'A' + u'a');
  }
  return folded;
}

void takeFileAsWritten(char* path, int32_t bytes) {
  try {
    const QFileInfo wanted(QString::fromUtf8(path));
    if (wanted.exists()) return;
    const QDir folder = wanted.dir();
    for (const QString& file : folder.entryList(QDir::Files | QDir::Hidden, QDir::Name)) {
      if (foldedFileName(file) != wanted.fileName()) continue;
      const std::string found = folder.filePath(file).toStdString();
      if (found.size() < static_cast<size_t>(bytes)) copyPath(found, path, bytes);
      return;
    }
  } catch (...) {
    // out of memory: the path stays
  }
}

// The folder for what a program remembers of its last run. A relative path in the variable is to
// be ignored, as in every variable of this kind.
static QString stateFolder() {
  const QString configured = qEnvironmentVariable("XDG_STATE_HOME");
  const QString base =
      QDir::isAbsolutePath(configured) ? configured : QDir::homePath() + "/.local/state";
  return base + "/" + kStateFolder;
}

bool cachedSettingsPath(bool forWriting, char* path, int32_t bytes) {
  if (bytes <= 0 || runIsCutOff()) return false;
  try {
    const QString folder = stateFolder();
    if (forWriting && !QDir().mkpath(folder)) return false;
    const std::string file = (folder + "/" + kCachedSettingsName).toStdString();
    if (file.size() >= static_cast<size_t>(bytes)) return false;
    copyPath(file, path, bytes);
    return true;
  } catch (...) {
    return false;
  }
}

// In a new file beside it, which takes its place when it is on the disk: whole or not at all.
bool overwriteUserFile(const char* path, const uint8_t* bytes, size_t count) {
  try {
    const QString name = QFile::decodeName(path);
    const QFileInfo there(name);
    if (there.exists() && !there.isFile()) return false;
    QByteArray content(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(count));
    QFile old(name);
    if (old.open(QIODevice::ReadOnly)) {
      if (old.seek(content.size())) content += old.readAll();
      if (old.error() != QFileDevice::NoError) return false;
    } else if (old.exists()) {
      return false;
    }
    // A buffer would hide that the disk has taken only a part.
    QSaveFile file(name);
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
           file.write(content) == content.size() && file.commit();
  } catch (...) {
    return false;  // out of memory
  }
}

// Seen from the program: bin/ beside share/, and build/desktop/ in the tree.
constexpr const char* kOwnPictures[] = {"../share/morvalis/presets/environments and textures",
                                        "../../presets/environments and textures"};

bool ownPicturesFolder(char* folder, int32_t bytes) {
  if (bytes <= 0 || QCoreApplication::instance() == nullptr) return false;
  try {
    const QDir program(QCoreApplication::applicationDirPath());
    for (const char* each : kOwnPictures) {
      const QString path = QDir::cleanPath(program.filePath(each));
      const std::string text = path.toStdString() + pathSeparator();
      if (!QDir(path).exists() || text.size() >= static_cast<size_t>(bytes)) continue;
      copyPath(text, folder, bytes);
      return true;
    }
  } catch (...) {
    // out of memory
  }
  return false;
}
