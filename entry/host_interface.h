// host_interface: the filter plug-in interface as real hosts lay it out in memory, for 32-bit and
// 64-bit builds: result codes, service suites, the filter record. host_interface_checks.cpp proves
// every offset. Names are the published ones; nothing here has behaviour.
//
// The filter record is packed to 4 bytes on every target, so that on 64 bits a pointer may sit at
// an offset that is only a multiple of 4. Everything else is naturally aligned.

#pragma once

#include <cstdint>

#include "platform/export.h"
#include "services/rectangle.h"

// A handle is the address of a master pointer whose value is the block's address.
using Handle = void**;

// Opaque and pointer-sized: an address in one host, a small number in another.
using HostBufferId = intptr_t;

// Read and write tokens of the scripting suites.
using ReadToken = void*;
using WriteToken = void*;

constexpr uint32_t fourCharacterCode(const char (&text)[5]) {
  return static_cast<uint32_t>(static_cast<uint8_t>(text[0])) << 24 |
         static_cast<uint32_t>(static_cast<uint8_t>(text[1])) << 16 |
         static_cast<uint32_t>(static_cast<uint8_t>(text[2])) << 8 |
         static_cast<uint32_t>(static_cast<uint8_t>(text[3]));
}

// Result codes: what a selector leaves in the host's result word.
constexpr int16_t kNoError = 0;
constexpr int16_t kParameterError = -50;
constexpr int16_t kUserInformed = 1;          // an alert was shown, or the user stopped the render
constexpr int16_t kRenderBuffersMissing = 3;  // positive: hosts show nothing
constexpr int16_t kMemoryFull = -108;
constexpr int16_t kUserCanceled = -128;
constexpr int16_t kMissingParameter = -1715;  // scripting: a key was not there, which is no fault
constexpr int16_t kFilterBadParameters = -30100;

// Selectors of the entry point.
constexpr int16_t kSelectorAbout = 0;
constexpr int16_t kSelectorParameters = 1;
constexpr int16_t kSelectorPrepare = 2;
constexpr int16_t kSelectorStart = 3;
constexpr int16_t kSelectorContinue = 4;
constexpr int16_t kSelectorFinish = 5;

// Image modes.
constexpr int16_t kImageModeGrey = 1;
constexpr int16_t kImageModeRgb = 3;

constexpr int32_t kFixedOne = 0x00010000;  // 1.0 as 16.16 fixed point
constexpr int16_t kPaddingRepeatEdge = -1;

// --- Buffer suite ---------------------------------------------------------------------------

constexpr int16_t kBufferProcsVersion = 2;
constexpr uint16_t kBufferProcsCount = 5;

struct BufferProcs {
  int16_t bufferProcsVersion;
  int16_t numBufferProcs;
  int16_t(MORVALIS_CALL* allocateProc)(int32_t size, HostBufferId* id);
  void*(MORVALIS_CALL* lockProc)(HostBufferId id, uint8_t moveHigh);
  void(MORVALIS_CALL* unlockProc)(HostBufferId id);
  void(MORVALIS_CALL* freeProc)(HostBufferId id);
  int32_t(MORVALIS_CALL* spaceProc)();
};

// --- Handle suite ---------------------------------------------------------------------------

constexpr int16_t kHandleProcsVersion = 1;
constexpr uint16_t kHandleProcsCount = 7;

struct HandleProcs {
  int16_t handleProcsVersion;
  int16_t numHandleProcs;
  Handle(MORVALIS_CALL* newProc)(int32_t size);
  void(MORVALIS_CALL* disposeProc)(Handle handle);
  int32_t(MORVALIS_CALL* getSizeProc)(Handle handle);
  int16_t(MORVALIS_CALL* setSizeProc)(Handle handle, int32_t size);
  void*(MORVALIS_CALL* lockProc)(Handle handle, uint8_t moveHigh);
  void(MORVALIS_CALL* unlockProc)(Handle handle);
  void(MORVALIS_CALL* recoverSpaceProc)(int32_t size);
  void(MORVALIS_CALL* disposeRegularHandleProc)(Handle handle);  // absent when the count is 7
};

// --- Scripting suites -----------------------------------------------------------------------

constexpr int16_t kDescriptorVersion = 0;
constexpr uint16_t kReadDescriptorProcsCount = 18;
constexpr uint16_t kWriteDescriptorProcsCount = 16;
constexpr int16_t kPlayShowDialog = 1;  // playInfo: 0 no dialog, 1 dialog, 2 silent

struct SimpleReference {
  uint32_t desiredClass;
  uint32_t keyForm;
  uint8_t name[256];
  int32_t index;
  uint32_t type;
  uint32_t value;
};

struct ReadDescriptorProcs {
  int16_t readDescriptorProcsVersion;
  int16_t numReadDescriptorProcs;
  ReadToken(MORVALIS_CALL* openReadDescriptorProc)(Handle descriptor, uint32_t* keys);
  int16_t(MORVALIS_CALL* closeReadDescriptorProc)(ReadToken token);
  uint8_t(MORVALIS_CALL* getKeyProc)(ReadToken token, uint32_t* key, uint32_t* type,
                                     int32_t* flags);
  int16_t(MORVALIS_CALL* getIntegerProc)(ReadToken token, int32_t* value);
  int16_t(MORVALIS_CALL* getFloatProc)(ReadToken token, double* value);
  int16_t(MORVALIS_CALL* getUnitFloatProc)(ReadToken token, uint32_t* unit, double* value);
  int16_t(MORVALIS_CALL* getBooleanProc)(ReadToken token, uint8_t* value);
  int16_t(MORVALIS_CALL* getTextProc)(ReadToken token, Handle* value);
  int16_t(MORVALIS_CALL* getAliasProc)(ReadToken token, Handle* value);
  int16_t(MORVALIS_CALL* getEnumeratedProc)(ReadToken token, uint32_t* value);
  int16_t(MORVALIS_CALL* getClassProc)(ReadToken token, uint32_t* value);
  int16_t(MORVALIS_CALL* getSimpleReferenceProc)(ReadToken token, SimpleReference* value);
  int16_t(MORVALIS_CALL* getObjectProc)(ReadToken token, uint32_t* type, Handle* value);
  int16_t(MORVALIS_CALL* getCountProc)(ReadToken token, uint32_t* value);
  int16_t(MORVALIS_CALL* getStringProc)(ReadToken token, uint8_t* text);
  int16_t(MORVALIS_CALL* getPinnedIntegerProc)(ReadToken token, int32_t low, int32_t high,
                                               int32_t* value);
  int16_t(MORVALIS_CALL* getPinnedFloatProc)(ReadToken token, const double* low, const double* high,
                                             double* value);
  int16_t(MORVALIS_CALL* getPinnedUnitFloatProc)(ReadToken token, const double* low,
                                                 const double* high, uint32_t* unit, double* value);
};

struct WriteDescriptorProcs {
  int16_t writeDescriptorProcsVersion;
  int16_t numWriteDescriptorProcs;
  WriteToken(MORVALIS_CALL* openWriteDescriptorProc)();
  int16_t(MORVALIS_CALL* closeWriteDescriptorProc)(WriteToken token, Handle* result);
  int16_t(MORVALIS_CALL* putIntegerProc)(WriteToken token, uint32_t key, int32_t value);
  int16_t(MORVALIS_CALL* putFloatProc)(WriteToken token, uint32_t key, const double* value);
  int16_t(MORVALIS_CALL* putUnitFloatProc)(WriteToken token, uint32_t key, uint32_t unit,
                                           const double* value);
  int16_t(MORVALIS_CALL* putBooleanProc)(WriteToken token, uint32_t key, uint8_t value);
  int16_t(MORVALIS_CALL* putTextProc)(WriteToken token, uint32_t key, Handle value);
  int16_t(MORVALIS_CALL* putAliasProc)(WriteToken token, uint32_t key, Handle value);
  int16_t(MORVALIS_CALL* putEnumeratedProc)(WriteToken token, uint32_t key, uint32_t type,
                                            uint32_t value);
  int16_t(MORVALIS_CALL* putClassProc)(WriteToken token, uint32_t key, uint32_t value);
  int16_t(MORVALIS_CALL* putSimpleReferenceProc)(WriteToken token, uint32_t key,
                                                 const SimpleReference* value);
  int16_t(MORVALIS_CALL* putObjectProc)(WriteToken token, uint32_t key, uint32_t type,
                                        Handle value);
  int16_t(MORVALIS_CALL* putCountProc)(WriteToken token, uint32_t key, uint32_t value);
  int16_t(MORVALIS_CALL* putStringProc)(WriteToken token, uint32_t key, const uint8_t* text);
  int16_t(MORVALIS_CALL* putScopedClassProc)(WriteToken token, uint32_t key, uint32_t value);
  int16_t(MORVALIS_CALL* putScopedObjectProc)(WriteToken token, uint32_t key, uint32_t type,
                                              Handle value);
};

struct PIDescriptorParameters {
  int16_t descriptorParametersVersion;
  int16_t playInfo;
  int16_t recordInfo;
  Handle descriptor;  // null when there is nothing to read
  WriteDescriptorProcs* writeDescriptorProcs;
  ReadDescriptorProcs* readDescriptorProcs;
};

// --- Preview display ------------------------------------------------------------------------

struct HostRectangle32 {
  int32_t top;
  int32_t left;
  int32_t bottom;
  int32_t right;
};

struct PSPixelMask {
  PSPixelMask* next;
  void* maskData;
  int32_t rowBytes;
  int32_t colBytes;
  int32_t maskDescription;  // 0 simple, 1 black mat, 2 grey mat, 3 white mat, 4 inverted
};

struct PSPixelMap {
  int32_t version;  // 1
  HostRectangle32 bounds;
  int32_t imageMode;
  int32_t rowBytes;
  int32_t colBytes;
  int32_t planeBytes;
  void* baseAddr;  // first plane of the pixel at the top left of bounds
  PSPixelMask* mat;
  PSPixelMask* masks;
  int32_t maskPhaseRow;
  int32_t maskPhaseCol;
};

// --- Colour services ------------------------------------------------------------------------

struct ColorServicesInfo {
  int32_t infoSize;
  int16_t selector;
  int16_t sourceSpace;
  int16_t resultSpace;
  uint8_t resultGamutInfoValid;
  uint8_t resultInGamut;
  void* reservedSourceSpaceInfo;
  void* reservedResultSpaceInfo;
  int16_t colorComponents[4];
  void* reserved;
  intptr_t selectorParameter;  // counted-text prompt, point address or colour id
};

// --- The records the entry point receives ---------------------------------------------------

struct PlatformData {
  void* hwnd;  // may be null
};

struct AboutRecord {
  PlatformData* platformData;
  void* sSPBasic;
  void* plugInRef;
  uint8_t reserved[244];
};

struct HostRgb16 {
  uint16_t red;
  uint16_t green;
  uint16_t blue;
};

using AbortProc = uint8_t(MORVALIS_CALL*)();
using ProgressProc = void(MORVALIS_CALL*)(int32_t done, int32_t total);
using AdvanceStateProc = int16_t(MORVALIS_CALL*)();
using DisplayPixelsProc = int16_t(MORVALIS_CALL*)(const PSPixelMap* map,
                                                  const HostRectangle32* source, int32_t row,
                                                  int32_t column, void* context);
using ColorServicesProc = int16_t(MORVALIS_CALL*)(ColorServicesInfo* info);

#pragma pack(push, 4)
struct FilterRecord {
  int32_t serialNumber;       // host serial number; hosts pass 0
  AbortProc abortProc;        // abort test
  ProgressProc progressProc;  // progress display
  Handle parameters;  // the module's parameter block; null until the module sets it; host keeps it
                      // between runs
  Point imageSize;    // image height (v), width (h)
  int16_t planes;     // planes the module may process: 1 grey, 3 RGB; can be 2 or 4
  Rectangle filterRect;  // area to filter, in image pixels; need not start at 0,0
  HostRgb16 background;  // background colour, 0..65535 per channel (one host stores 0..255)
  HostRgb16 foreground;  // foreground colour, likewise
  int32_t maxSpace;      // in: memory available; Prepare may lower it
  int32_t bufferSpace;   // out of Prepare: bytes the module will take from the buffer suite
  Rectangle inRect;      // request: input area
  int16_t inLoPlane;     // request: first input plane
  int16_t inHiPlane;     // request: last input plane (inclusive)
  Rectangle outRect;     // request: output area
  int16_t outLoPlane;    // request: first output plane
  int16_t outHiPlane;    // request: last output plane (inclusive)
  uint8_t* inData;       // delivered input: plane inLoPlane of the pixel at inRect's top left
  int32_t inRowBytes;    // bytes from one input row to the next
  uint8_t* outData;      // buffer the module writes; prefilled by the host
  int32_t outRowBytes;   // bytes from one output row to the next
  uint8_t isFloating;    // 1: floating selection
  uint8_t haveMask;      // 1: the host can deliver a selection mask
  uint8_t autoMask;      // 1: the host itself limits the result to the mask
  Rectangle maskRect;    // request: mask area (only read when haveMask)
  uint8_t* maskData;     // delivered mask, 1 byte per pixel, 0 out .. 255 in
  int32_t maskRowBytes;  // bytes from one mask row to the next
  uint8_t backColor[4];  // background in the image's own colour space
  uint8_t foreColor[4];  // foreground in the image's own colour space
  uint32_t hostSig;      // four-character host signature
  void* hostProc;        // void (i16 selector, intptr* data); host private, never needed
  int16_t imageMode;     // 1 grey, 3 RGB
  int32_t imageHRes;     // pixels per inch, 16.16
  int32_t imageVRes;     // pixels per inch, 16.16
  Point floatCoord;      // top left of a floating selection
  Point wholeSize;       // size of the image under a floating selection
  int32_t
      monitor[10];  // gamma, red x y, green x y, blue x y, white x y, ambient; gamma 0 = unknown
  PlatformData* platformData;        // to PlatformData (pointer, not the window itself)
  BufferProcs* bufferProcs;          // buffer suite or null
  void* resourceProcs;               // pseudo-resource suite or null
  void* processEvent;                // void (void* event); does nothing on Windows
  DisplayPixelsProc displayPixels;   // draw pixels into a DC; may be null
  HandleProcs* handleProcs;          // handle suite or null
  uint8_t supportsDummyChannels;     // start of the 3.0 fields; hosts pass 0
  uint8_t supportsAlternateLayouts;  // hosts pass 0
  int16_t wantLayout;                // 0 = interleaved pixels; leave it
  int16_t filterCase;                // 1..7; 0 = host does not say
  int16_t dummyPlaneValue;           // -1 = undefined
  void* premiereHook;                // null
  AdvanceStateProc advanceState;     // exchange rows now; may be null
  uint8_t supportsAbsolute;          // host understands absolute plane numbers
  uint8_t wantsAbsolute;             // leave 0
  void* getPropertyObsolete;         // old property getter
  uint8_t cannotUndo;                // module may set 1; leave 0
  uint8_t supportsPadding;           // host honours the three paddings
  int16_t inputPadding;              // request: what to deliver outside the image
  int16_t outputPadding;             // likewise for the output buffer
  int16_t maskPadding;               // likewise for the mask
  int8_t samplingSupport;            // 0 none, 1 whole factors, 2 any factor
  int8_t reservedByte;
  int32_t inputRate;                // request: reduction factor of the input, 16.16; 0x10000 = 1
  int32_t maskRate;                 // request: reduction factor of the mask
  ColorServicesProc colorServices;  // colour chooser/converter; may be null
  int16_t inLayerPlanes;            // colour planes of a layer in the input
  int16_t inTransparencyMask;       // 1 if a transparency plane follows
  int16_t inLayerMasks;             // 0
  int16_t inInvertedLayerMasks;     // 0
  int16_t inNonLayerPlanes;         // colour planes of a flat image in the input
  int16_t outLayerPlanes;           // the same five for the output
  int16_t outTransparencyMask;
  int16_t outLayerMasks;
  int16_t outInvertedLayerMasks;
  int16_t outNonLayerPlanes;
  int16_t absLayerPlanes;  // the same five for the image itself
  int16_t absTransparencyMask;
  int16_t absLayerMasks;
  int16_t absInvertedLayerMasks;
  int16_t absNonLayerPlanes;
  int16_t inPreDummyPlanes;    // 0
  int16_t inPostDummyPlanes;   // 0
  int16_t outPreDummyPlanes;   // 0
  int16_t outPostDummyPlanes;  // 0
  int32_t inColumnBytes;       // bytes from one input pixel to the next; not reliable
  int32_t inPlaneBytes;        // bytes from one plane to the next: 1
  int32_t outColumnBytes;      // likewise for the output; not reliable
  int32_t outPlaneBytes;       // 1
  void* imageServicesProcs;    // start of the 3.0.4 fields; resampling suite or null
  void* propertyProcs;         // property suite or null
  int16_t inTileHeight;        // tile hints (height, width, origin) for input
  int16_t inTileWidth;
  Point inTileOrigin;
  int16_t absTileHeight;  // for the image
  int16_t absTileWidth;
  Point absTileOrigin;
  int16_t outTileHeight;  // for the output
  int16_t outTileWidth;
  Point outTileOrigin;
  int16_t maskTileHeight;  // for the mask
  int16_t maskTileWidth;
  Point maskTileOrigin;
  PIDescriptorParameters* descriptorParameters;  // start of the 4.0 fields; scripting block or null
  uint8_t* errorString;                          // 256-byte counted text for result -30904, or null
  void* channelPortProcs;                        // channel port suite or null
  void* documentInfo;                            // document description or null
  void* sSPBasic;                                // 5.0: basic suite or null
  void* plugInRef;                               // 5.0: null outside the vendor's own host
  int32_t depth;              // 5.0: bits per sample: 8 (0 = host older than the field)
  Handle iCCprofileData;      // 6.0: colour profile or null
  int32_t iCCprofileSize;     // 6.0
  int32_t canUseICCProfiles;  // 6.0; last field of the two C# hosts, 54 zero bytes follow there
  int32_t hasImageScrap;      // 7.0
  void* bigDocumentData;      // CS: 32-bit coordinates block or null; leave it alone to get 16-bit
                              // rectangles
  void* input3DScene;         // later versions; null
  void* output3DScene;
  uint8_t createNewLayer;
  Handle iCCWorkingProfileData;
  int32_t iCCWorkingProfileSize;
  int64_t bufferSpace64;  // 64-bit twin of bufferSpace
  int64_t maxSpace64;     // 64-bit twin of maxSpace; 48 reserved bytes follow in the newest record
};
#pragma pack(pop)
