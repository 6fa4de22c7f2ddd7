#include "tests/support/picture_reader.h"

#include <cctype>
#include <cstddef>
#include <fstream>
#include <iterator>

namespace {

constexpr int32_t kLargestSide = 30000;

// The next number of the header, after white space and comments; -1 when there is none.
int32_t nextNumber(const std::vector<char>& file, size_t* position) {
  size_t at = *position;
  while (at < file.size() &&
         (std::isspace(static_cast<unsigned char>(file[at])) != 0 || file[at] == '#')) {
    if (file[at] == '#') {
      while (at < file.size() && file[at] != '\n') ++at;
    } else {
      ++at;
    }
  }
  int32_t number = -1;
  while (at < file.size() && file[at] >= '0' && file[at] <= '9' && number <= kLargestSide) {
    number = (number < 0 ? 0 : number * 10) + (file[at] - '0');
    ++at;
  }
  *position = at;
  return number;
}

}  // namespace

bool readPicture(const std::string& path, TestPicture* picture) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return false;
  const std::vector<char> file((std::istreambuf_iterator<char>(stream)),
                               std::istreambuf_iterator<char>());
  if (file.size() < 3 || file[0] != 'P' || (file[1] != '5' && file[1] != '6')) return false;

  TestPicture read;
  read.planes = file[1] == '6' ? 3 : 1;
  size_t position = 2;
  read.width = nextNumber(file, &position);
  read.height = nextNumber(file, &position);
  const int32_t largest = nextNumber(file, &position);
  if (read.width < 1 || read.width > kLargestSide || read.height < 1 ||
      read.height > kLargestSide || largest != 255) {
    return false;
  }
  ++position;  // exactly one white space ends the header
  const size_t count = static_cast<size_t>(read.width) * read.height * read.planes;
  if (position > file.size() || file.size() - position != count) return false;
  read.samples.assign(file.begin() + static_cast<std::ptrdiff_t>(position), file.end());
  *picture = read;
  return true;
}
