#include "tests/windows/wine_host.h"

#include <sys/wait.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

constexpr int kNotHere = 77;  // of the script, when such programs cannot be run

static std::string buildFolder(int bits) {
  return MORVALIS_WINDOWS_BUILDS "/windows-" + std::to_string(bits);
}

std::string modulePath(int bits) {
  return buildFolder(bits) + "/Morvalis.8bf";
}

std::string kindName(const ::testing::TestParamInfo<int>& kind) {
  return std::to_string(kind.param) + "Bit";
}

static std::string quoted(const std::string& word) {
  std::string text = "'";
  for (const char c : word) text += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return text + "'";
}

static std::string scriptCall(int bits) {
  return "bash " + quoted(MORVALIS_RUN_WINE) + " " + std::to_string(bits) + " ";
}

static int exitCode(int status) {
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// What the call prints, errors too.
static std::string printedBy(const std::string& call, int* code) {
  std::FILE* pipe = popen((call + " 2>&1").c_str(), "r");
  std::string printed;
  char part[4096];
  while (const size_t count = std::fread(part, 1, sizeof(part), pipe)) printed.append(part, count);
  *code = exitCode(pclose(pipe));
  return printed;
}

// Why programs of this kind cannot be run here; empty when they can.
static std::string whyNot(int bits) {
  int code = 0;
  const std::string printed =
      printedBy(scriptCall(bits) + "--check " + quoted(MORVALIS_WINE_FOLDERS "/check"), &code);
  return code == kNotHere ? printed : "";
}

std::string wineFolder(int bits, const std::string& name) {
  const auto skip = [](const std::string& reason) {
    [&reason] { GTEST_SKIP() << reason; }();
    return std::string();
  };
  if (!fs::exists(modulePath(bits))) return skip("the module is not built (./dev windows)");
  static std::string reasons[2] = {"unknown", "unknown"};  // asked once each
  std::string& reason = reasons[bits == 64];
  if (reason == "unknown") reason = whyNot(bits);
  if (!reason.empty()) return skip(reason);
  const fs::path folder = fs::path(MORVALIS_WINE_FOLDERS) / (name + "-" + std::to_string(bits));
  fs::remove_all(folder);
  fs::create_directories(folder);
  fs::copy(modulePath(bits), folder / "Morvalis.8bf");
  fs::copy(buildFolder(bits) + "/windows_host.exe", folder / "windows_host.exe");
  return folder.string();
}

bool takeProgram(int bits, const std::string& folder, const std::string& name) {
  const std::string built = buildFolder(bits) + "/" + name;
  if (!fs::exists(built)) return false;
  fs::copy(built, fs::path(folder) / name);
  return true;
}

void runOwnProgram(int bits, const std::string& folder, const std::vector<std::string>& words) {
  std::string call = scriptCall(bits) + quoted(folder);
  for (const std::string& word : words) call += " " + quoted(word);
  int code = 0;
  const std::string printed = printedBy(call, &code);
  EXPECT_EQ(code, 0) << call << "\n" << printed;
}

std::string runWindowsHost(int bits, const std::string& folder,
                           const std::vector<std::string>& words, int expected) {
  std::string call = scriptCall(bits) + quoted(folder) + " windows_host.exe Morvalis.8bf";
  for (const std::string& word : words) call += " " + quoted(word);
  int code = 0;
  const std::string printed = printedBy(call, &code);
  EXPECT_EQ(code, expected) << call << "\n" << printed;
  return printed;
}

// --- Files ----------------------------------------------------------------------------------

void writeBytes(const std::string& path, const std::vector<uint8_t>& bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  ASSERT_TRUE(file.flush()) << path;
}

void writeText(const std::string& path, const std::string& text) {
  writeBytes(path, std::vector<uint8_t>(text.begin(), text.end()));
}

std::vector<uint8_t> readBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return std::vector<uint8_t>(std::istreambuf_iterator<char>(file), {});
}

static std::string headerOf(const HostPicture& picture) {
  const std::string width = std::to_string(picture.width);
  const std::string height = std::to_string(picture.height);
  if (picture.planes == 1) return "P5\n" + width + " " + height + "\n255\n";
  if (picture.planes == 3) return "P6\n" + width + " " + height + "\n255\n";
  return "P7\nWIDTH " + width + "\nHEIGHT " + height + "\nDEPTH " + std::to_string(picture.planes) +
         "\nMAXVAL 255\nENDHDR\n";
}

void writePicture(const std::string& path, const HostPicture& picture) {
  const std::string header = headerOf(picture);
  std::vector<uint8_t> bytes(header.begin(), header.end());
  bytes.insert(bytes.end(), picture.samples.begin(), picture.samples.end());
  writeBytes(path, bytes);
}

std::vector<uint8_t> readSamples(const std::string& path, size_t count) {
  const std::vector<uint8_t> bytes = readBytes(path);
  if (bytes.size() < count) return {};
  return std::vector<uint8_t>(bytes.end() - static_cast<std::ptrdiff_t>(count), bytes.end());
}

HostPicture readShot(const std::string& path) {
  constexpr size_t kHeaderBytes = 54;
  const std::vector<uint8_t> bytes = readBytes(path);
  HostPicture picture;
  if (bytes.size() < kHeaderBytes) return picture;
  int32_t height = 0;
  std::memcpy(&picture.width, bytes.data() + 18, sizeof(picture.width));
  std::memcpy(&height, bytes.data() + 22, sizeof(height));
  picture.height = -height;
  picture.planes = 3;
  for (size_t at = kHeaderBytes; at + 4 <= bytes.size(); at += 4) {
    for (size_t c : {2, 1, 0}) picture.samples.push_back(bytes[at + c]);
  }
  return picture;
}
