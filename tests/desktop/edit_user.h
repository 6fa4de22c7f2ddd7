// edit_user: plays the user of `morvalis edit` in this process, window after window, in a folder of
// its own.

#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <string>
#include <vector>

#include "hosts/window_commands/edit_command.h"

class QWidget;

// What the user does with the next window of this kind: its object name, or its Qt class.
struct EditStep {
  QString window;
  std::function<void(QWidget*)> act;
};

constexpr char kEditDialog[] = "DISSOLVESANSPARAM";

// Presses the button that people know by this name.
EditStep pressInDialog(const QString& button);

struct EditResult {
  int exitCode;
  std::string output;
  std::string errors;
};

class EditTest : public testing::Test {
 protected:
  EditTest();
  ~EditTest() override;

  // Every step has to come to its turn, and no window may be left over.
  EditResult edit(const EditOptions& options, const std::vector<EditStep>& steps) const;

  // `morvalis apply`, with the same seed where it is not told another; the bytes of the file that
  // it writes.
  QByteArray apply(const QStringList& arguments) const;
  QByteArray applyUnseeded(const QStringList& arguments) const;

  std::string path(const QString& name) const;
  QByteArray read(const QString& name) const;
  QStringList files() const;
  void savePicture(const QString& name, int width, int height) const;

 private:
  QTemporaryDir folder_;
};

// What `edit` is asked with in most tests: a seed, and a picture in the test's folder.
EditOptions editOf(const std::string& image);
