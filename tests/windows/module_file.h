// module_file: what stands in a Windows module, read from its file.

#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

struct ModuleFile {
  uint16_t machine = 0;
  uint16_t subsystem = 0;
  uint16_t characteristics = 0;  // of a library, for who loads it
  std::set<std::string> exports;
  std::set<std::string> libraries;  // that it imports from, small letters
  // By type ("PIPL", or "#2" for a numbered type) and name ("ABOUTBOX", "#148").
  std::map<std::string, std::map<std::string, std::vector<uint8_t>>> resources;
};

// Fails the test when the file is not what it should be.
ModuleFile readModuleFile(const std::string& path);
