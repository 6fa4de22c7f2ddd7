#include "settings/settings_defaults.h"

#include <cstring>

#include "settings/effect_settings.h"
#include "settings/light_angles.h"
#include "settings/setting_ranges.h"

static void setDefault(EffectSettings* settings, const SettingRange& range) {
  void* field = reinterpret_cast<char*>(settings) + range.offset;
  const double* values = range.defaults;
  switch (range.form) {
    case SettingForm::number:
      *static_cast<int32_t*>(field) = static_cast<int32_t>(values[0]);
      break;
    case SettingForm::toggle:
      *static_cast<uint32_t*>(field) = static_cast<uint32_t>(values[0]);
      break;
    case SettingForm::direction:
      *static_cast<Direction*>(field) = {static_cast<float>(values[0]),
                                         static_cast<float>(values[1]),
                                         static_cast<float>(values[2])};
      break;
    case SettingForm::color:
      *static_cast<Color16*>(field) = {static_cast<uint16_t>(values[0]),
                                       static_cast<uint16_t>(values[1]),
                                       static_cast<uint16_t>(values[2])};
      break;
  }
}

void fillDefaultSettings(EffectSettings* settings) {
  std::memset(settings, 0, sizeof(*settings));
  for (int32_t i = 0; i < kSettingRangeCount; ++i) setDefault(settings, kSettingRanges[i]);
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
