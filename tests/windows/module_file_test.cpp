// What hosts and the system look for in the module's file before they load it.

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/windows/module_file.h"
#include "tests/windows/wine_host.h"

class WindowsModuleFile : public ::testing::TestWithParam<int> {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(modulePath(GetParam()))) {
      GTEST_SKIP() << "the module is not built (./dev windows)";
    }
    file_ = readModuleFile(modulePath(GetParam()));
  }

  ModuleFile file_;
};

TEST_P(WindowsModuleFile, ExportsTwoProceduresAndNeedsTheSystemOnly) {
  EXPECT_EQ(file_.machine, GetParam() == 64 ? 0x8664 : 0x014C);
  EXPECT_EQ(file_.subsystem, 2) << "windows, no console";
  EXPECT_EQ(file_.exports, (std::set<std::string>{"ENTRYPOINT", "DissolveProc"}));
  const std::set<std::string> system = {"kernel32.dll", "user32.dll",   "gdi32.dll",
                                        "comdlg32.dll", "advapi32.dll", "msvcrt.dll"};
  for (const std::string& library : file_.libraries) {
    EXPECT_TRUE(system.count(library)) << library;
  }
}

// Loaded anywhere, in 64 bits in all of the address space, and no data is run.
TEST_P(WindowsModuleFile, IsHardened) {
  const int hardened = 0x0140 | (GetParam() == 64 ? 0x0020 : 0);
  EXPECT_EQ(file_.characteristics & hardened, hardened);
}

static void append(std::vector<uint8_t>* bytes, const std::string& text, size_t length) {
  bytes->insert(bytes->end(), text.begin(), text.end());
  bytes->resize(bytes->size() + length - text.size());
}

// A code reads backwards in the file, as the little-endian number that it is.
static void appendProperty(std::vector<uint8_t>* bytes, const std::string& key,
                           const std::string& data, size_t length) {
  append(bytes, "MIB8", 4);
  append(bytes, std::string(key.rbegin(), key.rend()), 4);
  append(bytes, "", 4);
  append(bytes, std::string(1, static_cast<char>(length)), 4);
  append(bytes, data, length);
}

TEST_P(WindowsModuleFile, DescribesItselfToHosts) {
  std::vector<uint8_t> expected = {1, 0, 0, 0, 0, 0, 7, 0, 0, 0};
  appendProperty(&expected, "kind", "MFB8", 4);
  appendProperty(&expected, "name", "\x0BMorvalis...", 16);
  appendProperty(&expected, "catg", "\x09Quorrelin", 16);
  appendProperty(&expected, "vers", std::string("\0\0\4", 3), 4);
  appendProperty(&expected, GetParam() == 64 ? "8664" : "wx86", "ENTRYPOINT", 12);
  appendProperty(&expected, "mode", "\x50", 4);
  const std::string straight("\1\1\0\0", 4);
  const std::string unsupported("\0\0\0\0", 4);
  appendProperty(&expected, "fici",
                 straight + straight + straight + unsupported + unsupported + straight + straight,
                 28);
  ASSERT_EQ(file_.resources["PIPL"].size(), 1U);
  EXPECT_EQ(file_.resources["PIPL"]["#16000"], expected);
}

// Every picture for every scale, and still nothing that a host would take long to load.
TEST_P(WindowsModuleFile, StaysSmall) {
  constexpr size_t kMegabyte = 1000 * 1000;
  size_t scaledBytes = 0;
  for (const auto& [number, bytes] : file_.resources["#10"]) scaledBytes += bytes.size();
  EXPECT_GT(scaledBytes, kMegabyte / 2);
  EXPECT_LT(scaledBytes, 3 * kMegabyte) << "pictures beyond those at 100 percent";
  EXPECT_LT(std::filesystem::file_size(modulePath(GetParam())), 4 * kMegabyte);
}

// Types of the system: 2 bitmaps, 5 dialogs, 12 cursors, 14 icons, 16 version.
TEST_P(WindowsModuleFile, CarriesItsDialogsAndPictures) {
  auto& resources = file_.resources;
  for (const char* dialog :
       {"DISSOLVESANSPARAM", "ABOUTBOX", "NOT_ENOUGH_MEMORY", "FILE_NOT_FOUND"}) {
    EXPECT_EQ(resources["#5"].count(dialog), 1U) << dialog;
  }
  EXPECT_EQ(resources["#5"].size(), 4U);
  for (const char* icon : {"#122", "#148", "#202"}) {
    EXPECT_EQ(resources["#14"].count(icon), 1U) << icon;
  }
  for (const char* cursor : {"#107", "#108"}) {
    EXPECT_EQ(resources["#12"].count(cursor), 1U) << cursor;
  }
  for (int32_t bitmap :
       {120, 122, 125, 126, 127, 129, 130, 131, 133, 135, 136, 137, 138, 139, 140, 142, 144,
        146, 148, 149, 150, 151, 157, 160, 163, 166, 168, 169, 175, 185, 187, 199, 204, 205,
        206, 207, 218, 219, 221, 223, 224, 225, 228, 234, 236, 237, 238, 239, 240, 241}) {
    EXPECT_EQ(resources["#2"].count("#" + std::to_string(bitmap)), 1U) << bitmap;
  }
  EXPECT_EQ(resources["#16"].size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Bits, WindowsModuleFile, ::testing::Values(64, 32), kindName);
