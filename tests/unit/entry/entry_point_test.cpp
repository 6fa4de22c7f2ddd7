// Selectors, the records that live between calls, scripting and the dialog's place in a run.

#include "entry/entry_point.h"
#include "entry/handles.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "dialog/controls/control_table.h"
#include "entry/session_record.h"
#include "geometry/preview/preview_render.h"
#include "geometry/preview/preview_request.h"
#include "geometry/row_machine.h"
#include "hosts/substitute_host/host_state.h"
#include "platform/none/none_script.h"
#include "platform/remembered_values.h"
#include "settings/light_angles.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/hosts/host_runs.h"

class EntryPoint : public ::testing::Test {
 protected:
  void SetUp() override {
    resetNone();
  }
  void TearDown() override {
    closeHost();
  }
};

TEST_F(EntryPoint, AboutNeedsNothingAndStoresSuccess) {
  openHost({}, testPicture(4, 4, 3), {});
  EXPECT_EQ(callAbout(), 0);
  ASSERT_EQ(noneRecord().windows.size(), 1U);
  EXPECT_EQ(noneRecord().windows[0].name, "ABOUTBOX");
  EXPECT_EQ(hostLedger().allocations, 0);
  int16_t result = 1;
  ENTRYPOINT(kSelectorAbout, nullptr, nullptr, &result);
  EXPECT_EQ(result, 0);
}

TEST_F(EntryPoint, UnknownSelectorsRunNothing) {
  openHost({}, testPicture(4, 4, 3), {});
  for (int32_t selector : {-1, 6, INT16_MAX, INT16_MIN}) {
    EXPECT_EQ(callSelector(static_cast<int16_t>(selector)), -30100);
  }
  EXPECT_EQ(hostLedger().lockedHandles, 0);
}

TEST_F(EntryPoint, SessionAndSettingsLiveBetweenCalls) {
  openHost({}, testPicture(20, 10, 3), {});
  EXPECT_EQ(callSelector(kSelectorParameters, /*enteredWith=*/77), 0);
  const intptr_t slot = host().dataSlot;
  const Handle parameters = hostRecord()->parameters;
  ASSERT_NE(slot, 0);
  ASSERT_NE(parameters, nullptr);
  EXPECT_EQ(hostSettings()->showDialog, 1U);
  // Values out of range are the host's or a file's affair: nothing repairs them.
  hostSettings()->gloss = 12345;
  hostSettings()->shape = -7;
  EXPECT_EQ(callSelector(kSelectorPrepare), 0);
  EXPECT_EQ(host().dataSlot, slot);
  EXPECT_TRUE(hostRecord()->parameters == parameters);
  EXPECT_EQ(hostSettings()->gloss, 12345);
  EXPECT_EQ(hostSettings()->shape, -7);
  EXPECT_EQ(hostLedger().allocations, 2);
}

TEST_F(EntryPoint, PrepareTellsTheMemoryOfARender) {
  openHost({}, testPicture(300, 200, 3), {});
  EXPECT_EQ(callSelector(kSelectorPrepare), 0);
  EXPECT_EQ(hostRecord()->maxSpace, 2 * 300 * 3 + 300);
  EXPECT_EQ(hostRecord()->bufferSpace,
            4 * (3 * 300 + 2184) + 2 * 302 * 202 + 2 * 183618 + 2 * 65536 + 1000);
}

// Blocks given back as byte copies, as by a host that was restarted: their pointers are dead.
TEST_F(EntryPoint, BlocksFromAnotherLoadLoseTheirPointers) {
  openHost({}, testPicture(20, 10, 3), {});
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  EffectSettings* settings = hostSettings();
  SessionRecord* session = hostSession();
  auto* dead = reinterpret_cast<PictureSurface*>(0x10);
  settings->loadMark ^= 0x5555;
  settings->environmentPicture = settings->texturePicture = dead;
  settings->environmentRef = settings->textureRef = reinterpret_cast<Handle>(0x10);
  settings->radius = 33;
  session->loadMark ^= 0x5555;
  session->pictures = {dead, dead};
  session->render.heightField = {reinterpret_cast<void*>(0x10), true, 7, 100};
  session->render.running = 1;
  EXPECT_EQ(renderFilter(), 0);
  EXPECT_EQ(hostSettings()->radius, 33);
  EXPECT_EQ(hostSettings()->environmentRef, nullptr);
  EXPECT_EQ(hostLedger().misuses, 0);
}

// A record of this load whose bytes the host has copied to where it keeps another one.
TEST_F(EntryPoint, BlocksCopiedOverAnotherLoseTheirPointers) {
  openHost({}, testPicture(20, 10, 3), {});
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  const intptr_t first = host().dataSlot;
  SessionRecord* copy = hostSession();
  host().dataSlot = 0;
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  std::memcpy(static_cast<void*>(copy), hostSession(), sizeof(SessionRecord));
  auto* dead = reinterpret_cast<PictureSurface*>(0x10);
  copy->pictures = {dead, dead};
  copy->render.fastField.mask = reinterpret_cast<uint8_t*>(0x10);
  host().dataSlot = first;
  EXPECT_EQ(renderFilter(), 0);
  EXPECT_EQ(hostLedger().misuses, 0);
}

// A lock that fails once costs that call and nothing else.
TEST_F(EntryPoint, SlotThatCannotBeLockedStaysForTheNextCall) {
  openHost({}, testPicture(20, 10, 3), {});
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  const Handle first = reinterpret_cast<Handle>(host().dataSlot);
  HandleProcs procs = *hostRecord()->handleProcs;
  static Handle unlockable;
  static void*(MORVALIS_CALL * lock)(Handle, uint8_t);
  unlockable = first;
  lock = procs.lockProc;
  procs.lockProc = [](Handle handle, uint8_t moveHigh) {
    return handle == unlockable ? nullptr : lock(handle, moveHigh);
  };
  HandleProcs* const original = hostRecord()->handleProcs;
  hostRecord()->handleProcs = &procs;
  for (int16_t selector : {kSelectorPrepare, kSelectorContinue, kSelectorFinish}) {
    EXPECT_EQ(callSelector(selector), -108);
    EXPECT_EQ(reinterpret_cast<Handle>(host().dataSlot), first);
  }
  hostRecord()->handleProcs = original;
  EXPECT_EQ(renderFilter(), 0);
  EXPECT_EQ(reinterpret_cast<Handle>(host().dataSlot), first);
  EXPECT_EQ(hostLedger().handles, 2);
}

// However many the host keeps at once, each slot finds its own record again.
TEST_F(EntryPoint, ManySessionsAtOnce) {
  constexpr int32_t kSessions = 40;
  openHost({}, testPicture(20, 10, 3), {});
  intptr_t slots[kSessions] = {};
  for (intptr_t& slot : slots) {
    host().dataSlot = 0;
    ASSERT_EQ(callSelector(kSelectorPrepare), 0);
    slot = host().dataSlot;
  }
  for (intptr_t slot : slots) {
    host().dataSlot = slot;
    ASSERT_EQ(callSelector(kSelectorPrepare), 0);
    EXPECT_EQ(host().dataSlot, slot);
  }
  EXPECT_EQ(hostLedger().handles, kSessions + 1);
}

TEST_F(EntryPoint, ContinueNeedsAStartAndDeliveredRows) {
  openHost({}, testPicture(20, 10, 3), {});
  EXPECT_EQ(callSelector(kSelectorContinue), -30100) << "nothing has been started";
  closeHost();
  HostSwitches switches;
  switches.failExchangeAt = 9;
  openHost(switches, testPicture(20, 10, 3), {});
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  EXPECT_EQ(renderFilter(), -36);
  EXPECT_EQ(callSelector(kSelectorContinue), -30100) << "no rows have been delivered";
  EXPECT_EQ(hostLedger().buffers, 0);
  EXPECT_EQ(renderFilter(), 0);
}

TEST_F(EntryPoint, FilterRectangleThatChangesInMidRunEndsIt) {
  HostSwitches switches;
  switches.advanceState = false;
  openHost(switches, testPicture(40, 40, 3), {});
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  setFilterRect({0, 0, 20, 20});
  ASSERT_EQ(callSelector(kSelectorStart), 0);
  setFilterRect({0, 0, 40, 40});
  EXPECT_EQ(callSelector(kSelectorContinue), -30100);
  EXPECT_EQ(hostLedger().buffers, 0);
  EXPECT_EQ(callSelector(kSelectorContinue), 0) << "nothing runs any more";
}

// --- Strange hosts --------------------------------------------------------------------------

// A block of another version of the module, too small for ours.
TEST_F(EntryPoint, SettingsBlockThatIsTooSmallIsSetAside) {
  for (int16_t selector : {kSelectorStart, kSelectorContinue, kSelectorFinish}) {
    openHost({}, testPicture(20, 10, 3), {});
    ASSERT_EQ(callSelector(kSelectorPrepare), 0);
    const HandleProcs* procs = hostRecord()->handleProcs;
    procs->disposeProc(hostRecord()->parameters);
    const Handle small = procs->newProc(64);
    hostRecord()->parameters = small;
    EXPECT_EQ(callSelector(selector), selector == kSelectorContinue ? -30100 : 0);
    const Handle now = hostRecord()->parameters;
    if (now != nullptr) {
      EXPECT_GE(procs->getSizeProc(now), int32_t{sizeof(EffectSettings)});
    }
    EXPECT_LE(hostLedger().handles, 2) << "the block set aside is given back";
    EXPECT_EQ(callSelector(kSelectorFinish), 0);  // lets go of what Start has taken
    EXPECT_EQ(hostLedger().misuses, 0);
    closeHost();
  }
}

// The numbers of dead handles come again: for the session record, or for the settings.
TEST_F(EntryPoint, NumbersThatBelongToAnotherBlock) {
  HostSwitches switches;
  switches.handleSuite = SuiteOffer::absent;
  openHost(switches, testPicture(20, 10, 3), {});
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  const Handle settings = hostRecord()->parameters;
  const auto session = reinterpret_cast<Handle>(host().dataSlot);
  hostRecord()->parameters = session;
  EXPECT_EQ(callSelector(kSelectorPrepare), 0);
  EXPECT_EQ(reinterpret_cast<Handle>(host().dataSlot), session);
  EXPECT_TRUE(hostRecord()->parameters != session);
  EXPECT_TRUE(isModuleHandle(session));
  host().dataSlot = reinterpret_cast<intptr_t>(settings);
  EXPECT_EQ(renderFilter(), 0);
  for (const Handle handle : {settings, session, Handle{hostRecord()->parameters},
                              reinterpret_cast<Handle>(host().dataSlot)}) {
    EXPECT_TRUE(isModuleHandle(handle));
    disposeModuleHandle(handle);
  }
}

// A number kept from an earlier process must not even be looked at.
TEST_F(EntryPoint, DeadSlotNumbersGetANewRecord) {
  for (SuiteOffer offer : {SuiteOffer::usable, SuiteOffer::absent}) {
    HostSwitches switches;
    switches.handleSuite = offer;
    openHost(switches, testPicture(20, 10, 3), {});
    host().dataSlot = 0x1234560;
    EXPECT_EQ(callSelector(kSelectorPrepare), 0);
    EXPECT_NE(host().dataSlot, 0x1234560);
    if (offer == SuiteOffer::absent) {
      disposeModuleHandle(reinterpret_cast<Handle>(host().dataSlot));
      disposeModuleHandle(hostRecord()->parameters);
    }
    closeHost();
  }
}

static AdvanceStateProc originalAdvance = nullptr;
static int32_t callbackCalls = 0;
static void (*changeRecord)(FilterRecord* record) = nullptr;

static void changeAtThirtieth() {
  if (++callbackCalls == 30) changeRecord(hostRecord());
}

static int16_t MORVALIS_CALL advanceAndChange() {
  const int16_t error = originalAdvance();
  changeAtThirtieth();
  return error;
}

// In whichever callback, and in every pass, nothing is read or written by the changed record.
TEST_F(EntryPoint, RecordThatChangesInACallbackEndsTheRun) {
  void (*const changes[])(FilterRecord*) = {
      [](FilterRecord* record) {
        record->filterRect = {0, 0, 40, 300};
      },
      [](FilterRecord* record) { record->planes = 4; },
      [](FilterRecord* record) { record->parameters = nullptr; }};
  void (*const callbacks[])(FilterRecord*) = {[](FilterRecord* record) {
                                                originalAdvance = record->advanceState;
                                                record->advanceState = advanceAndChange;
                                              },
                                              [](FilterRecord* record) {
                                                record->progressProc = [](int32_t, int32_t) {
                                                  changeAtThirtieth();
                                                };
                                              },
                                              [](FilterRecord* record) {
                                                record->abortProc = []() -> uint8_t {
                                                  changeAtThirtieth();
                                                  return 0;
                                                };
                                              }};
  for (const auto change : changes) {
    for (const auto callback : callbacks) {
      for (int32_t callsBefore : {29, 0, -5}) {
        openHost({}, testPicture(20, 12, 3), testMask(20, 12));
        ASSERT_EQ(callSelector(kSelectorPrepare), 0);
        const Handle parameters = hostRecord()->parameters;
        callbackCalls = callsBefore;
        changeRecord = change;
        callback(hostRecord());
        EXPECT_EQ(renderFilter(), -30100);
        EXPECT_EQ(hostLedger().buffers, 0);
        hostRecord()->parameters = parameters;
        closeHost();
      }
    }
  }
}

TEST_F(EntryPoint, PicturesWithoutPlanesAreRefused) {
  for (int16_t planes : {0, -1}) {
    openHost({}, testPicture(20, 10, 3), {});
    ASSERT_EQ(callSelector(kSelectorPrepare), 0);
    hostRecord()->planes = planes;
    EXPECT_EQ(callSelector(kSelectorStart), -30100);
    closeHost();
  }
}

// Angles come from the directions, also when no dialog was there to keep them in step.
TEST_F(EntryPoint, RunsWithoutDialogDeriveTheirAngles) {
  const HostRun expected = runHost({}, testPicture(30, 20, 3), testMask(30, 20));
  const HostRun stale = runHost({}, testPicture(30, 20, 3), testMask(30, 20), [] {
    hostSettings()->light1Angle = 10;
    hostSettings()->light1Elevation = 500;
  });
  EXPECT_EQ(stale.effect.samples, expected.effect.samples);
}

// --- The dialog's place ---------------------------------------------------------------------

TEST_F(EntryPoint, ConfirmedDialogRendersAndRemembersThePictures) {
  openHost({}, testPicture(20, 10, 3), {});
  noneScript().modalWindow = [](NoneWindow& window) {
    std::strcpy(hostSettings()->environmentPath, "env.bmp");
    std::strcpy(hostSettings()->texturePath, "tex.bmp");
    window.clickButton(kOkButton);
  };
  EXPECT_EQ(runFilter(), 0);
  EXPECT_EQ(noneRecord().windows.size(), 1U);
  EXPECT_EQ(rememberedValue("ChromeFile"), "env.bmp");
  EXPECT_EQ(rememberedValue("TextureFile"), "tex.bmp");
  EXPECT_NE(filteredPicture().samples, testPicture(20, 10, 3).samples);
  // A repeat shows no dialog, and gives the same picture.
  const std::vector<uint8_t> first = filteredPicture().samples;
  EXPECT_EQ(repeatFilter(), 0);
  EXPECT_EQ(noneRecord().windows.size(), 1U);
  EXPECT_EQ(filteredPicture().samples, first);
}

TEST_F(EntryPoint, NewSessionStartsWithTheLastConfirmedSettings) {
  const std::string path = ::testing::TempDir() + "morvalis-cached-" + std::to_string(getpid());
  noneScript().cachedSettingsPath = path;
  openHost({}, testPicture(20, 10, 3), {});
  noneScript().modalWindow = [](NoneWindow& window) {
    window.click(sliderPoint(28, 81));
    window.clickButton(kCancelButton);
  };
  EXPECT_EQ(runFilter(), -128);
  EXPECT_EQ(std::fopen(path.c_str(), "rb"), nullptr) << "a cancelled dialog writes nothing";
  noneScript().modalWindow = [](NoneWindow& window) {
    window.click(sliderPoint(28, 82));
    window.clickButton(kOkButton);
  };
  EXPECT_EQ(runFilter(), 0);
  forgetModule();
  writeRememberedValue("EnviroPath", "C:\\pictures\\");
  EXPECT_EQ(callSelector(kSelectorPrepare), 0);
  EXPECT_EQ(hostSettings()->gloss, 82);
  EXPECT_STREQ(hostSettings()->pictureFolder, "C:\\pictures\\");
  std::remove(path.c_str());
}

TEST_F(EntryPoint, CancelledDialogLeavesNothing) {
  openHost({}, testPicture(20, 10, 3), {});
  for (bool shown : {true, false}) {
    if (shown) {
      noneScript().modalWindow = [](NoneWindow& window) { window.clickButton(kCancelButton); };
    } else {
      noneScript().modalWindow = nullptr;  // the back end cannot show it
    }
    EXPECT_EQ(runFilter(), -128);
    EXPECT_EQ(filteredPicture().samples, testPicture(20, 10, 3).samples);
    EXPECT_EQ(rememberedValue("ChromeFile"), "");
    EXPECT_EQ(hostLedger().buffers, 0);
    EXPECT_EQ(hostSettings()->showDialog, 0U);
  }
}

// The preview at factor 1 is the final render, mixed with the checkerboard by the mask.
TEST_F(EntryPoint, PreviewIsTheFinalRenderOverACheckerboard) {
  constexpr int32_t kSide = 34;
  const HostPicture picture = testPicture(kSide, kSide, 3);
  const HostMask mask = testMask(kSide, kSide);
  const HostRun final = runHost({}, picture, mask);
  openHost({}, picture, mask);
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  showEverything(hostSettings());
  int32_t compared = 0;
  noneScript().modalWindow = [&](NoneWindow& window) {
    SessionRecord* session = hostSession();
    EffectSettings* settings = settingsOf(session);
    settings->previewMode = 1;
    lightAngles(settings);
    session->render.previewFrame = {0, 0, kSide, kSide};
    requestPreviewImage(session, 1);
    runPreview(session);
    for (int32_t i = 0; i < kSide * kSide * 3; ++i) {
      const int32_t m = mask[i / 3];
      const int32_t x = i / 3 % kSide;
      const int32_t y = i / 3 / kSide;
      const int32_t checker = ((x ^ y) & 8) == 0 ? 255 : 204;
      const int32_t expected = (final.effect.samples[i] * m + checker * (255 - m)) >> 8;
      EXPECT_EQ(session->filter->outData[i], expected) << x << ", " << y;
      compared += session->filter->outData[i] == expected;
    }
    window.clickButton(kOkButton);
  };
  hostSettings()->showDialog = 1;
  EXPECT_EQ(renderFilter(), 0);
  EXPECT_EQ(compared, kSide * kSide * 3);
  EXPECT_EQ(filteredPicture().samples, final.effect.samples);
}

// Reduced, panned and cut to the frame; and hosts that cannot deliver or show it.
TEST_F(EntryPoint, PreviewRequests) {
  openHost({}, testPicture(100, 60, 3), testMask(100, 60));
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  noneScript().modalWindow = [](NoneWindow& window) {
    SessionRecord* session = hostSession();
    EffectSettings* settings = settingsOf(session);
    settings->previewMode = 1;
    session->render.previewFrame = {0, 0, 10, 30};
    settings->previewOriginX = 13;
    settings->previewOriginY = 30;
    requestPreviewImage(session, 3);
    const Rectangle& in = session->filter->inRect;
    EXPECT_EQ(in.left, 4);
    EXPECT_EQ(in.top, 10);
    EXPECT_EQ(in.right, 33);
    EXPECT_EQ(in.bottom, 20);
    EXPECT_EQ(session->filter->inputRate, 3 * 65536);
    EXPECT_EQ(session->filter->maskRate, 3 * 65536);
    EXPECT_EQ(session->render.renderWidth, 29);
    runPreview(session);
    EXPECT_EQ(*session->result, 0);
    EXPECT_EQ(session->render.running, 0);
    *session->result = -36;
    runPreview(session);
    EXPECT_EQ(noneRecord().alerts.size(), 1U);
    *session->result = 0;
    session->filter->displayPixels = nullptr;
    runPreview(session);
    EXPECT_EQ(noneRecord().alerts.size(), 2U);
    window.clickButton(kOkButton);
  };
  hostSettings()->showDialog = 1;
  EXPECT_EQ(renderFilter(), 0);
}

// As Start leaves it to the dialog.
static SessionRecord* sessionInACall(int16_t* result) {
  SessionRecord* session = hostSession();
  session->result = result;
  session->filter = hostRecord();
  session->lockedSettings = hostRecord()->parameters;
  session->render.renderedRect = hostRecord()->filterRect;
  session->render.renderedPlanes = hostRecord()->planes;
  return session;
}

// Hosts do not deliver again for another rate alone: the old request is withdrawn first.
TEST_F(EntryPoint, PreviewAtAnotherScaleIsDeliveredAnew) {
  const HostPicture picture = testPicture(100, 100, 1);
  openHost({}, picture, {});
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  int16_t result = 0;
  SessionRecord* session = sessionInACall(&result);
  session->render.previewFrame = {0, 0, 10, 10};
  for (int32_t factor : {5, 2, 3}) {
    requestPreviewImage(session, factor);
    ASSERT_EQ(result, 0);
    for (int32_t x = 0; x < 10; ++x) {
      EXPECT_EQ(hostRecord()->inData[x], picture.samples[x * factor]) << factor;
    }
  }
}

// Reduced to nothing, a thin picture has no preview, and that is no failure.
TEST_F(EntryPoint, ThinPicturesHaveNoPreview) {
  openHost({}, testPicture(900, 2, 3), {});
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  int16_t result = 0;
  SessionRecord* session = sessionInACall(&result);
  session->render.previewFrame = {0, 0, 2, 294};
  requestPreviewImage(session, 4);
  runPreview(session);
  EXPECT_EQ(result, 0);
  EXPECT_TRUE(noneRecord().alerts.empty());
}

// --- What is asked of the host --------------------------------------------------------------

TEST_F(EntryPoint, MaskBandsAndRowsRequested) {
  constexpr int kTop = 5;
  constexpr int kRows = 12;
  openHost({}, testPicture(20, 30, 3), testMask(20, 30));
  setFilterRect({kTop, 2, kTop + kRows, 18});
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  ASSERT_EQ(renderFilter(), 0);
  std::vector<HostExchange> masks;
  std::vector<HostExchange> rows;
  for (const HostExchange& exchange : hostExchanges()) {
    if (!isEmptyRect(exchange.maskRect)) masks.push_back(exchange);
    if (!isEmptyRect(exchange.outRect)) rows.push_back(exchange);
  }
  const auto bandOf = [&masks](size_t i) {
    return std::pair<int, int>(masks[i].maskRect.top - kTop, masks[i].maskRect.bottom - kTop);
  };
  // Stamping rows -1, 0, 1 and the last two.
  size_t first = 0;
  while (first + 1 < masks.size() && bandOf(first + 1) == bandOf(first)) ++first;
  EXPECT_EQ(bandOf(first), std::pair(0, 1));
  EXPECT_EQ(bandOf(first + 1), std::pair(0, 2));
  EXPECT_EQ(bandOf(first + 2), std::pair(0, 3));
  EXPECT_EQ(bandOf(first + kRows), std::pair(kRows - 3, kRows));
  for (const HostExchange& exchange : masks) {
    EXPECT_TRUE(isEmptyRect(exchange.outRect));
    EXPECT_EQ(exchange.inRect.right - exchange.inRect.left, 1);
  }
  ASSERT_GE(rows.size(), static_cast<size_t>(kRows));
  for (const HostExchange& exchange : rows) {
    EXPECT_EQ(exchange.outRect.bottom - exchange.outRect.top, 1);
    EXPECT_EQ(exchange.inputRate, 65536);
    EXPECT_TRUE(isEmptyRect(exchange.maskRect));
  }
}

TEST_F(EntryPoint, ProgressCountsTheSteps) {
  struct Expectation {
    int32_t textureChoice;
    int32_t total;
  };
  for (const Expectation& expected : {Expectation{1, 6 * 11 + 2}, Expectation{6, 7 * 11 + 2}}) {
    std::vector<std::pair<int32_t, int32_t>> reports;
    HostSwitches switches;
    switches.progress = [&reports](int32_t done, int32_t total) {
      reports.emplace_back(done, total);
    };
    openHost(switches, testPicture(9, 11, 3), {});
    ASSERT_EQ(callSelector(kSelectorPrepare), 0);
    hostSettings()->textureChoice = expected.textureChoice;
    ASSERT_EQ(renderFilter(), 0);
    // Stamping 13 rows, border 13, smoothing and profile 12 each, shading 11.
    ASSERT_EQ(reports.size(), 13U + 13U + 3U * 12U + 11U);
    for (size_t i = 0; i < reports.size(); ++i) {
      EXPECT_EQ(reports[i].first, std::min(static_cast<int32_t>(i), expected.total));
      EXPECT_EQ(reports[i].second, expected.total);
    }
    EXPECT_EQ(hostCallCount("abortProc"), static_cast<int32_t>(reports.size()));
    closeHost();
  }
}

TEST_F(EntryPoint, ProgressStaysWithinItsTotal) {
  for (const auto& [width, height] :
       {std::pair{1, 1}, {3, 2}, {9, 3}, {9, 4}, {1, 30000}, {30000, 1}}) {
    for (const int32_t texture : {1, 6}) {
      int32_t last = 0;
      int32_t most = 0;
      HostSwitches switches;
      switches.keepsLog = false;
      switches.progress = [&](int32_t done, int32_t total) {
        EXPECT_LE(done, total);
        EXPECT_GE(done, last);
        last = done;
        most = total;
      };
      openHost(switches, testPicture(width, height, 1), {});
      ASSERT_EQ(callSelector(kSelectorPrepare), 0);
      hostSettings()->textureChoice = texture;
      ASSERT_EQ(renderFilter(), 0);
      EXPECT_EQ(last, std::min(6 * height + 6, most)) << width << " x " << height;
      closeHost();
    }
  }
}

TEST_F(EntryPoint, ShadesAloneWhenNoHeightFieldIsWanted) {
  openHost({}, testPicture(9, 11, 3), {});
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  hostSession()->render.buildHeightField = 0;
  int32_t total = 0;
  host().switches.progress = [&total](int32_t, int32_t of) { total = of; };
  EXPECT_EQ(renderFilter(), 0);
  EXPECT_EQ(total, 11);
  EXPECT_EQ(hostCallCount("progressProc"), 11);
}

// --- Scripting ------------------------------------------------------------------------------

static std::vector<ScriptValue> script() {
  ScriptValue amount;
  amount.key = fourCharacterCode("Amnt");
  amount.type = fourCharacterCode("UntF");
  amount.unit = fourCharacterCode("#Prc");
  amount.number = 73.9;
  ScriptValue mood;
  mood.key = fourCharacterCode("disP");
  mood.type = fourCharacterCode("enum");
  mood.unit = fourCharacterCode("mooD");
  mood.enumeration = fourCharacterCode("moD2");
  ScriptValue entire;
  entire.key = fourCharacterCode("entI");
  entire.type = fourCharacterCode("bool");
  entire.boolean = true;
  ScriptValue stranger;
  stranger.key = fourCharacterCode("what");
  stranger.type = fourCharacterCode("bool");
  return {stranger, amount, mood, entire};
}

TEST_F(EntryPoint, ScriptingIsReadAndRecorded) {
  HostSwitches switches;
  switches.scripting = SuiteOffer::usable;
  openHost(switches, testPicture(9, 11, 3), {});
  setScript(script());
  ASSERT_EQ(callSelector(kSelectorParameters), 0);  // asks for the dialog, but the script does not
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  ASSERT_EQ(renderFilter(), 0);
  EXPECT_TRUE(noneRecord().windows.empty());
  EXPECT_EQ(hostSettings()->scriptAmount, 73);
  EXPECT_EQ(hostSettings()->scriptMood, fourCharacterCode("moD2"));
  EXPECT_EQ(hostSettings()->scriptEntire, 1);
  ASSERT_EQ(recordedScript().size(), 3U);
  EXPECT_EQ(recordedScript()[0].key, fourCharacterCode("Amnt"));
  EXPECT_EQ(recordedScript()[0].unit, fourCharacterCode("#Prc"));
  EXPECT_EQ(recordedScript()[0].number, 73);
  EXPECT_EQ(recordedScript()[1].enumeration, fourCharacterCode("moD2"));
  EXPECT_EQ(recordedScript()[1].unit, fourCharacterCode("mooD"));
  EXPECT_TRUE(recordedScript()[2].boolean);
  hostSettings()->scriptEntire = 0;
  EXPECT_EQ(callSelector(kSelectorFinish), 0);
  EXPECT_EQ(recordedScript().size(), 2U) << "the boolean is recorded only when it is set";
}

TEST_F(EntryPoint, ScriptingErrors) {
  struct Fault {
    int16_t error;
    int16_t result;
  };
  for (const Fault& fault : {Fault{-1715, 0}, Fault{-50, -50}}) {
    HostSwitches switches;
    switches.scripting = SuiteOffer::usable;
    openHost(switches, testPicture(9, 11, 3), {});
    std::vector<ScriptValue> values = script();
    values[1].error = fault.error;
    setScript(values);
    ASSERT_EQ(callSelector(kSelectorPrepare), 0);
    EXPECT_EQ(renderFilter(), fault.result);
    EXPECT_EQ(hostSettings()->scriptAmount, 50) << "a value that cannot be read stays";
    closeHost();
  }
}

TEST_F(EntryPoint, ScriptingDecidesAboutTheDialog) {
  HostSwitches switches;
  switches.scripting = SuiteOffer::usable;
  switches.scriptingShowsDialog = true;
  openHost(switches, testPicture(9, 11, 3), {});
  noneScript().modalWindow = [](NoneWindow& window) { window.clickButton(kOkButton); };
  ASSERT_EQ(callSelector(kSelectorPrepare), 0);
  EXPECT_EQ(renderFilter(), 0);
  EXPECT_EQ(noneRecord().windows.size(), 1U);
}
