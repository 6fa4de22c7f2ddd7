// alerts: how the module tells the user about a failure. The alerts are known by name; their
// titles, texts and buttons stand here, how they look is the back end's.
//
// Texts may carry four parameters, written ^0 to ^3. The parameters belong to the module as a
// whole and keep their texts until they are set again.

#pragma once

#include <cstdint>

constexpr char kNotEnoughMemoryAlert[] = "NOT_ENOUGH_MEMORY";  // answers 1
constexpr char kFileNotFoundAlert[] = "FILE_NOT_FOUND";        // answers 1 or kFindFolder
constexpr int32_t kFindFolder = 2;

// Strings of the string table. Those about a file carry its name as parameter 0.
constexpr int32_t kPreviewUnavailableString = 16999;
constexpr int32_t kCannotOpenString = 17000;
constexpr int32_t kNotSettingsString = 17001;
constexpr int32_t kDamagedSettingsString = 17002;
constexpr int32_t kLimitedSettingsString = 17003;
constexpr int32_t kCannotSaveString = 17004;
constexpr int32_t kNotPictureString = 17005;
constexpr int32_t kPathTooLongString = 17006;
constexpr int32_t kNameUnusableString = 17007;

constexpr int32_t kAlertTextBytes = 1500;  // working text: at most 1499 characters

// Sets the four parameters, each cut to 255 characters; a null text makes its parameter empty.
void setAlertParameters(const char* p0, const char* p1, const char* p2, const char* p3);

// Replaces the markers of the parameters that are not empty, in a text of kAlertTextBytes bytes.
// An inserted text is searched in its turn from its second character on. What outgrows the text is
// cut off.
void expandAlertText(char* text);

// Shows an alert modally; the number of the button that closed it, -1 when it cannot be shown.
int32_t showAlert(const char* name);

// Shows a message box with a string of the string table, its parameters replaced.
void showStringAlert(int32_t number);

// The same about a file, whose name becomes the first parameter.
void showFileAlert(int32_t number, const char* name);
