// The scripts of the dialog on the back end without a screen. What they looked at goes into the
// file that the environment names, where another back end's tests compare it with their own.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "tests/support/dialog/dialog_recording.h"
#include "tests/support/dialog/dialog_scripts.h"

class DialogScripts : public ::testing::TestWithParam<DialogScript> {};

TEST_P(DialogScripts, Plays) {
  runScript(GetParam());
  const char* path = std::getenv("MORVALIS_RECORDING");
  if (path == nullptr) return;
  std::ofstream file(path);
  for (const std::string& line : recordedLines()) file << line << '\n';
}

INSTANTIATE_TEST_SUITE_P(None, DialogScripts, ::testing::ValuesIn(dialogScripts()),
                         [](const auto& instance) { return std::string(instance.param.name); });

class ScaledDialogScripts : public ::testing::TestWithParam<ScaledScript> {};

TEST_P(ScaledDialogScripts, Plays) {
  runScript(GetParam());
}

INSTANTIATE_TEST_SUITE_P(None, ScaledDialogScripts, ::testing::ValuesIn(scaledScripts()),
                         [](const auto& instance) { return nameOf(instance.param); });
