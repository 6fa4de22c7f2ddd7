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

// The same of words that end in "=", before they are parsed: such an option would take the next
// word for its value.
void checkWords(int argc, char** argv);

std::string describeUsageError(const CLI::App& app, const CLI::ParseError& error);
