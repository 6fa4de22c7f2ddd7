// embed_resources: turns picture files into the C++ source of the resource tables.
//   embed_resources OUTPUT.cpp [FILE...]
// A file's name begins with its resource number and ends in its kind: 135-texture-size.bmp. Files
// that end in .pack are packs by their scale, and come alone.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/resource_access.h"
#include "platform/resources/picture_files.h"

struct Resource {
  int32_t id;
  FilePicture picture;
};

struct Resources {
  std::vector<Resource> pictures;
  std::vector<Resource> cursors;
};

static std::vector<uint8_t> readWhole(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("the file cannot be read");
  return std::vector<uint8_t>(std::istreambuf_iterator<char>(file), {});
}

static int32_t numberOf(const std::filesystem::path& path) {
  int32_t number = 0;
  for (const char digit : path.filename().string()) {
    if (digit < '0' || digit > '9') break;
    number = number * 10 + (digit - '0');
    if (number > 65535) break;
  }
  if (number == 0 || number > 65535) {
    throw std::runtime_error("the name begins with no resource number");
  }
  return number;
}

static void addResource(const std::filesystem::path& path, Resources* resources) {
  const std::vector<uint8_t> file = readWhole(path);
  const std::string kind = path.extension().string();
  const int32_t id = numberOf(path);
  if (kind == ".bmp") {
    resources->pictures.push_back({id, readBitmapFile(file)});
  } else if (kind == ".ico") {
    resources->pictures.push_back({kIconNumbers + id, readIconFile(file)});
  } else if (kind == ".cur") {
    resources->cursors.push_back({id, readCursorFile(file)});
  } else {
    throw std::runtime_error("the file is neither bitmap, icon nor cursor");
  }
}

static void sortById(std::vector<Resource>* table) {
  std::sort(table->begin(), table->end(),
            [](const Resource& a, const Resource& b) { return a.id < b.id; });
  for (size_t i = 1; i < table->size(); ++i) {
    if ((*table)[i].id == (*table)[i - 1].id) {
      throw std::runtime_error("two pictures have the number " + std::to_string((*table)[i].id));
    }
  }
}

// As a string, which compiles many times faster than a list of numbers.
static void writeBytes(std::ostream& out, const std::string& name,
                       const std::vector<uint8_t>& bytes) {
  constexpr size_t kBytesPerLine = 24;
  out << "static const uint8_t " << name << "[] =";
  for (size_t i = 0; i < bytes.size(); ++i) {
    if (i % kBytesPerLine == 0) out << (i == 0 ? "\n  \"" : "\"\n  \"");
    char escape[5];
    std::snprintf(escape, sizeof(escape), "\\%03o", bytes[i]);
    out << escape;
  }
  out << "\";\n";
}

// The last row is no picture: a table may be empty, an array may not.
static void writeTable(std::ostream& out, const std::string& name,
                       const std::vector<Resource>& table) {
  for (const Resource& resource : table) {
    const std::string id = std::to_string(resource.id);
    writeBytes(out, name + "Rgb" + id, resource.picture.rgb);
    if (!resource.picture.coverage.empty()) {
      writeBytes(out, name + "Coverage" + id, resource.picture.coverage);
    }
  }
  out << "static const EmbeddedPicture " << name << "Table[] = {\n";
  for (const Resource& resource : table) {
    const FilePicture& picture = resource.picture;
    const std::string id = std::to_string(resource.id);
    out << "  {" << id << ", " << picture.width << ", " << picture.height << ", " << name << "Rgb"
        << id << ", " << (picture.coverage.empty() ? "nullptr" : name + "Coverage" + id) << ", "
        << picture.hotX << ", " << picture.hotY << "},\n";
  }
  out << "  {}};\n\nstd::span<const EmbeddedPicture> " << name << "() {\n  return {" << name
      << "Table, " << table.size() << "};\n}\n\n";
}

static void writePacks(std::ostream& out, const std::vector<std::filesystem::path>& files) {
  std::string table;
  for (const std::filesystem::path& file : files) {
    const std::vector<uint8_t> bytes = readWhole(file);
    const std::string scale = std::to_string(numberOf(file));
    writeBytes(out, "pack" + scale, bytes);
    table += "  {" + scale + ", pack" + scale + ", " + std::to_string(bytes.size()) + "},\n";
  }
  out << "static const EmbeddedPack packs[] = {\n"
      << table << "  {}};\n\nstd::span<const EmbeddedPack> embeddedPacks() {\n  return {packs, "
      << files.size() << "};\n}\n";
}

static void embedPacks(const char* output, const std::vector<std::filesystem::path>& files) {
  std::ofstream out(output, std::ios::trunc);
  out << "#include \"platform/resource_table.h\"\n\n";
  writePacks(out, files);
  out.close();
  if (!out) throw std::runtime_error(std::string(output) + ": the file cannot be written");
}

static void embed(const char* output, const std::vector<std::filesystem::path>& files) {
  Resources resources;
  for (const std::filesystem::path& file : files) {
    try {
      addResource(file, &resources);
    } catch (const std::exception& error) {
      throw std::runtime_error(file.string() + ": " + error.what());
    }
  }
  sortById(&resources.pictures);
  sortById(&resources.cursors);
  std::ofstream out(output, std::ios::trunc);
  out << "#include \"platform/resource_table.h\"\n\n";
  writeTable(out, "embeddedPictures", resources.pictures);
  writeTable(out, "embeddedCursors", resources.cursors);
  out.close();
  if (!out) throw std::runtime_error(std::string(output) + ": the file cannot be written");
}

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: embed_resources OUTPUT.cpp [FILE...]\n", stderr);
    return 2;
  }
  try {
    const std::vector<std::filesystem::path> files(argv + 2, argv + argc);
    const bool packs = !files.empty() && files.front().extension() == ".pack";
    (packs ? embedPacks : embed)(argv[1], files);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "embed_resources: %s\n", error.what());
    return 1;
  }
}
