// What is installed, and that building the program is all that it takes.

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

#include "tests/command_line/program_run.h"

class Installation : public ProgramTest {};

TEST_F(Installation, IsWholeAndWorksElsewhere) {
  QProcess installer;
  installer.start(MORVALIS_CMAKE, {"--install", MORVALIS_BUILD, "--prefix", path("root")});
  ASSERT_TRUE(installer.waitForFinished(60000));
  ASSERT_EQ(installer.exitCode(), 0) << installer.readAllStandardError().toStdString();
  for (const char* name :
       {"bin/morvalis", "share/applications/morvalis.desktop",
        "lib/morvalis/libmorvalis_formats.so", "lib/morvalis/libmorvalis_window.so",
        "share/bash-completion/completions/morvalis", "share/zsh/site-functions/_morvalis",
        "share/fish/vendor_completions.d/morvalis.fish",
        "share/icons/hicolor/48x48/apps/morvalis.png",
        "share/kio/servicemenus/morvalis-edit.desktop",
        "share/nautilus-python/extensions/morvalis_nautilus.py",
        "share/inkscape/extensions/morvalis/morvalis_render.py",
        "share/krita/pykrita/morvalis/layers.py"}) {
    EXPECT_GT(QFile(path(QString("root/") + name)).size(), 0) << name;
  }
  if (QFile::exists(MORVALIS_BUILD "/gimp2-morvalis")) {
    const QFile plugIn(path("root/lib/gimp/2.0/plug-ins/morvalis/morvalis"));  // a link
    EXPECT_EQ(plugIn.size(), QFile(path("root/lib/morvalis/gimp2-morvalis")).size());
    EXPECT_GT(plugIn.size(), 0);
  }
  EXPECT_TRUE(read("root/share/man/man1/morvalis.1").startsWith(".TH MORVALIS 1 "));

  save(colorPicture(), "in.png");
  const QDir presets(path("root/share/morvalis/presets"));
  const QStringList names = presets.entryList({"*.q9q"});
  const QByteArray choices = read("root/share/inkscape/extensions/morvalis/morvalis.inx");
  for (const QString& name : names) {
    EXPECT_TRUE(choices.contains("value=\"" + name.chopped(4).toUtf8() + "\"")) << "in Inkscape";
  }
  EXPECT_EQ(names, QDir(MORVALIS_TEST_DATA "/../../presets").entryList({"*.q9q"}));
  const RunResult sheet = runShell(
      "root/bin/morvalis gallery in.png --presets root/share/morvalis/presets -o s.png --quiet");
  EXPECT_EQ(sheet.exitCode, 0) << sheet.errors.toStdString();
}

// A server has neither, and a small picture would wait for them.
TEST_F(Installation, LinksNoWindowsAndNoPictureLibrary) {
  const RunResult linked = runShell("ldd \"$0\"");
  ASSERT_TRUE(linked.output.contains("libisal")) << linked.errors.toStdString();
  EXPECT_FALSE(linked.output.contains("Qt") || linked.output.contains("vips"));
  const RunResult formats = runShell("ldd " MORVALIS_BUILD "/libmorvalis_formats.so");
  EXPECT_TRUE(formats.output.contains("vips"));
  EXPECT_FALSE(formats.output.contains("Qt"));
  ASSERT_EQ(runShell("mkdir bin; cp \"$0\" bin").exitCode, 0);
  const RunResult alone = runShell("bin/morvalis about");
  EXPECT_EQ(alone.exitCode, 1);
  EXPECT_TRUE(alone.errors.contains("is not installed (there is no libmorvalis_window.so"))
      << alone.errors.toStdString();
}

#if !defined(MORVALIS_SANITIZED)
TEST_F(Installation, FilesAreHardened) {
  for (const char* file : {MORVALIS_PROGRAM, MORVALIS_BUILD "/libmorvalis_formats.so",
                           MORVALIS_BUILD "/libmorvalis_window.so"}) {
    SCOPED_TRACE(file);
    const RunResult read = runShell(QString("readelf -hldW --dyn-syms %1").arg(file));
    ASSERT_EQ(read.exitCode, 0) << read.errors.toStdString();
    EXPECT_TRUE(read.output.contains("DYN (")) << "loaded anywhere";
    EXPECT_TRUE(read.output.contains("GNU_RELRO") && read.output.contains("BIND_NOW"));
    EXPECT_TRUE(read.output.contains(QRegularExpression("GNU_STACK .* RW +0x")));
    EXPECT_TRUE(read.output.contains("__stack_chk_fail"));
  }
  const RunResult symbols = runShell("readelf -W --dyn-syms \"$0\"");
  EXPECT_TRUE(symbols.output.contains(QRegularExpression("__[a-z]+_chk@"))) << "checked copies";
}
#endif

// What `./dev build` builds is the program; an installation that needs another target would fail.
TEST_F(Installation, NeedsNothingButTheProgram) {
  if (!QFile::exists(MORVALIS_BUILD "/build.ninja")) GTEST_SKIP() << "not built with Ninja";
  QProcess ninja;
  ninja.start(MORVALIS_MAKE, {"-C", MORVALIS_BUILD, "-t", "commands", "morvalis"});
  ASSERT_TRUE(ninja.waitForFinished(60000));
  const QString commands = ninja.readAllStandardOutput();
  for (const char* document : {"morvalis.1", "_morvalis", "morvalis.fish"}) {
    EXPECT_TRUE(commands.contains(QString("documents/") + document)) << document;
  }
}
