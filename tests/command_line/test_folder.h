// test_folder: a folder of a test's own, and the files in it. For tests with Qt.

#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

struct TestFolder {
  QString path(const QString& name) const {
    return folder.filePath(name);
  }

  // Nothing where there is no such file.
  QByteArray read(const QString& name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  // With the folders that its name has.
  void write(const QString& name, const QByteArray& contents) const {
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    ASSERT_EQ(file.write(contents), contents.size());
  }

  QTemporaryDir folder;
};
