// mac_roman: picture names of old settings files, from the Macintosh character set.

#pragma once

// Replaces every byte of 128 or more by its Windows code, in place; a byte without one stays.
void windowsFromMacRoman(char* text);
