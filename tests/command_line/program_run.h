// program_run: runs the program in a folder of its own, and makes the files it works on.

#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QString>
#include <QStringList>

#include "tests/command_line/test_folder.h"

struct RunResult {
  int exitCode;  // -1: ended by a signal, or not at all
  QString output;
  QString errors;
};

// Every test gets an empty folder, in which the program runs.
class ProgramTest : public testing::Test, protected TestFolder {
 protected:
  ProgramTest();
  RunResult run(const QStringList& arguments) const;
  RunResult runUntilSignal(const QStringList& arguments, int signal, int milliseconds) const;
  // Through the shell, for limits; "$0" is the program.
  RunResult runShell(const QString& script) const;
  // apply with --quiet and a fixed seed, which has to succeed in silence; the result as it reads.
  QImage apply(const QString& image, const QString& output, const QStringList& more = {}) const;

  void save(const QImage& image, const QString& name) const;
  QStringList files() const;  // all of the folder, hidden ones too
};

// 24 x 18 pixels, all different; with alpha: columns of 0, 128 and 255, colours under each.
QImage colorPicture(bool alpha = false);
QImage greyPicture();

// A PNG file of 8-bit samples given as they stand in its rows.
QByteArray pngFile(int width, int height, int colourType, const QByteArray& samples,
                   const QByteArray& moreChunks = {});
QByteArray pngChunk(const char* name, const QByteArray& data);

// The contents of a file's chunk by this name; empty when there is none.
QByteArray findPngChunk(const QByteArray& file, const char* name);

// One that the picture library makes nothing of, since it has no tables.
QByteArray profileFor(const char* kind);
