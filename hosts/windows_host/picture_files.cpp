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
  ExitProcess(3);
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

// "P5" or "P6", width, height and 255.
static void readShortHeader(std::istream* file, const std::string& kind, HostPicture* picture,
                            int32_t* largest) {
  *file >> picture->width >> picture->height >> *largest;
  picture->planes = kind == "P6" ? 3 : 1;
}

// "P7", words that each have a value behind them, and ENDHDR.
static void readLongHeader(std::istream* file, HostPicture* picture, int32_t* largest) {
  for (std::string word; *file >> word && word != "ENDHDR";) {
    std::string value;
    *file >> value;
    const int32_t number = std::atoi(value.c_str());
    if (word == "WIDTH") picture->width = number;
    if (word == "HEIGHT") picture->height = number;
    if (word == "DEPTH") picture->planes = number;
    if (word == "MAXVAL") *largest = number;
  }
}

static HostPicture readNetpbm(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string kind;
  HostPicture picture;
  int32_t largest = 0;
  file >> kind;
  if (kind == "P5" || kind == "P6") readShortHeader(&file, kind, &picture, &largest);
  if (kind == "P7") readLongHeader(&file, &picture, &largest);
  file.get();
  if (!file || largest != 255 || picture.width < 1 || picture.height < 1 || picture.planes < 1 ||
      picture.planes > 4) {
    failWith(path + ": is no binary PPM, PGM or PAM of 8 bits");
  }
  picture.samples.resize(static_cast<size_t>(picture.width) * static_cast<size_t>(picture.height) *
                         static_cast<size_t>(picture.planes));
  file.read(reinterpret_cast<char*>(picture.samples.data()),
            static_cast<std::streamsize>(picture.samples.size()));
  if (!file) failWith(path + ": is cut off");
  return picture;
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
  BITMAPINFO info = rowsFromTop(size.bmWidth, size.bmHeight, 32);
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

static std::string headerOf(const HostPicture& picture) {
  const std::string width = std::to_string(picture.width);
  const std::string height = std::to_string(picture.height);
  if (picture.planes == 1 || picture.planes == 3) {
    return (picture.planes == 1 ? "P5\n" : "P6\n") + width + " " + height + "\n255\n";
  }
  return "P7\nWIDTH " + width + "\nHEIGHT " + height + "\nDEPTH " + std::to_string(picture.planes) +
         "\nMAXVAL 255\nTUPLTYPE " + (picture.planes == 2 ? "GRAYSCALE_ALPHA" : "RGB_ALPHA") +
         "\nENDHDR\n";
}

void writePicture(const std::string& path, const HostPicture& picture) {
  const std::string header = headerOf(picture);
  std::vector<uint8_t> bytes(header.begin(), header.end());
  bytes.insert(bytes.end(), picture.samples.begin(), picture.samples.end());
  writeBytes(path, bytes);
}

void writeBitmap(const std::string& path, int32_t width, int32_t height,
                 const std::vector<uint32_t>& pixels) {
  BITMAPFILEHEADER file = {};
  BITMAPINFO info = rowsFromTop(width, height, 32);
  file.bfType = 0x4D42;  // "BM"
  file.bfOffBits = sizeof(file) + sizeof(info.bmiHeader);
  file.bfSize = file.bfOffBits + static_cast<DWORD>(pixels.size() * sizeof(pixels[0]));
  std::vector<uint8_t> bytes(file.bfSize);
  std::memcpy(bytes.data(), &file, sizeof(file));
  std::memcpy(bytes.data() + sizeof(file), &info.bmiHeader, sizeof(info.bmiHeader));
  std::memcpy(bytes.data() + file.bfOffBits, pixels.data(), pixels.size() * sizeof(pixels[0]));
  writeBytes(path, bytes);
}
