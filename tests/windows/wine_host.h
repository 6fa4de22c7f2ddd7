// wine_host: the Windows host and the module, run for a test in a folder of its own.

#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "hosts/substitute_host/substitute_host.h"

// Kinds of Windows go by 32 and 64.
std::string modulePath(int bits);
std::string kindName(const ::testing::TestParamInfo<int>& kind);  // of a parametrised test

// Makes an empty folder that holds the module and the host. Skips the test (and gives "") when they
// have not been built, or when no such program can be run here.
std::string wineFolder(int bits, const std::string& name);

// Copies a program of that build into the folder; false when it has not been built.
bool takeProgram(int bits, const std::string& folder, const std::string& name);

// Runs a program of the system's own in a folder.
void runOwnProgram(int bits, const std::string& folder, const std::vector<std::string>& words);

// Runs the host there with the module and these words; everything it printed. Its exit code counts
// as a failure of the test unless it is `expected`.
std::string runWindowsHost(int bits, const std::string& folder,
                           const std::vector<std::string>& words, int expected = 0);

// Files in the formats that the host reads and writes.
void writeBytes(const std::string& path, const std::vector<uint8_t>& bytes);
void writeText(const std::string& path, const std::string& text);
std::vector<uint8_t> readBytes(const std::string& path);
void writePicture(const std::string& path, const HostPicture& picture);
std::vector<uint8_t> readSamples(const std::string& path, size_t count);  // behind any header

// A bitmap of 32 bits as the host saves it: rows from the top, three bytes a pixel.
HostPicture readShot(const std::string& path);
