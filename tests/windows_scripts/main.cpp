// windows_scripts: plays the scripts of the dialog in the module's own code for this system, and
// writes what they looked at into a folder, a file each, to be compared with another system's.
//   windows_scripts FOLDER [OPTION OF THE TEST LIBRARY]...

#include <gtest/gtest.h>

#include <fstream>

#include "platform/windows/windows_api.h"
#include "tests/support/dialog/dialog_recording.h"
#include "tests/support/dialog/dialog_scripts.h"
#include "tests/support/dialog/dialog_user.h"
#include "tests/support/hosts/bitmap_files.h"

static std::string folder;

static void saveRecording(const std::string& name) {
  std::ofstream file(folder + "/" + name, std::ios::binary);
  for (const std::string& line : recordedLines()) file << line << '\n';
}

class Scripts : public ::testing::TestWithParam<DialogScript> {};

TEST_P(Scripts, Plays) {
  runScript(GetParam());
  saveRecording(GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(Plain, Scripts, ::testing::ValuesIn(dialogScripts()),
                         [](const auto& instance) { return std::string(instance.param.name); });

class ScaledScripts : public ::testing::TestWithParam<ScaledScript> {};

TEST_P(ScaledScripts, Plays) {
  runScript(GetParam());
  saveRecording(nameOf(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Scaled, ScaledScripts, ::testing::ValuesIn(scaledScripts()),
                         [](const auto& instance) { return nameOf(instance.param); });

void offerPicture(const std::string& path, int32_t width, int32_t height,
                  const std::vector<uint8_t>& rgb) {
  writeColourBitmap(path, width, height, rgb);
}

int main(int count, char** words) {
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  ::testing::InitGoogleTest(&count, words);
  folder = count > 1 ? words[1] : ".";
  CreateDirectoryA(folder.c_str(), nullptr);
  return RUN_ALL_TESTS();
}
