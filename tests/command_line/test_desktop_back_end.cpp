// The parts of the desktop back end that programs reach without its windows.

#include <sys/stat.h>
#include <unistd.h>

#include <cstring>

#include "platform/remembered_values.h"
#include "platform/unix/program_session.h"
#include "platform/user_files.h"
#include "tests/command_line/program_run.h"

TEST(DesktopBackEnd, ConvertsNamesBothWays) {
  char path[64];
  char name[64];
  for (int character = 1; character < 256; ++character) {
    const char text[] = {'a', static_cast<char>(character), 0};
    pathFromWindowsName(text, path, sizeof(path));
    windowsNameFromPath(path, name, sizeof(name));
    const bool hasNone = character == 0x81 || character == 0x8D || character == 0x8F ||
                         character == 0x90 || character == 0x9D;
    EXPECT_STREQ(name, hasNone ? "a_" : text) << character;
  }
  pathFromWindowsName("\x80uro", path, sizeof(path));
  EXPECT_STREQ(path, "\u20ACuro");
  windowsNameFromPath("\u0416\U0001F600x", name, sizeof(name));
  EXPECT_STREQ(name, "__x");

  // Cut between characters, and never behind the end.
  std::memset(path, '#', sizeof(path));
  pathFromWindowsName("a\x80", path, 4);
  EXPECT_STREQ(path, "a");
  EXPECT_EQ(path[4], '#');
  windowsNameFromPath("\u00E9\u00E9\u00E9", name, 3);
  EXPECT_STREQ(name, "\xE9\xE9");
}

TEST(DesktopBackEnd, WaitsForNoPipe) {
  const std::string pipe = testing::TempDir() + "pipe-" + std::to_string(getpid());
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(openUserFile(pipe.c_str()), nullptr);
  unlink(pipe.c_str());
}

TEST(DesktopBackEnd, KeepsNothingOfARunThatIsCutOff) {
  keepRememberedValuesInMemory();
  char text[8] = "before";
  EXPECT_FALSE(readRememberedValue("Value", text, sizeof(text)));
  EXPECT_STREQ(text, "before");
  writeRememberedValue("Value", "longer than that");
  EXPECT_TRUE(readRememberedValue("Value", text, sizeof(text)));
  EXPECT_STREQ(text, "longer ");
  EXPECT_FALSE(cachedSettingsPath(true, text, sizeof(text)));
  keepRememberedValuesInMemory();
  EXPECT_FALSE(readRememberedValue("Value", text, sizeof(text)));
}
