// usage_errors: what is wrong with a command line, and what would have been right.

#pragma once

#include <string>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

// Ends the command when an option has been given an empty value, as from a variable that is not
// set.
void checkValues(const CLI::App& app);

std::string describeUsageError(const CLI::App& app, const CLI::ParseError& error);
