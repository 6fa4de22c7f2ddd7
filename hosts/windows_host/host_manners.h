// host_manners: habits of real hosts that a module has to live with, on the way between the
// substitute host and the module.

#pragma once

struct HostManners {
  bool harshCalls = false;  // the stack aligned to 4 bytes where the system allows that, rounding,
                            // precision and traps as programs of other compilers set them
  bool hidesSizes = false;  // at Parameters the record tells no sizes yet
  bool skipsFinish = false;
};

// From now on. A module that leaves other floating-point modes than it found ends the program.
void setHostManners(const HostManners& manners);
