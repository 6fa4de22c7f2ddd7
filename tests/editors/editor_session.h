// editor_session: a user of other people's editors, with a home and a screen of their own. Tests of
// editors that are not installed are skipped, by name.

#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <functional>

#include "tests/command_line/test_folder.h"

class EditorTest : public testing::Test, protected TestFolder {
 protected:
  EditorTest();
  ~EditorTest() override;

  // Empty, or the first that is not there.
  static QString missing(const QStringList& programs);
  // Whether the system's Python, which editors start, has a module.
  bool hasModule(const QString& module) const;

  QImage picture(const QString& name) const;

  // Runs to its end and says what it said.
  QString run(const QString& program, const QStringList& arguments, int* exitCode = nullptr) const;
  void start(QProcess* process, const QString& program, const QStringList& arguments) const;

  // From here on there is a screen.
  void openScreen();
  // The window of this name, once there is one; empty when none comes.
  QString windowNamed(const QString& pattern) const;
  void press(const QString& window, const QStringList& keys) const;
  bool waitUntil(const std::function<bool()>& happened) const;

  QProcessEnvironment environment;

 private:
  QProcess screen_;
};

// A disc with soft edges on transparent ground, with colours that go on below it.
QImage disc(QImage::Format format, int side);
