// usage_errors: what is wrong with a command line, and what would have been right.

#pragma once

#include <string>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

std::string describeUsageError(const CLI::App& app, const CLI::ParseError& error);
