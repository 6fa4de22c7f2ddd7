// host_interface_checks: every offset and size of the host's records, as measured in real hosts,
// for the build at hand. One row per field: offset on 32 bits, on 64 bits, size on each.

#include <cstddef>

#include "entry/host_interface.h"

constexpr bool kWide = sizeof(void*) == 8;

#define FIELD(record, field, offset32, offset64, size32, size64)                \
  static_assert(offsetof(record, field) == (kWide ? (offset64) : (offset32)) && \
                    sizeof(record::field) == (kWide ? (size64) : (size32)),     \
                #record "." #field " is not where hosts keep it")
#define SIZE(record, size32, size64)                             \
  static_assert(sizeof(record) == (kWide ? (size64) : (size32)), \
                #record " is not as large as in hosts")

FIELD(FilterRecord, serialNumber, 0, 0, 4, 4);
FIELD(FilterRecord, abortProc, 4, 4, 4, 8);
FIELD(FilterRecord, progressProc, 8, 12, 4, 8);
FIELD(FilterRecord, parameters, 12, 20, 4, 8);
FIELD(FilterRecord, imageSize, 16, 28, 4, 4);
FIELD(FilterRecord, planes, 20, 32, 2, 2);
FIELD(FilterRecord, filterRect, 22, 34, 8, 8);
FIELD(FilterRecord, background, 30, 42, 6, 6);
FIELD(FilterRecord, foreground, 36, 48, 6, 6);
FIELD(FilterRecord, maxSpace, 44, 56, 4, 4);
FIELD(FilterRecord, bufferSpace, 48, 60, 4, 4);
FIELD(FilterRecord, inRect, 52, 64, 8, 8);
FIELD(FilterRecord, inLoPlane, 60, 72, 2, 2);
FIELD(FilterRecord, inHiPlane, 62, 74, 2, 2);
FIELD(FilterRecord, outRect, 64, 76, 8, 8);
FIELD(FilterRecord, outLoPlane, 72, 84, 2, 2);
FIELD(FilterRecord, outHiPlane, 74, 86, 2, 2);
FIELD(FilterRecord, inData, 76, 88, 4, 8);
FIELD(FilterRecord, inRowBytes, 80, 96, 4, 4);
FIELD(FilterRecord, outData, 84, 100, 4, 8);
FIELD(FilterRecord, outRowBytes, 88, 108, 4, 4);
FIELD(FilterRecord, isFloating, 92, 112, 1, 1);
FIELD(FilterRecord, haveMask, 93, 113, 1, 1);
FIELD(FilterRecord, autoMask, 94, 114, 1, 1);
FIELD(FilterRecord, maskRect, 96, 116, 8, 8);
FIELD(FilterRecord, maskData, 104, 124, 4, 8);
FIELD(FilterRecord, maskRowBytes, 108, 132, 4, 4);
FIELD(FilterRecord, backColor, 112, 136, 4, 4);
FIELD(FilterRecord, foreColor, 116, 140, 4, 4);
FIELD(FilterRecord, hostSig, 120, 144, 4, 4);
FIELD(FilterRecord, hostProc, 124, 148, 4, 8);
FIELD(FilterRecord, imageMode, 128, 156, 2, 2);
FIELD(FilterRecord, imageHRes, 132, 160, 4, 4);
FIELD(FilterRecord, imageVRes, 136, 164, 4, 4);
FIELD(FilterRecord, floatCoord, 140, 168, 4, 4);
FIELD(FilterRecord, wholeSize, 144, 172, 4, 4);
FIELD(FilterRecord, monitor, 148, 176, 40, 40);
FIELD(FilterRecord, platformData, 188, 216, 4, 8);
FIELD(FilterRecord, bufferProcs, 192, 224, 4, 8);
FIELD(FilterRecord, resourceProcs, 196, 232, 4, 8);
FIELD(FilterRecord, processEvent, 200, 240, 4, 8);
FIELD(FilterRecord, displayPixels, 204, 248, 4, 8);
FIELD(FilterRecord, handleProcs, 208, 256, 4, 8);
FIELD(FilterRecord, supportsDummyChannels, 212, 264, 1, 1);
FIELD(FilterRecord, supportsAlternateLayouts, 213, 265, 1, 1);
FIELD(FilterRecord, wantLayout, 214, 266, 2, 2);
FIELD(FilterRecord, filterCase, 216, 268, 2, 2);
FIELD(FilterRecord, dummyPlaneValue, 218, 270, 2, 2);
FIELD(FilterRecord, premiereHook, 220, 272, 4, 8);
FIELD(FilterRecord, advanceState, 224, 280, 4, 8);
FIELD(FilterRecord, supportsAbsolute, 228, 288, 1, 1);
FIELD(FilterRecord, wantsAbsolute, 229, 289, 1, 1);
FIELD(FilterRecord, getPropertyObsolete, 232, 292, 4, 8);
FIELD(FilterRecord, cannotUndo, 236, 300, 1, 1);
FIELD(FilterRecord, supportsPadding, 237, 301, 1, 1);
FIELD(FilterRecord, inputPadding, 238, 302, 2, 2);
FIELD(FilterRecord, outputPadding, 240, 304, 2, 2);
FIELD(FilterRecord, maskPadding, 242, 306, 2, 2);
FIELD(FilterRecord, samplingSupport, 244, 308, 1, 1);
FIELD(FilterRecord, reservedByte, 245, 309, 1, 1);
FIELD(FilterRecord, inputRate, 248, 312, 4, 4);
FIELD(FilterRecord, maskRate, 252, 316, 4, 4);
FIELD(FilterRecord, colorServices, 256, 320, 4, 8);
FIELD(FilterRecord, inLayerPlanes, 260, 328, 2, 2);
FIELD(FilterRecord, inTransparencyMask, 262, 330, 2, 2);
FIELD(FilterRecord, inLayerMasks, 264, 332, 2, 2);
FIELD(FilterRecord, inInvertedLayerMasks, 266, 334, 2, 2);
FIELD(FilterRecord, inNonLayerPlanes, 268, 336, 2, 2);
FIELD(FilterRecord, outLayerPlanes, 270, 338, 2, 2);
FIELD(FilterRecord, outTransparencyMask, 272, 340, 2, 2);
FIELD(FilterRecord, outLayerMasks, 274, 342, 2, 2);
FIELD(FilterRecord, outInvertedLayerMasks, 276, 344, 2, 2);
FIELD(FilterRecord, outNonLayerPlanes, 278, 346, 2, 2);
FIELD(FilterRecord, absLayerPlanes, 280, 348, 2, 2);
FIELD(FilterRecord, absTransparencyMask, 282, 350, 2, 2);
FIELD(FilterRecord, absLayerMasks, 284, 352, 2, 2);
FIELD(FilterRecord, absInvertedLayerMasks, 286, 354, 2, 2);
FIELD(FilterRecord, absNonLayerPlanes, 288, 356, 2, 2);
FIELD(FilterRecord, inPreDummyPlanes, 290, 358, 2, 2);
FIELD(FilterRecord, inPostDummyPlanes, 292, 360, 2, 2);
FIELD(FilterRecord, outPreDummyPlanes, 294, 362, 2, 2);
FIELD(FilterRecord, outPostDummyPlanes, 296, 364, 2, 2);
FIELD(FilterRecord, inColumnBytes, 300, 368, 4, 4);
FIELD(FilterRecord, inPlaneBytes, 304, 372, 4, 4);
FIELD(FilterRecord, outColumnBytes, 308, 376, 4, 4);
FIELD(FilterRecord, outPlaneBytes, 312, 380, 4, 4);
FIELD(FilterRecord, imageServicesProcs, 316, 384, 4, 8);
FIELD(FilterRecord, propertyProcs, 320, 392, 4, 8);
FIELD(FilterRecord, inTileHeight, 324, 400, 2, 2);
FIELD(FilterRecord, inTileWidth, 326, 402, 2, 2);
FIELD(FilterRecord, inTileOrigin, 328, 404, 4, 4);
FIELD(FilterRecord, absTileHeight, 332, 408, 2, 2);
FIELD(FilterRecord, absTileWidth, 334, 410, 2, 2);
FIELD(FilterRecord, absTileOrigin, 336, 412, 4, 4);
FIELD(FilterRecord, outTileHeight, 340, 416, 2, 2);
FIELD(FilterRecord, outTileWidth, 342, 418, 2, 2);
FIELD(FilterRecord, outTileOrigin, 344, 420, 4, 4);
FIELD(FilterRecord, maskTileHeight, 348, 424, 2, 2);
FIELD(FilterRecord, maskTileWidth, 350, 426, 2, 2);
FIELD(FilterRecord, maskTileOrigin, 352, 428, 4, 4);
FIELD(FilterRecord, descriptorParameters, 356, 432, 4, 8);
FIELD(FilterRecord, errorString, 360, 440, 4, 8);
FIELD(FilterRecord, channelPortProcs, 364, 448, 4, 8);
FIELD(FilterRecord, documentInfo, 368, 456, 4, 8);
FIELD(FilterRecord, sSPBasic, 372, 464, 4, 8);
FIELD(FilterRecord, plugInRef, 376, 472, 4, 8);
FIELD(FilterRecord, depth, 380, 480, 4, 4);
FIELD(FilterRecord, iCCprofileData, 384, 484, 4, 8);
FIELD(FilterRecord, iCCprofileSize, 388, 492, 4, 4);
FIELD(FilterRecord, canUseICCProfiles, 392, 496, 4, 4);
FIELD(FilterRecord, hasImageScrap, 396, 500, 4, 4);
FIELD(FilterRecord, bigDocumentData, 400, 504, 4, 8);
FIELD(FilterRecord, input3DScene, 404, 512, 4, 8);
FIELD(FilterRecord, output3DScene, 408, 520, 4, 8);
FIELD(FilterRecord, createNewLayer, 412, 528, 1, 1);
FIELD(FilterRecord, iCCWorkingProfileData, 416, 532, 4, 8);
FIELD(FilterRecord, iCCWorkingProfileSize, 420, 540, 4, 4);
FIELD(FilterRecord, bufferSpace64, 424, 544, 8, 8);
FIELD(FilterRecord, maxSpace64, 432, 552, 8, 8);
SIZE(FilterRecord, 440, 560);

FIELD(AboutRecord, platformData, 0, 0, 4, 8);
FIELD(AboutRecord, sSPBasic, 4, 8, 4, 8);
FIELD(AboutRecord, plugInRef, 8, 16, 4, 8);
FIELD(AboutRecord, reserved, 12, 24, 244, 244);
SIZE(AboutRecord, 256, 272);

FIELD(PlatformData, hwnd, 0, 0, 4, 8);
SIZE(PlatformData, 4, 8);

FIELD(BufferProcs, bufferProcsVersion, 0, 0, 2, 2);
FIELD(BufferProcs, numBufferProcs, 2, 2, 2, 2);
FIELD(BufferProcs, allocateProc, 4, 8, 4, 8);
FIELD(BufferProcs, lockProc, 8, 16, 4, 8);
FIELD(BufferProcs, unlockProc, 12, 24, 4, 8);
FIELD(BufferProcs, freeProc, 16, 32, 4, 8);
FIELD(BufferProcs, spaceProc, 20, 40, 4, 8);
SIZE(BufferProcs, 24, 48);

FIELD(HandleProcs, handleProcsVersion, 0, 0, 2, 2);
FIELD(HandleProcs, numHandleProcs, 2, 2, 2, 2);
FIELD(HandleProcs, newProc, 4, 8, 4, 8);
FIELD(HandleProcs, disposeProc, 8, 16, 4, 8);
FIELD(HandleProcs, getSizeProc, 12, 24, 4, 8);
FIELD(HandleProcs, setSizeProc, 16, 32, 4, 8);
FIELD(HandleProcs, lockProc, 20, 40, 4, 8);
FIELD(HandleProcs, unlockProc, 24, 48, 4, 8);
FIELD(HandleProcs, recoverSpaceProc, 28, 56, 4, 8);
FIELD(HandleProcs, disposeRegularHandleProc, 32, 64, 4, 8);
SIZE(HandleProcs, 36, 72);

FIELD(PIDescriptorParameters, descriptorParametersVersion, 0, 0, 2, 2);
FIELD(PIDescriptorParameters, playInfo, 2, 2, 2, 2);
FIELD(PIDescriptorParameters, recordInfo, 4, 4, 2, 2);
FIELD(PIDescriptorParameters, descriptor, 8, 8, 4, 8);
FIELD(PIDescriptorParameters, writeDescriptorProcs, 12, 16, 4, 8);
FIELD(PIDescriptorParameters, readDescriptorProcs, 16, 24, 4, 8);
SIZE(PIDescriptorParameters, 20, 32);

FIELD(ReadDescriptorProcs, readDescriptorProcsVersion, 0, 0, 2, 2);
FIELD(ReadDescriptorProcs, numReadDescriptorProcs, 2, 2, 2, 2);
FIELD(ReadDescriptorProcs, openReadDescriptorProc, 4, 8, 4, 8);
FIELD(ReadDescriptorProcs, closeReadDescriptorProc, 8, 16, 4, 8);
FIELD(ReadDescriptorProcs, getKeyProc, 12, 24, 4, 8);
FIELD(ReadDescriptorProcs, getIntegerProc, 16, 32, 4, 8);
FIELD(ReadDescriptorProcs, getFloatProc, 20, 40, 4, 8);
FIELD(ReadDescriptorProcs, getUnitFloatProc, 24, 48, 4, 8);
FIELD(ReadDescriptorProcs, getBooleanProc, 28, 56, 4, 8);
FIELD(ReadDescriptorProcs, getTextProc, 32, 64, 4, 8);
FIELD(ReadDescriptorProcs, getAliasProc, 36, 72, 4, 8);
FIELD(ReadDescriptorProcs, getEnumeratedProc, 40, 80, 4, 8);
FIELD(ReadDescriptorProcs, getClassProc, 44, 88, 4, 8);
FIELD(ReadDescriptorProcs, getSimpleReferenceProc, 48, 96, 4, 8);
FIELD(ReadDescriptorProcs, getObjectProc, 52, 104, 4, 8);
FIELD(ReadDescriptorProcs, getCountProc, 56, 112, 4, 8);
FIELD(ReadDescriptorProcs, getStringProc, 60, 120, 4, 8);
FIELD(ReadDescriptorProcs, getPinnedIntegerProc, 64, 128, 4, 8);
FIELD(ReadDescriptorProcs, getPinnedFloatProc, 68, 136, 4, 8);
FIELD(ReadDescriptorProcs, getPinnedUnitFloatProc, 72, 144, 4, 8);
SIZE(ReadDescriptorProcs, 76, 152);

FIELD(WriteDescriptorProcs, writeDescriptorProcsVersion, 0, 0, 2, 2);
FIELD(WriteDescriptorProcs, numWriteDescriptorProcs, 2, 2, 2, 2);
FIELD(WriteDescriptorProcs, openWriteDescriptorProc, 4, 8, 4, 8);
FIELD(WriteDescriptorProcs, closeWriteDescriptorProc, 8, 16, 4, 8);
FIELD(WriteDescriptorProcs, putIntegerProc, 12, 24, 4, 8);
FIELD(WriteDescriptorProcs, putFloatProc, 16, 32, 4, 8);
FIELD(WriteDescriptorProcs, putUnitFloatProc, 20, 40, 4, 8);
FIELD(WriteDescriptorProcs, putBooleanProc, 24, 48, 4, 8);
FIELD(WriteDescriptorProcs, putTextProc, 28, 56, 4, 8);
FIELD(WriteDescriptorProcs, putAliasProc, 32, 64, 4, 8);
FIELD(WriteDescriptorProcs, putEnumeratedProc, 36, 72, 4, 8);
FIELD(WriteDescriptorProcs, putClassProc, 40, 80, 4, 8);
FIELD(WriteDescriptorProcs, putSimpleReferenceProc, 44, 88, 4, 8);
FIELD(WriteDescriptorProcs, putObjectProc, 48, 96, 4, 8);
FIELD(WriteDescriptorProcs, putCountProc, 52, 104, 4, 8);
FIELD(WriteDescriptorProcs, putStringProc, 56, 112, 4, 8);
FIELD(WriteDescriptorProcs, putScopedClassProc, 60, 120, 4, 8);
FIELD(WriteDescriptorProcs, putScopedObjectProc, 64, 128, 4, 8);
SIZE(WriteDescriptorProcs, 68, 136);

FIELD(PSPixelMap, version, 0, 0, 4, 4);
FIELD(PSPixelMap, bounds, 4, 4, 16, 16);
FIELD(PSPixelMap, imageMode, 20, 20, 4, 4);
FIELD(PSPixelMap, rowBytes, 24, 24, 4, 4);
FIELD(PSPixelMap, colBytes, 28, 28, 4, 4);
FIELD(PSPixelMap, planeBytes, 32, 32, 4, 4);
FIELD(PSPixelMap, baseAddr, 36, 40, 4, 8);
FIELD(PSPixelMap, mat, 40, 48, 4, 8);
FIELD(PSPixelMap, masks, 44, 56, 4, 8);
FIELD(PSPixelMap, maskPhaseRow, 48, 64, 4, 4);
FIELD(PSPixelMap, maskPhaseCol, 52, 68, 4, 4);
SIZE(PSPixelMap, 56, 72);

FIELD(PSPixelMask, next, 0, 0, 4, 8);
FIELD(PSPixelMask, maskData, 4, 8, 4, 8);
FIELD(PSPixelMask, rowBytes, 8, 16, 4, 4);
FIELD(PSPixelMask, colBytes, 12, 20, 4, 4);
FIELD(PSPixelMask, maskDescription, 16, 24, 4, 4);
SIZE(PSPixelMask, 20, 32);

FIELD(ColorServicesInfo, infoSize, 0, 0, 4, 4);
FIELD(ColorServicesInfo, selector, 4, 4, 2, 2);
FIELD(ColorServicesInfo, sourceSpace, 6, 6, 2, 2);
FIELD(ColorServicesInfo, resultSpace, 8, 8, 2, 2);
FIELD(ColorServicesInfo, resultGamutInfoValid, 10, 10, 1, 1);
FIELD(ColorServicesInfo, resultInGamut, 11, 11, 1, 1);
FIELD(ColorServicesInfo, reservedSourceSpaceInfo, 12, 16, 4, 8);
FIELD(ColorServicesInfo, reservedResultSpaceInfo, 16, 24, 4, 8);
FIELD(ColorServicesInfo, colorComponents, 20, 32, 8, 8);
FIELD(ColorServicesInfo, reserved, 28, 40, 4, 8);
FIELD(ColorServicesInfo, selectorParameter, 32, 48, 4, 8);
SIZE(ColorServicesInfo, 36, 56);
