#include "persistence/settings_items.h"

#include "settings/effect_settings.h"

#define ITEM(form, field, version) \
  { #field, ItemForm::form, version, offsetof(EffectSettings, field), false, 0 }
#define ITEM_OR(form, field, version, absent) \
  { #field, ItemForm::form, version, offsetof(EffectSettings, field), true, absent }
#define PART(form, field, part, version) \
  { #field, ItemForm::form, version, offsetof(EffectSettings, field part), false, 0 }
#define TEXT(form, what, version) \
  { what, ItemForm::form, version, 0, false, 0 }

const SettingsItem kSettingsItems[kSettingsItemCount] = {
    PART(integer, proceduralTexture, [0], kEveryVersion),
    PART(integer, proceduralTexture, [2], kEveryVersion),
    PART(integer, proceduralTexture, [1], kEveryVersion),
    ITEM(integer, texture, kEveryVersion),
    ITEM(integer, shape, kEveryVersion),
    ITEM(integer, reflection, kEveryVersion),
    ITEM(integer, height, kEveryVersion),
    ITEM(integer, constantOne, kEveryVersion),
    ITEM(integer, gloss, kEveryVersion),
    ITEM(integer, glare, kEveryVersion),
    ITEM(integer, textureChoice, kEveryVersion),
    ITEM(integer, radius, kEveryVersion),
    ITEM(integer, autoPreview, kEveryVersion),
    PART(hundredths, light1Dir, .x, kEveryVersion),
    PART(hundredths, light1Dir, .y, kEveryVersion),
    PART(hundredths, light1Dir, .z, kEveryVersion),
    ITEM(integer, iriColors, 16),
    PART(hundredths, light2Dir, .x, 18),
    PART(hundredths, light2Dir, .y, 18),
    PART(hundredths, light2Dir, .z, 18),
    PART(channel, light1Color, .red, 19),
    PART(channel, light1Color, .green, 19),
    PART(channel, light1Color, .blue, 19),
    PART(channel, light2Color, .red, 19),
    PART(channel, light2Color, .green, 19),
    PART(channel, light2Color, .blue, 19),
    ITEM(integer, glassiness, 19),
    ITEM(integer, caustic, 20),
    ITEM(integer, textureWidth, 21),
    ITEM(integer, textureHeight, 21),
    ITEM_OR(integer, iridescence, 22, 0),
    PART(channel, tarnishColor, .red, 23),
    PART(channel, tarnishColor, .green, 23),
    PART(channel, tarnishColor, .blue, 23),
    ITEM_OR(integer, tarnish, 23, 0),
    // The items of version 26 stand before those of version 25.
    ITEM(integer, textureWidth, 26),
    ITEM(integer, textureHeight, 26),
    ITEM(block, environmentRef, 25),
    ITEM(block, textureRef, 25),
    ITEM_OR(integer, variant, 25, 1),
    ITEM_OR(integer, environmentTurns, 25, 0),
    ITEM_OR(integer, blendMode, 27, 1),
    ITEM_OR(integer, iriTableChoice, 28, 0),
    ITEM_OR(integer, textureScale, 28, 55),
    ITEM_OR(integer, textureOffsetX, 29, 0),
    ITEM_OR(integer, textureOffsetY, 29, 0),
    TEXT(encoding, "nameEncoding", 31),
    TEXT(name, "environmentName", 31),
    TEXT(name, "textureName", 31),
};
