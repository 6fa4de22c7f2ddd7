// command_text: the settings as the command line that gives the same picture.

#pragma once

#include <cstdint>

struct EffectSettings;

constexpr int32_t kCommandTextBytes = 4096;

// Writes `morvalis apply IMAGE -o OUT --set ...` with every setting that differs from its default,
// the picture files that are in use, and the seed of what is random.
void writeCommandText(const EffectSettings& settings, char* text);
