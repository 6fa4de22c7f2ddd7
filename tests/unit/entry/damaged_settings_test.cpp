// Settings that no dialog gives: a damaged preset, a host that mixes up its blocks. The run ends in
// order, and the sanitizers have nothing to say.

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "dialog/controls/control_table.h"
#include "geometry/preview/preview_render.h"
#include "geometry/preview/preview_request.h"
#include "geometry/row_machine.h"
#include "platform/none/none_script.h"
#include "settings/setting_ranges.h"
#include "tests/support/dialog/dialog_runs.h"
#include "tests/support/hosts/host_runs.h"
#include "tests/support/random_inputs.h"

static int32_t strangeNumber(TestRandom* random) {
  constexpr int32_t kExtremes[] = {INT32_MIN, INT32_MIN + 1, -65536,        -101,     -1,   0,
                                   1,         101,           255,           256,      4096, 65536,
                                   1 << 24,   1 << 30,       INT32_MAX - 1, INT32_MAX};
  const int32_t kind = randomBetween(random, 0, 23);
  if (kind < 16) return kExtremes[kind];
  return randomBetween(random, INT32_MIN / 2, INT32_MAX / 2);
}

static float strangeSingle(TestRandom* random) {
  constexpr float kExtremes[] = {0,
                                 -1e30F,
                                 1e30F,
                                 std::numeric_limits<float>::infinity(),
                                 std::numeric_limits<float>::quiet_NaN(),
                                 std::numeric_limits<float>::denorm_min(),
                                 0.5F,
                                 -1};
  return kExtremes[randomBetween(random, 0, 7)];
}

static void damage(TestRandom* random, EffectSettings* settings) {
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& range = kSettingRanges[i];
    if (randomBetween(random, 0, 2) == 0) continue;
    char* field = reinterpret_cast<char*>(settings) + range.offset;
    if (range.form == SettingForm::direction) {
      const Direction direction = {strangeSingle(random), strangeSingle(random),
                                   strangeSingle(random)};
      std::memcpy(field, &direction, sizeof(direction));
    } else if (range.form != SettingForm::color) {
      const int32_t number = strangeNumber(random);
      std::memcpy(field, &number, sizeof(number));
    }
  }
  settings->rowsPerBand = static_cast<int16_t>(strangeNumber(random));
  settings->light1Angle = strangeNumber(random);
  settings->previewScale = strangeNumber(random);
  settings->previewOriginX = strangeNumber(random);
  settings->previewOriginY = strangeNumber(random);
  for (uint32_t& parameter : settings->proceduralTexture) {
    parameter = static_cast<uint32_t>(strangeNumber(random));
  }
  settings->proceduralTextureVariant = static_cast<uint32_t>(strangeNumber(random));
  std::memset(settings->texturePath, 'x', kPathBytes);
  std::memset(settings->environmentPath, 'y', kPathBytes);
  std::memset(settings->pictureFolder, 'z', kPathBytes);
}

TEST(DamagedSettings, EveryRunEndsInOrder) {
  TestRandom random = {4711};
  const HostPicture picture = testPicture(21, 17, 3);
  const HostMask mask = testMask(21, 17);
  for (int32_t i = 0; i < 300; ++i) {
    const HostRun run = runHost({}, picture, mask, [&random] {
      damage(&random, hostSettings());
      // A dialog in between renders previews, and its texture sizes come from the file.
      noneScript().modalWindow = [&random](NoneWindow& window) {
        SessionRecord* session = hostSession();
        EffectSettings* settings = settingsOf(session);
        settings->textureWidth = strangeNumber(&random);
        settings->textureHeight = strangeNumber(&random);
        requestPreviewImage(session, strangeNumber(&random));
        if (*session->result == 0) runPreview(session);
        *session->result = 0;
        window.clickButton(kOkButton);
      };
      hostSettings()->showDialog = 1;
      callSelector(kSelectorPrepare);
    });
    ASSERT_EQ(run.result, 0) << "run " << i;
    ASSERT_EQ(run.ledgerAfter.buffers, 0);
    ASSERT_EQ(run.ledgerAfter.misuses, 0);
  }
}
