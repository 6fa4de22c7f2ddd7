#include "settings/setting_fields.h"

#include <algorithm>
#include <cstring>

int32_t settingComponents(SettingForm form) {
  return form == SettingForm::direction || form == SettingForm::color ? 3 : 1;
}

template <typename Field>
static Field fieldOf(const EffectSettings& settings, const SettingRange& range) {
  Field field;
  std::memcpy(&field, reinterpret_cast<const char*>(&settings) + range.offset, sizeof(field));
  return field;
}

template <typename Field>
static void setField(EffectSettings* settings, const SettingRange& range, const Field& field) {
  std::memcpy(reinterpret_cast<char*>(settings) + range.offset, &field, sizeof(field));
}

void readSetting(const EffectSettings& settings, const SettingRange& range, double values[3]) {
  values[0] = values[1] = values[2] = 0;
  switch (range.form) {
    case SettingForm::number:
      values[0] = fieldOf<int32_t>(settings, range);
      break;
    case SettingForm::toggle:
      values[0] = fieldOf<uint32_t>(settings, range);
      break;
    case SettingForm::direction: {
      const auto direction = fieldOf<Direction>(settings, range);
      values[0] = static_cast<double>(direction.x);
      values[1] = static_cast<double>(direction.y);
      values[2] = static_cast<double>(direction.z);
      break;
    }
    case SettingForm::color: {
      const auto color = fieldOf<Color16>(settings, range);
      values[0] = color.red;
      values[1] = color.green;
      values[2] = color.blue;
      break;
    }
  }
}

void writeSetting(EffectSettings* settings, const SettingRange& range, const double values[3]) {
  switch (range.form) {
    case SettingForm::number:
      setField(settings, range, static_cast<int32_t>(values[0]));
      break;
    case SettingForm::toggle:
      setField(settings, range, static_cast<uint32_t>(values[0]));
      break;
    case SettingForm::direction:
      setField(settings, range,
               Direction{static_cast<float>(values[0]), static_cast<float>(values[1]),
                         static_cast<float>(values[2])});
      break;
    case SettingForm::color:
      setField(settings, range,
               Color16{static_cast<uint16_t>(values[0]), static_cast<uint16_t>(values[1]),
                       static_cast<uint16_t>(values[2])});
      break;
  }
}

void limitSettings(EffectSettings* settings) {
  for (int32_t i = 0; i < kSettingRangeCount; ++i) {
    const SettingRange& range = kSettingRanges[i];
    double values[3];
    readSetting(*settings, range, values);
    for (double& value : values) {
      value =
          std::clamp(value, static_cast<double>(range.minimum), static_cast<double>(range.maximum));
    }
    writeSetting(settings, range, values);
  }
}
