#include "hosts/windows_host/host_manners.h"

#include <xmmintrin.h>

#include "entry/entry_point.h"
#include "entry/host_interface.h"
#include "hosts/windows_host/loaded_module.h"
#include "hosts/windows_host/picture_files.h"

static HostManners manners;

void setHostManners(const HostManners& wanted) {
  manners = wanted;
}

// --- Harsh calls ----------------------------------------------------------------------------

struct Arguments {
  intptr_t selector;
  void* block;
  intptr_t* slot;
  int16_t* result;
};

struct Modes {
  uint16_t control;        // of the floating-point unit
  uint32_t vectorControl;  // of the vector unit, without what has happened so far
};

// Round down, single precision, denormals are zero, and a trap for everything that can happen, so
// that the first rounded result ends the program.
constexpr Modes kHarshModes = {0x0440, 0xA040};
constexpr uint32_t kHappened = 0x3F;

static Modes currentModes() {
  Modes modes = {};
  asm volatile("fnstcw %0" : "=m"(modes.control));
  modes.vectorControl = _mm_getcsr() & ~kHappened;
  return modes;
}

static void setModes(const Modes& modes) {
  asm volatile("fnclex\n\tfldcw %0" : : "m"(modes.control));
  _mm_setcsr(modes.vectorControl);
}

static void callPlainly(const Arguments& arguments) {
  moduleEntry()(static_cast<int16_t>(arguments.selector), arguments.block, arguments.slot,
                arguments.result);
}

#if defined(__i386__)
// Four arguments below an address that is no multiple of 8.
static void callOnOddStack(const Arguments& arguments) {
  asm volatile(
      "movl %%esp, %%esi\n\t"
      "andl $-16, %%esp\n\t"
      "subl $12, %%esp\n\t"
      "pushl 12(%%edi)\n\t"
      "pushl 8(%%edi)\n\t"
      "pushl 4(%%edi)\n\t"
      "pushl (%%edi)\n\t"
      "call *%%ebx\n\t"
      "movl %%esi, %%esp"
      :
      : "D"(&arguments), "b"(moduleEntry())
      : "eax", "ecx", "edx", "esi", "cc", "memory");
}
#else
// Here every caller has to align the stack.
static void callOnOddStack(const Arguments& arguments) {
  callPlainly(arguments);
}
#endif

static void callHarshly(const Arguments& arguments) {
  const Modes own = currentModes();
  setModes(kHarshModes);
  callOnOddStack(arguments);
  const Modes left = currentModes();
  setModes(own);
  if (left.control != kHarshModes.control || left.vectorControl != kHarshModes.vectorControl) {
    failWith("the module leaves other floating-point modes than it found");
  }
}

// --- The entry that the substitute host calls -----------------------------------------------

static void callEntry(const Arguments& arguments) {
  if (manners.harshCalls) {
    callHarshly(arguments);
  } else {
    callPlainly(arguments);
  }
}

static void callWithoutSizes(const Arguments& arguments) {
  auto* record = static_cast<FilterRecord*>(arguments.block);
  const FilterRecord sizes = *record;
  record->imageSize = record->wholeSize = {};
  record->filterRect = {};
  record->planes = record->imageMode = 0;
  callEntry(arguments);
  record->imageSize = sizes.imageSize;
  record->wholeSize = sizes.wholeSize;
  record->filterRect = sizes.filterRect;
  record->planes = sizes.planes;
  record->imageMode = sizes.imageMode;
}

extern "C" void MORVALIS_CALL ENTRYPOINT(int16_t selector, void* parameterBlock, intptr_t* dataSlot,
                                         int16_t* result) {
  const Arguments arguments = {selector, parameterBlock, dataSlot, result};
  if (selector == kSelectorFinish && manners.skipsFinish) return;
  if (selector == kSelectorParameters && manners.hidesSizes) return callWithoutSizes(arguments);
  callEntry(arguments);
}
