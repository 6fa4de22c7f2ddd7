// gimp_session: GIMP with the plug-in in a folder of its own, and pictures for it.

#pragma once

#include <QImage>
#include <QProcess>
#include <QString>
#include <QStringList>

#include "tests/command_line/test_folder.h"

struct GimpSession : TestFolder {
  GimpSession();

  QImage picture(const QString& name) const;

  // What GIMP says while it runs a script, without a screen. Everything it keeps for a user is in
  // the folder.
  QString runScript(const QByteArray& script) const;

  // The program in the same folder, which has to succeed; what it says.
  QString runProgram(const QString& program, const QStringList& arguments) const;

  void start(QProcess* process, const QString& program, const QStringList& arguments) const;

  QProcessEnvironment environment;
};

constexpr int kWidth = 64;
constexpr int kHeight = 48;

// All samples different, as far as they go. Alpha rises from the left, with nothing and everything
// at the sides.
QImage noise(QImage::Format format, quint32 seed);

// A selection as a picture that GIMP selects by its transparency and `morvalis` by its brightness.
QImage maskPicture(const QRect& selected, int feather);
