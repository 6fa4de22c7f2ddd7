// job: one use of the module, as a line of words says it.

#pragma once

#include <string>
#include <vector>

#include "hosts/windows_host/host_manners.h"
#include "services/rectangle.h"

struct Job {
  std::string picture;
  std::string mask;
  std::string settings;     // a settings file that fills the parameter block
  std::string environment;  // paths for the values that the module remembers
  std::string texture;
  bool hasSeed = false;
  unsigned seed = 0;
  std::string dialogScript;
  bool byHand = false;      // the dialog is left to whoever sits there
  std::string againScript;  // for a second dialog
  std::string owner;        // of the dialogs: "" none, "window", "gone", "missing"
  bool hasArea = false;
  Rectangle area = {};
  HostManners manners;
  std::string output;
  std::string settingsOutput;
  std::string keptValuesOutput;
  std::string keptSettingsOutput;
  std::string bitmapsOutput;
  std::vector<std::string> withheld;
  bool forgets = false;
  bool ordinaryUser = false;
  bool fullDisk = false;
  bool knowsScales = false;  // the system does not enlarge its windows
  bool about = false;
  bool reloads = false;
  bool repeats = false;
};

// What the words mean; ends the program when they mean nothing.
Job parseJob(const std::vector<std::string>& words);

// Runs it with the module that is loaded from a path; the module's result.
int runJob(const Job& job, const std::string& modulePath);

// The words of a job, for people.
extern const char kJobHelp[];
