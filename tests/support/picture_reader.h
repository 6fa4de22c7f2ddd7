// picture_reader: binary portable pictures (P6 colour, P5 grey, 8 bits a sample) for the tests.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct TestPicture {
  int32_t width = 0;
  int32_t height = 0;
  int32_t planes = 0;            // 3 colour, 1 grey
  std::vector<uint8_t> samples;  // interleaved, row after row
};

// False when the file is missing, of another kind, or not as long as its header says.
bool readPicture(const std::string& path, TestPicture* picture);
