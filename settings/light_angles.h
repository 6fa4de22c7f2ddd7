// light_angles: what the shading needs of the light directions.

#pragma once

struct EffectSettings;

// Derives both lights' compass angles (degrees, -90 to 269) and elevations from their directions.
void lightAngles(EffectSettings* settings);
