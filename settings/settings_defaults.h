// settings_defaults: the settings of a record that nobody has touched.

#pragma once

struct EffectSettings;

// Zero-fills the record, then sets every default, derived values included.
void fillDefaultSettings(EffectSettings* settings);
