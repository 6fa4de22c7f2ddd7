// Completions as the shells ask for them.

#include <QFile>

#include "tests/command_line/program_run.h"

class Completions : public ProgramTest {
 protected:
  // What bash offers behind a line; `breaks` are the letters that end a word besides blanks.
  QString completed(const QString& line, const QString& breaks = "=") const {
    const QString script =
        "source <(\"$0\" completion bash); compopt() { :; }; morvalis() { \"$0\" \"$@\"; };"
        "COMP_WORDBREAKS='" +
        breaks + "'; COMP_LINE='" + line +
        "'; COMP_POINT=${#COMP_LINE}; _morvalis; printf '%s ' \"${COMPREPLY[@]}\"";
    return runShell(script).output.trimmed();
  }
};

TEST_F(Completions, OfBash) {
  save(colorPicture(), "a.png");
  ASSERT_TRUE(QFile::copy(path("a.png"), path("gold ring.q9q")));
  const struct {
    const char* line;
    const char* offered;
  } cases[] = {
      {"morvalis pre", "preset"},
      {"morvalis preset ", "list show save"},
      {"morvalis help g", "gallery"},
      {"morvalis apply a.png --pi", "--pictures"},
      {"morvalis apply a.png --mask-", "--mask-invert --mask-feather --mask-fit --mask-channel"},
      {"morvalis apply a.png --verb", "--verbose"},
      {"morvalis gallery a.png --col", "--color"},
      {"morvalis apply a.png --set iri", "iriTableChoice= iridescence= iriColors="},
      {"morvalis apply a.png --set=iri", "iriTableChoice= iridescence= iriColors="},
      {"morvalis preset save x --set shape=double", "double-ridge"},
      {"morvalis apply a.png --set blendMode=proc", "procedural-+ procedural--"},
      {"morvalis completion ", "bash zsh fish"},
      {"morvalis apply a.png --depth ", "8 16"},
      {"morvalis apply a.png --chroma=4", "444 420"},
      {"morvalis apply a.png --quality ", ""},
      {"morvalis apply a.png -o - --format jp", "jpg jpeg"},
      {"morvalis apply a.png --preset gol", "gold gold ring.q9q"},
      {"morvalis apply a.png --preset=old-c", "old-copper"},
      {"morvalis preset show chro", "chrome"},
      {"morvalis preset save gol", "gold ring.q9q"},
      {"morvalis apply a.png --mask a", "alpha a.png"},
      {"morvalis apply a.png --mask=a", "alpha a.png"},
  };
  for (const auto& one : cases) EXPECT_EQ(completed(one.line), one.offered) << one.line;
  // Where "=" is no end of a word, what stands before it is part of what is offered.
  EXPECT_EQ(completed("morvalis apply --preset=old-c", ":"), "--preset=old-copper");
  EXPECT_EQ(completed("morvalis apply --set=shape=cro", ":"), "--set=shape=crown");
  // Every choice and preset that is offered is taken.
  EXPECT_EQ(run({"preset", "save", "x.q9q", "--set", "blendMode=procedural--"}).exitCode, 0);
  EXPECT_EQ(runShell("for name in $(\"$0\" preset list | tr ' ' -); do "
                     "\"$0\" preset show $name >/dev/null || echo $name; done")
                .output,
            "");
}

TEST_F(Completions, OfOtherShells) {
  for (const QString shell : {"zsh", "fish"}) {
    const QString script = run({"completion", shell}).output;
    for (const char* part :
         {"double-ridge", "pictures", "preset list", "verbose", "mask-feather"}) {
      EXPECT_TRUE(script.contains(part)) << shell.toStdString() << ": " << part;
    }
    if (runShell("command -v " + shell).exitCode != 0) continue;
    write("script", script.toUtf8());
    const RunResult checked = runShell(shell + " -n script");
    EXPECT_EQ(checked.exitCode, 0) << checked.errors.toStdString();
  }
  // Fish can be asked without a terminal.
  if (runShell("command -v fish").exitCode != 0) return;
  const QString ask =
      "mkdir -p bin home; ln -sf \"$0\" bin/morvalis; \"$0\" completion fish > c.fish; "
      "HOME=$PWD/home PATH=$PWD/bin:$PATH fish --no-config -c \"source c.fish; complete -C '%1'\" "
      "| cut -f 1";
  EXPECT_EQ(runShell(ask.arg("morvalis apply a.png --preset=old-c")).output,
            "--preset=old-copper\n");
  EXPECT_EQ(runShell(ask.arg("morvalis apply a.png --preset chrom")).output, "chrome\n");
}
