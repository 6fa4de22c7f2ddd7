#include "tests/windows/module_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstring>

#include "tests/windows/wine_host.h"

struct Section {
  uint32_t address;
  uint32_t size;
  uint32_t offset;  // in the file
};

struct Image {
  std::vector<uint8_t> bytes;
  std::vector<Section> sections;
  size_t directories;  // offset of the table in the file

  template <typename Value>
  Value at(size_t offset) const {
    Value value = {};
    if (offset + sizeof(value) <= bytes.size()) {
      std::memcpy(&value, bytes.data() + offset, sizeof(value));
    } else {
      ADD_FAILURE() << "beyond the file: " << offset;
    }
    return value;
  }

  size_t offsetOf(uint32_t address) const {
    for (const Section& section : sections) {
      if (address >= section.address && address < section.address + section.size) {
        return address - section.address + section.offset;
      }
    }
    ADD_FAILURE() << "no section holds " << address;
    return 0;
  }

  std::string textAt(uint32_t address) const {
    std::string text;
    for (size_t at = offsetOf(address); at < bytes.size() && bytes[at] != 0; ++at) {
      text += static_cast<char>(bytes[at]);
    }
    return text;
  }

  uint32_t directory(int32_t index) const {
    return at<uint32_t>(directories + 8 * static_cast<size_t>(index));
  }
};

static Image openImage(const std::string& path, ModuleFile* file) {
  Image image = {readBytes(path), {}, 0};
  const auto header = image.at<uint32_t>(0x3C);
  EXPECT_EQ(image.at<uint32_t>(header), 0x4550U);  // "PE"
  file->machine = image.at<uint16_t>(header + 4);
  const auto count = image.at<uint16_t>(header + 6);
  const size_t optional = header + 24;
  const bool wide = image.at<uint16_t>(optional) == 0x20B;
  file->subsystem = image.at<uint16_t>(optional + 68);
  file->characteristics = image.at<uint16_t>(optional + 70);
  image.directories = optional + (wide ? 112 : 96);
  size_t at = optional + image.at<uint16_t>(header + 20);
  for (uint16_t i = 0; i < count; ++i, at += 40) {
    image.sections.push_back({image.at<uint32_t>(at + 12),
                              std::max(image.at<uint32_t>(at + 8), image.at<uint32_t>(at + 16)),
                              image.at<uint32_t>(at + 20)});
  }
  return image;
}

static void readExports(const Image& image, ModuleFile* file) {
  const size_t table = image.offsetOf(image.directory(0));
  const auto names = image.at<uint32_t>(table + 24);
  const size_t list = image.offsetOf(image.at<uint32_t>(table + 32));
  for (uint32_t i = 0; i < names; ++i) {
    file->exports.insert(image.textAt(image.at<uint32_t>(list + 4 * i)));
  }
  EXPECT_EQ(image.at<uint32_t>(table + 20), names);  // none without a name
}

static void readImports(const Image& image, ModuleFile* file) {
  for (size_t at = image.offsetOf(image.directory(1)); image.at<uint32_t>(at + 12) != 0; at += 20) {
    std::string name = image.textAt(image.at<uint32_t>(at + 12));
    for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    file->libraries.insert(name);
  }
}

static std::string resourceName(const Image& image, size_t base, uint32_t id) {
  if ((id & 0x80000000U) == 0) return "#" + std::to_string(id);
  const size_t at = base + (id & 0x7FFFFFFFU);
  std::string name;
  for (uint16_t i = 0; i < image.at<uint16_t>(at); ++i) {
    name += static_cast<char>(image.at<uint16_t>(at + 2 + 2 * size_t{i}));
  }
  return name;
}

struct ResourceEntry {
  std::string name;
  uint32_t target;  // offset from the table's base; the highest bit: another table
};

static std::vector<ResourceEntry> entriesOf(const Image& image, size_t base, uint32_t table) {
  std::vector<ResourceEntry> entries;
  size_t at = base + (table & 0x7FFFFFFFU);
  const int32_t count = image.at<uint16_t>(at + 12) + image.at<uint16_t>(at + 14);
  at += 16;
  for (int32_t i = 0; i < count; ++i, at += 8) {
    entries.push_back(
        {resourceName(image, base, image.at<uint32_t>(at)), image.at<uint32_t>(at + 4)});
  }
  return entries;
}

static void readResources(const Image& image, ModuleFile* file) {
  const size_t base = image.offsetOf(image.directory(2));
  for (const ResourceEntry& type : entriesOf(image, base, 0)) {
    for (const ResourceEntry& name : entriesOf(image, base, type.target)) {
      for (const ResourceEntry& language : entriesOf(image, base, name.target)) {
        const size_t leaf = base + language.target;
        const size_t from = image.offsetOf(image.at<uint32_t>(leaf));
        EXPECT_EQ(image.at<uint32_t>(leaf) % 4, 0U);  // hosts want it at a whole word
        const auto size = image.at<uint32_t>(leaf + 4);
        file->resources[type.name][name.name] =
            std::vector<uint8_t>(image.bytes.begin() + static_cast<std::ptrdiff_t>(from),
                                 image.bytes.begin() + static_cast<std::ptrdiff_t>(from + size));
      }
    }
  }
}

ModuleFile readModuleFile(const std::string& path) {
  ModuleFile file;
  const Image image = openImage(path, &file);
  readExports(image, &file);
  readImports(image, &file);
  readResources(image, &file);
  return file;
}
