// dialog_runs: the main dialog in the substitute host, on any back end.

#pragma once

#include <functional>
#include <string>

#include "entry/session_record.h"
#include "tests/support/dialog/dialog_user.h"
#include "tests/support/hosts/host_pictures.h"

// Opens a host on a picture, starts the filter with its dialog, plays, and ends the run. The result
// word. `prepare` is called when the settings are made and before the dialog is shown. The host
// stays open, for a look at it; the next run closes it.
int16_t runDialog(const HostSwitches& switches, const HostPicture& picture, const HostMask& mask,
                  const DialogPlay& play, const std::function<void()>& prepare = nullptr);

// The same on a picture of 40 x 30 without a mask.
int16_t runDialog(const DialogPlay& play);

// The filter once more in the host that is open, which keeps its settings.
int16_t rerunDialog(const DialogPlay& play);

// Switches of a host that draws the preview into the dialog and remembers it.
HostSwitches displayingHost();

// The session of the open host.
SessionRecord* hostSession();

// A number setting of the open host, by its field's name.
int32_t settingOf(const char* name);

// A path of this process in the folder for temporary files.
std::string temporaryFile(const std::string& name);

// A place given at 100 percent, in pixels at the dialog's scale; and one so far from another.
Point at(int32_t h, int32_t v);
Point shifted(Point point, int32_t h, int32_t v);

// Where a slider's value lies: a press there sets it.
Point sliderPoint(int32_t id, int32_t value);

// Middle of a control.
Point middleOf(int32_t id);

// Chooses the n-th row (from 1) of a picker's pop-up.
void chooseRow(DialogUser& user, int32_t picker, int32_t row);
