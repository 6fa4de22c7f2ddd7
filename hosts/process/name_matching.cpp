#include "hosts/process/name_matching.h"

#include <algorithm>
#include <cstdint>

constexpr size_t kTellingStart = 4;  // letters that tell which name was begun

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

// A slip changes no more than every third letter.
static bool isNear(size_t distance, const std::string& text, const std::string& name) {
  return distance <= std::max<size_t>(1, std::max(text.size(), name.size()) / 3);
}

std::string nearestName(const std::string& text, const std::vector<std::string>& names) {
  const std::string folded = foldedName(text);
  std::string nearest;
  size_t least = SIZE_MAX;
  for (const std::string& name : names) {
    const std::string other = foldedName(name);
    const bool begun = folded.size() >= kTellingStart && other.starts_with(folded);
    const size_t distance = begun ? 1 : editDistance(folded, other);
    if (distance >= least || !isNear(distance, folded, other)) continue;
    least = distance;
    nearest = name;
  }
  return nearest;
}

std::string suggestionFor(const std::string& text, const std::vector<std::string>& names) {
  const std::string nearest = nearestName(text, names);
  return nearest.empty() ? "" : "; did you mean " + nearest + "?";
}
