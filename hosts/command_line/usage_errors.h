// usage_errors: what is wrong with a command line, and what would have been right.

#pragma once

#include <string>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

std::string describeUsageError(const CLI::App& app, const CLI::ParseError& error);

// A setting among the files, since each needs a --set of its own.
std::string describeStraySetting(const std::string& text);
