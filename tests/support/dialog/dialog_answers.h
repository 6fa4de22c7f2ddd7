// dialog_answers: what the user of a real back end answers choosers with, and what has been shown.
// Those of dialog_user.h put the answers in and ask for the counts.

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

using ColorAnswer = std::optional<std::array<uint8_t, 3>>;

void forgetAnswers();

// The next answer; empty, which cancels, when there is none.
std::string nextFileAnswer();
ColorAnswer nextColorAnswer();

void noteChooser(const std::string& title);
void noteAlert();
void noteSheet();
