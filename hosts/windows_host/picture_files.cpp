#include "hosts/windows_host/picture_files.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>

#include "platform/windows/windows_api.h"

void failWith(const std::string& reason) {
  std::fprintf(stderr, "windows_host: %s\n", reason.c_str());
  std::fflush(nullptr);
  std::exit(1);
}

std::vector<uint8_t> readBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) failWith(path + ": cannot be read");
  return std::vector<uint8_t>(std::istreambuf_iterator<char>(file), {});
}

void writeBytes(const std::string& path, const std::vector<uint8_t>& bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) failWith(path + ": cannot be written");
}

// "P5" or "P6", width, height and 255, then the samples.
static HostPicture readNetpbm(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string kind;
  HostPicture picture;
  int32_t largest = 0;
  file >> kind >> picture.width >> picture.height >> largest;
  file.get();
  if (!file || (kind != "P5" && kind != "P6") || largest != 255 || picture.width < 1 ||
      picture.height < 1) {
    failWith(path + ": is no binary PPM or PGM of 8 bits");
  }
  picture.planes = kind == "P6" ? 3 : 1;
  picture.samples.resize(static_cast<size_t>(picture.width) * static_cast<size_t>(picture.height) *
                         static_cast<size_t>(picture.planes));
  file.read(reinterpret_cast<char*>(picture.samples.data()),
            static_cast<std::streamsize>(picture.samples.size()));
  if (!file) failWith(path + ": is cut off");
  return picture;
}

static BITMAPINFO descriptionOf(int32_t width, int32_t height) {
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // rows from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  return info;
}

static HostPicture readBitmap(const std::string& path) {
  auto bitmap = static_cast<HBITMAP>(
      LoadImageA(nullptr, path.c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION));
  BITMAP size = {};
  if (bitmap == nullptr || GetObjectA(bitmap, sizeof(size), &size) == 0) {
    failWith(path + ": is no BMP that the system reads");
  }
  std::vector<uint32_t> pixels(static_cast<size_t>(size.bmWidth) *
                               static_cast<size_t>(size.bmHeight));
  BITMAPINFO info = descriptionOf(size.bmWidth, size.bmHeight);
  HDC context = CreateCompatibleDC(nullptr);
  GetDIBits(context, bitmap, 0, static_cast<UINT>(size.bmHeight), pixels.data(), &info,
            DIB_RGB_COLORS);
  DeleteDC(context);
  DeleteObject(bitmap);
  HostPicture picture = {size.bmWidth, size.bmHeight, 3, {}};
  for (const uint32_t pixel : pixels) {
    for (int shift : {16, 8, 0}) picture.samples.push_back(static_cast<uint8_t>(pixel >> shift));
  }
  return picture;
}

HostPicture readPicture(const std::string& path) {
  const bool isBitmap = path.size() > 4 && lstrcmpiA(path.c_str() + path.size() - 4, ".bmp") == 0;
  return isBitmap ? readBitmap(path) : readNetpbm(path);
}

HostMask readMask(const std::string& path, const HostPicture& picture) {
  HostPicture mask = readNetpbm(path);
  if (mask.planes != 1 || mask.width != picture.width || mask.height != picture.height) {
    failWith(path + ": is no grey picture of the source's size");
  }
  return mask.samples;
}

void writePicture(const std::string& path, const HostPicture& picture) {
  const int32_t written = picture.planes < 3 ? 1 : 3;
  const std::string header = (written == 1 ? "P5\n" : "P6\n") + std::to_string(picture.width) +
                             " " + std::to_string(picture.height) + "\n255\n";
  std::vector<uint8_t> bytes(header.begin(), header.end());
  for (size_t i = 0; i < picture.samples.size(); ++i) {
    const auto plane = static_cast<int32_t>(i % static_cast<size_t>(picture.planes));
    if (plane < written) bytes.push_back(picture.samples[i]);
  }
  writeBytes(path, bytes);
}

void writeBitmap(const std::string& path, int32_t width, int32_t height,
                 const std::vector<uint32_t>& pixels) {
  BITMAPFILEHEADER file = {};
  BITMAPINFO info = descriptionOf(width, height);
  file.bfType = 0x4D42;  // "BM"
  file.bfOffBits = sizeof(file) + sizeof(info.bmiHeader);
  file.bfSize = file.bfOffBits + static_cast<DWORD>(pixels.size() * sizeof(pixels[0]));
  std::vector<uint8_t> bytes(file.bfSize);
  std::memcpy(bytes.data(), &file, sizeof(file));
  std::memcpy(bytes.data() + sizeof(file), &info.bmiHeader, sizeof(info.bmiHeader));
  std::memcpy(bytes.data() + file.bfOffBits, pixels.data(), pixels.size() * sizeof(pixels[0]));
  writeBytes(path, bytes);
}
