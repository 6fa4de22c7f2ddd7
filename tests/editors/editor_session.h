// editor_session: a user of other people's editors, with a home and a screen of their own. Tests of
// editors that are not installed are skipped, by name.

#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>

class EditorTest : public testing::Test {
 protected:
  EditorTest();
  ~EditorTest() override;

  // Empty, or the first that is not there.
  static QString missing(const QStringList& programs);
  // Whether the system's Python, which editors start, has a module.
  bool hasModule(const QString& module) const;

  QString path(const QString& name) const;
  QByteArray read(const QString& name) const;
  void write(const QString& name, const QByteArray& contents) const;
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
  QTemporaryDir folder_;
  QProcess screen_;
};

// A disc with soft edges on transparent ground, with colours that go on below it.
QImage disc(QImage::Format format, int side);
