// command_help: `morvalis help`, and what the program says when it is called without a command.

#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

// The help of the command that the words lead to, of the program for none. Ends the command when
// there is none of this name.
std::string helpText(const CLI::App& app, const std::vector<std::string>& words);
