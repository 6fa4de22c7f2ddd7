// manual_page: the manual page in roff, from the commands, options and settings there are.

#pragma once

#include <string>

#include "hosts/command_line/command_outline.h"

std::string manualPage(const CommandOutline& program);
