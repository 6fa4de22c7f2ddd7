#include "entry/selector_handlers.h"

#include "dialog/help/about_box.h"
#include "dialog/main_dialog.h"
#include "entry/scripting.h"
#include "entry/session_record.h"
#include "geometry/preview/preview_render.h"
#include "geometry/render_buffers.h"
#include "geometry/render_setup.h"
#include "geometry/row_machine.h"
#include "geometry/row_requests.h"
#include "persistence/remembered_paths.h"
#include "persistence/settings_file.h"
#include "pictures/run_pictures.h"
#include "platform/clock.h"
#include "services/alerts.h"
#include "services/fixed_point.h"
#include "services/random_numbers.h"
#include "settings/light_angles.h"
#include "settings/settings_validation.h"

static void* hostWindow(const PlatformData* platform) {
  return platform == nullptr ? nullptr : platform->hwnd;
}

void doAbout(AboutRecord* about) {
  showAboutBox(about == nullptr ? nullptr : hostWindow(about->platformData));
}

void doParameters(SessionRecord* session) {
  validateSettings(session);
  EffectSettings* settings = settingsOf(session);
  if (settings != nullptr) settings->showDialog = 1;
}

// One row each of input, output and mask, times the rows wanted at once.
static int32_t rowMemory(const FilterRecord* filter, const EffectSettings* settings) {
  const int64_t width = int64_t{filter->filterRect.right} - filter->filterRect.left;
  return saturateToInt32(settings->rowsPerBand * (2 * width * filter->planes + width));
}

void doPrepare(SessionRecord* session) {
  FilterRecord* filter = session->filter;
  filter->bufferSpace = 0;
  validateSettings(session);
  EffectSettings* settings = settingsOf(session);
  if (settings == nullptr) return;
  filter->maxSpace = rowMemory(filter, settings);
  setGeometry(session, filter->filterRect, 1);
  computeBufferSizes(session);
}

// Ends the run: nothing is held, and the host is asked for nothing more.
static void endRun(SessionRecord* session) {
  session->render.running = 0;
  freeBuffers(session);
  emptyRects(session);
}

static bool allocateRun(SessionRecord* session) {
  setGeometry(session, session->filter->filterRect, 1);
  allocateBuffers(session);
  return *session->result == kNoError;
}

static bool createPictures(SessionRecord* session) {
  EffectSettings* settings = settingsOf(session);
  if (settings->texturePicture == nullptr) createBuiltInTexture(session);
  if (settings->environmentPicture == nullptr) createBuiltInEnvironment(session);
  const bool complete = settings->texturePicture != nullptr &&
                        settings->environmentPicture != nullptr &&
                        session->render.environmentTable.address != nullptr &&
                        session->render.textureTable.address != nullptr;
  if (complete) return true;
  showAlert(kNotEnoughMemoryAlert);
  *session->result = kUserInformed;
  return false;
}

// Shows the dialog when it is asked for and remembers what was agreed to; false when cancelled.
static bool dialogConfirmed(SessionRecord* session) {
  EffectSettings* settings = settingsOf(session);
  if (settings->showDialog != 1) return true;
  showMainDialog(session, hostWindow(session->filter->platformData));
  settings->showDialog = 0;
  if (*session->result != kNoError) return false;
  saveCachedSettings(session);
  storeEnvironmentPath(session);
  storeTexturePath(session);
  return true;
}

// Hands over the row in the host's buffers and gets the next; false with the host's reason.
static bool exchangeRows(SessionRecord* session) {
  *session->result = session->filter->advanceState();
  session->render.exchangeFailed = *session->result == kNoError ? 0 : 1;
  return *session->result == kNoError;
}

// What the run is for: later requests and buffers follow it.
static void noteRecord(SessionRecord* session) {
  session->render.renderedRect = session->filter->filterRect;
  session->render.renderedPlanes = session->filter->planes;
}

static void startFinalRender(SessionRecord* session) {
  EffectSettings* settings = settingsOf(session);
  RenderState* render = &session->render;
  const FilterRecord* filter = session->filter;
  settings->previewMode = 0;
  freePreviewRender(session);
  lightAngles(settings);
  noteRecord(session);
  setGeometry(session, filter->filterRect, 1);
  renderSetUp(session);
  if (*session->result != kNoError) return endRun(session);
  render->maskPass = render->phase == kPhaseShade ? 0 : 1;
  *session->result = withdrawForRate(session, kFixedOne);
  if (*session->result != kNoError) return endRun(session);
  requestRowRects(session);
  if (filter->advanceState != nullptr) exchangeRows(session);
}

void doStart(SessionRecord* session) {
  seedRandomNumbers(secondsNow());
  // An aborted run leaves its buffers, and hosts need not call Finish.
  freeBuffers(session);
  session->render.running = 0;
  session->render.requestedRate = 0;
  session->render.started = 1;
  session->render.exchangeFailed = 0;
  validateSettings(session);
  EffectSettings* settings = settingsOf(session);
  if (settings == nullptr) return emptyRects(session);
  const FilterRecord* filter = session->filter;
  settings->hostDrawsPreview =
      filter->advanceState != nullptr && filter->displayPixels != nullptr ? 1 : 0;
  if (filter->planes < 1) {
    *session->result = kFilterBadParameters;
    return endRun(session);
  }
  readScriptParameters(session);
  if (!allocateRun(session)) return endRun(session);
  if (isEmptyRect(filter->filterRect)) return endRun(session);  // there is nothing to do
  if (!createPictures(session)) return endRun(session);
  noteRecord(session);
  if (!dialogConfirmed(session)) return endRun(session);
  startFinalRender(session);
}

// One step, unless a callback has changed what the run was started for: buffers and rows were asked
// for that. False when the run is over or stopped.
static bool stepAsStarted(SessionRecord* session) {
  if (recordStands(session)) step(session);
  if (*session->result != kNoError) return false;
  if (recordStands(session)) return true;
  *session->result = kFilterBadParameters;
  endRun(session);
  return false;
}

void doContinue(SessionRecord* session) {
  RenderState* render = &session->render;
  const FilterRecord* filter = session->filter;
  // Without a Start, or after an exchange that failed, there are no rows to go on with.
  if (render->started == 0 || render->exchangeFailed != 0) {
    *session->result = kFilterBadParameters;
    return endRun(session);
  }
  if (render->running != 1) return endRun(session);
  do {
    do {
      if (!stepAsStarted(session)) return;
    } while (render->internalPass == 1);
    requestRowRects(session);
    if (render->running != 1) return endRun(session);
    if (filter->advanceState == nullptr) return;
  } while (exchangeRows(session));
}

void doFinish(SessionRecord* session) {
  session->render.running = 0;
  freeBuffers(session);
  if (settingsOf(session) != nullptr) writeScriptParameters(session);
}
