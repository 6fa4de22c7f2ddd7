// windows_scripts: plays the scripts of the dialog in the module's own code for this system, and
// writes what they looked at into a folder, a file each, to be compared with another system's.
//   windows_scripts FOLDER [OPTION OF THE TEST LIBRARY]...

#include <gtest/gtest.h>

#include <fstream>

#include "platform/windows/windows_api.h"
#include "tests/support/dialog/dialog_recording.h"
#include "tests/support/dialog/dialog_scripts.h"
#include "tests/support/dialog/dialog_user.h"

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

// 24 bits a pixel, rows from the bottom, each filled up to whole 32-bit words.
void offerPicture(const std::string& path, int32_t width, int32_t height,
                  const std::vector<uint8_t>& rgb) {
  BITMAPFILEHEADER start = {};
  BITMAPINFOHEADER header = {};
  header.biSize = sizeof(header);
  header.biWidth = width;
  header.biHeight = height;
  header.biPlanes = 1;
  header.biBitCount = 24;
  const int32_t rowBytes = (3 * width + 3) / 4 * 4;
  start.bfType = 0x4D42;
  start.bfOffBits = sizeof(start) + sizeof(header);
  start.bfSize = start.bfOffBits + static_cast<DWORD>(rowBytes * height);
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(&start), sizeof(start));
  file.write(reinterpret_cast<const char*>(&header), sizeof(header));
  for (int32_t y = height - 1; y >= 0; --y) {
    std::string row(static_cast<size_t>(rowBytes), '\0');
    for (int32_t i = 0; i < 3 * width; ++i) {
      row[static_cast<size_t>(i / 3 * 3 + 2 - i % 3)] =
          static_cast<char>(rgb[static_cast<size_t>(3 * width * y + i)]);
    }
    file << row;
  }
  ASSERT_TRUE(file.flush()) << path;
}

int main(int count, char** words) {
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  ::testing::InitGoogleTest(&count, words);
  folder = count > 1 ? words[1] : ".";
  CreateDirectoryA(folder.c_str(), nullptr);
  return RUN_ALL_TESTS();
}
