// remembered_file: the file in which the desktop back end remembers values, read without its
// library.

#pragma once

#include <optional>
#include <string>

// In UTF-8; nothing when none of this name is remembered.
std::optional<std::string> readRememberedFile(const std::string& name);
