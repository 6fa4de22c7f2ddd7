#include "hosts/commands/output_names.h"

#include <map>
#include <set>

#include "hosts/process/command_failure.h"
#include "hosts/process/file_access.h"
#include "hosts/process/file_names.h"

static void checkCollisions(const std::vector<std::string>& images,
                            const std::vector<std::string>& others,
                            const std::vector<std::string>& outputs) {
  std::map<std::string, size_t> written;
  for (size_t i = 0; i < outputs.size(); ++i) {
    const auto [other, isNew] = written.emplace(placeOf(outputs[i]), i);
    if (!isNew) {
      failOnUsage(images[other->second] + " and " + images[i] + " would both be written to " +
                  outputs[i]);
    }
  }
  for (size_t i = 0; i < images.size(); ++i) {
    if (images[i] == kStandardStream) continue;
    const auto found = written.find(placeOf(images[i]));
    if (found == written.end()) continue;
    const std::string& source = images[found->second];
    failOnUsage("the result of " + source + " would replace " +
                (found->second == i ? "it" : images[i] + ", which is to be read too") +
                "; choose another name, as in -o '{name}-lit.png'");
  }
  for (const std::string& other : others) {
    if (other.empty() || other == kStandardStream) continue;
    const auto found = written.find(placeOf(other));
    if (found == written.end()) continue;
    failOnUsage("the result of " + images[found->second] + " would replace " + other +
                ", which is to be read too; choose another name, as in -o '{name}-lit.png'");
  }
}

static std::vector<std::string> freeNames(const std::vector<std::string>& wanted) {
  std::set<std::string> places;
  std::vector<std::string> names;
  for (const std::string& name : wanted) {
    names.push_back(freeName(name, [&places](const std::string& candidate) {
      return fileExists(candidate) || places.contains(placeOf(candidate));
    }));
    places.insert(placeOf(names.back()));
  }
  return names;
}

std::vector<std::string> outputNames(const std::vector<std::string>& images,
                                     const std::vector<std::string>& others,
                                     const std::string& pattern, bool keep) {
  if (keep && pattern == kStandardStream) failOnUsage("--keep is about files; -o - has none");
  const bool marked = hasMark(pattern);
  if (images.size() > 1 && !marked) {
    failOnUsage("-o " + pattern + ": several pictures need {name} in the result's name, as in -o " +
                "'out/{name}.png' or '{folder}/{name}-lit.png'");
  }
  std::vector<std::string> outputs;
  for (const std::string& image : images) outputs.push_back(withName(pattern, image));
  if (keep) return freeNames(outputs);
  if (marked) checkCollisions(images, others, outputs);
  return outputs;
}
