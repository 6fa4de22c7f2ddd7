// substitute_host: a host of the filter module, for running it without an image editor. It lays
// out the record and the suites as real hosts do, exchanges rows, and calls the entry point in the
// order of real hosts. Every service can be withheld or made to fail, everything the module still
// holds stands in a ledger, and every call is logged.
//
// One host at a time: the interface's callbacks carry no context, so the open host is a static of
// this library.

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "entry/host_interface.h"

// An interleaved picture with 8-bit samples: 1 grey, 2 grey and alpha, 3 RGB, 4 RGB and alpha.
struct HostPicture {
  int32_t width = 0;
  int32_t height = 0;
  int32_t planes = 0;
  std::vector<uint8_t> samples;  // width x height x planes
};

// How a service suite is offered. Of the two scripting suites the reading one takes the fault.
enum class SuiteOffer {
  usable,
  absent,
  wrongVersion,  // one above the expected version
  shortCount,    // one procedure fewer than the module needs
  missingProc,   // one needed procedure is null
};

// Whether the output is mixed into the source picture row by row, which is then held only once, and
// cannot be filtered again. `whole` takes any selection, however faint, as a full one.
enum class InPlace { off, mixed, whole };

struct HostSwitches {
  bool advanceState = true;
  bool displayPixels = true;
  bool colorServices = true;
  SuiteOffer handleSuite = SuiteOffer::usable;
  SuiteOffer bufferSuite = SuiteOffer::usable;
  SuiteOffer scripting = SuiteOffer::absent;
  bool scriptingSuitesNull = false;   // with scripting usable: the block is there, both suites null
  bool scriptingShowsDialog = false;  // the answer to whether the dialog is to be shown

  bool moveBuffers = false;      // delivered rows sit at another address after every exchange,
                                 // buffers when they are locked again after an unlock
  bool dirtyMemory = true;       // new blocks and buffers hold garbage instead of zeros
  bool deliverMask = true;       // false: haveMask is set, but maskData stays null
  bool maskBeyondOutput = true;  // false: it is cut to the output's rectangle, where there is one
  bool honourSampling = true;    // false: rates are ignored
  InPlace inPlace = InPlace::off;
  bool keepsLog = true;         // false: hostLog() and hostExchanges() stay empty
  bool displaysTarget = false;  // displayPixels keeps a copy of what it was given

  int32_t abortAtTest = 0;     // the n-th abort test answers yes; 0 never
  int32_t failExchangeAt = 0;  // the n-th of hostExchanges() answers exchangeError; 0 never
  int16_t exchangeError = -36;
  int32_t refuseAllocationAt = 0;  // the n-th handle or buffer is refused; 0 never
  bool refuseAllBuffers = false;
  bool bufferIdsFromZero = false;

  // Draws for displayPixels; nothing is drawn without it (see drawIntoTarget).
  std::function<void(const HostPicture& shown, int32_t row, int32_t column, void* context)> display;

  std::function<bool()> abortTest;                            // asked besides abortAtTest
  std::function<void(int32_t done, int32_t total)> progress;  // told of every progress report
};

// A selection of the picture's size, 0 to 255 a pixel; no samples: the host has no mask.
using HostMask = std::vector<uint8_t>;

// Opens the host on a picture. The filter rectangle is the whole picture until setFilterRect.
void openHost(const HostSwitches& switches, HostPicture picture, HostMask mask);
void setFilterRect(const Rectangle& rect);

// Frees all that the host holds. The ledger is empty afterwards; look at it before.
void closeHost();

// Ends the use of the module without closing the host: data slot and parameter handle back to 0
// and their blocks freed, as when an editor restarts.
void forgetModule();

// Gives the session record's and the settings' blocks other handles and addresses with the same
// bytes, as when an editor has kept them while the module was unloaded.
void copyKeptBlocks();

// The record that the module is called with; tests may change it between calls.
FilterRecord* hostRecord();

// One call of the entry point; its result word. `enteredWith` is what the word holds before.
int16_t callSelector(int16_t selector, int16_t enteredWith = 0);

// About, which gets a record of its own.
int16_t callAbout(void* window = nullptr);

// Start, then Continue with an exchange before each until the request rectangles are empty, the
// last exchange, Finish. Stops at the first nonzero result and returns it; -1 when the module keeps
// asking for rows without end. Afterwards nothing is delivered any more.
int16_t renderFilter();

// Prepare and renderFilter, as a host repeats a filter (no dialog). Begins at the source again.
int16_t repeatFilter();

// Parameters, Prepare and renderFilter, as from the host's menu (the module shows its dialog).
// Begins at the source again.
int16_t runFilter();

// The filtered picture so far: the source where nothing has been written. The selection does not
// limit it unless the host works in place.
const HostPicture& filteredPicture();

// The same, moved out of the host, which can only be closed afterwards.
HostPicture takeFilteredPicture();

// Mixes an effect into its source by a mask as an editor does, rounded to nearest. Extra planes
// (2 of 2, 4 of 4) stay the source's. Without a mask the effect stands as it is.
HostPicture mixByMask(const HostPicture& source, const HostPicture& effect, const HostMask& mask);

// What the module holds of the host's memory.
struct HostLedger {
  int32_t handles;        // not yet disposed of
  int32_t buffers;        // not yet freed
  int32_t lockedHandles;  // locked more often than unlocked
  int32_t lockedBuffers;
  int32_t allocations;  // handles and buffers asked for so far, refused ones included
  int32_t misuses;      // calls on handles, buffers, descriptors or tokens that the host does not
                        // hold, and unlocks without a lock
};
HostLedger hostLedger();

// Every call of a host service in order, by the procedure's name ("lockProc" and "unlockProc" are
// those of both suites); and the requests of every exchange, the module's and the host's own.
struct HostExchange {
  Rectangle inRect;
  Rectangle outRect;
  Rectangle maskRect;
  int32_t inputRate;
  int32_t maskRate;
};
const std::vector<std::string>& hostLog();
const std::vector<HostExchange>& hostExchanges();
int32_t hostCallCount(const std::string& name);

// The n-th call from now on of a service that can fail does so, once, exchanges aside; 0: none.
void failHostCall(int32_t n);

// The procedure that has failed since failHostCall; null before.
const char* failedHostCall();

// Scripting: the keys that the module finds when it opens the descriptor (none: no descriptor), and
// those it recorded last. What it recorded is what it finds at the next run.
struct ScriptValue {
  uint32_t key = 0;
  uint32_t type = 0;  // "UntF", "enum" or "bool"; also "long", "doub" and "type"
  uint32_t unit = 0;  // of a unit float; the type of an enumeration
  double number = 0;
  uint32_t enumeration = 0;
  bool boolean = false;
  int16_t error = 0;  // what the getter answers instead of a value, when not 0
};
void setScript(const std::vector<ScriptValue>& values);
const std::vector<ScriptValue>& recordedScript();

// The picture of the last displayPixels call (displaysTarget); planes is 1 or 3. Like real hosts
// the service refuses a null context, a null base address and row bytes 0.
const HostPicture& displayedPicture();

// A way to display for back ends whose context is the pixels themselves (PixelTarget).
void drawIntoTarget(const HostPicture& shown, int32_t row, int32_t column, void* context);
