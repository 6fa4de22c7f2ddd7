#include "hosts/command_line/name_matching.h"

#include <algorithm>
#include <cstdint>

std::string foldedName(const std::string& text) {
  std::string folded = text;
  for (char& c : folded) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (c == '-' || c == '_') c = ' ';
  }
  return folded;
}

// How many letters have to be inserted, removed or replaced to turn one text into the other.
static size_t editDistance(const std::string& a, const std::string& b) {
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
    }
  }
  return row[b.size()];
}

std::string nearestName(const std::string& text, const std::vector<std::string>& names) {
  const std::string folded = foldedName(text);
  std::string nearest;
  size_t least = SIZE_MAX;
  for (const std::string& name : names) {
    const size_t distance = editDistance(folded, foldedName(name));
    if (distance >= least) continue;
    least = distance;
    nearest = name;
  }
  return nearest;
}
