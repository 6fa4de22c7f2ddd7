// picture_files: the files that this host takes and gives: PPM, PGM and PAM (8 bits, binary), and
// BMP for input. Each ends the program with the reason when a file is not what it should be.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "hosts/substitute_host/substitute_host.h"

HostPicture readPicture(const std::string& path);

// A grey picture of the size of another one.
HostMask readMask(const std::string& path, const HostPicture& picture);

// PGM for one plane, PPM for three, PAM for two and four.
void writePicture(const std::string& path, const HostPicture& picture);

// Rows from the top, 0x00RRGGBB a pixel, as a BMP file of 32 bits.
void writeBitmap(const std::string& path, int32_t width, int32_t height,
                 const std::vector<uint32_t>& pixels);

std::vector<uint8_t> readBytes(const std::string& path);
void writeBytes(const std::string& path, const std::vector<uint8_t>& bytes);

[[noreturn]] void failWith(const std::string& reason);
