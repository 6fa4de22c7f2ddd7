#include "settings/settings_defaults.h"

#include <cstring>

#include "settings/effect_settings.h"
#include "settings/light_angles.h"
#include "settings/setting_fields.h"

void fillDefaultSettings(EffectSettings* settings) {
  std::memset(settings, 0, sizeof(*settings));
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    writeSetting(settings, kSettingRanges[i], kSettingRanges[i].defaults);
  }
  settings->scriptAmount = 50;
  settings->rowsPerBand = 1;
  settings->environmentReady = 1;
  settings->textureReady = 1;
  settings->proceduralTexture[0] = 1;
  settings->proceduralTexture[1] = 5;
  settings->proceduralTexture[2] = 1;
  settings->proceduralTextureVariant = 1;
  settings->constantOne = 1;
  settings->previewScale = 1;
  settings->textureWidth = 256;
  settings->textureHeight = 256;
  lightAngles(settings);
}
