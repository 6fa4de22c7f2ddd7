#include "tests/reference/reference_render.h"

#include "tests/reference/reference_number.h"

ReferenceOutput referenceRender(const ReferenceInput& input) {
  const EffectSettings& settings = input.settings;
  const ReferenceMask mask = {input.width, input.height, input.mask};
  ReferenceOutput out{};

  if (settings.textureChoice == kTextureChoiceFile) {
    const bool file = !input.texture.empty();
    out.textureWidth = file ? input.textureWidth : settings.textureWidth;
    out.textureHeight = file ? input.textureHeight : settings.textureHeight;
    out.textureSurface =
        referenceTextureSurface(input.textureWidth, input.textureHeight, input.texture);
  } else {
    const ReferenceTexture texture = referenceTexture(settings.textureChoice, input.seed);
    out.textureWidth = texture.width;
    out.textureHeight = texture.height;
    out.textureSurface = texture.grey;
  }
  out.environmentSurface = referenceRipMap(input.environment, settings.environmentTurns);

  out.effectiveRadius = referenceEffectiveRadius(settings);
  out.coneStep = referenceConeStep(out.effectiveRadius);
  out.textureScaleFactor = referenceTextureScaleFactor(settings);
  out.profile = referenceProfile(settings);
  out.tables = referenceTables(settings);

  ReferenceField field = referenceEmptyField(input.width, input.height);
  referenceStamp(field, mask, out.effectiveRadius);
  out.afterStamping = field;
  referenceFillBorder(field, mask, out.coneStep);
  out.afterBorder = field;
  referenceSmoothForward(field);
  out.afterForward = field;
  referenceSmoothBackward(field);
  out.afterBackward = field;
  referenceMapProfile(field, out.profile);
  referenceRelief(field, settings, referenceTextureTable(out.textureSurface), out.textureWidth,
                  out.textureHeight);
  out.afterRelief = field;

  referenceBeyond32Bits = 0;
  out.effect = referenceShade({settings, field, mask, out.profile, out.tables,
                               out.environmentSurface, input.planes, input.source});
  out.intermediatesBeyond32Bits = referenceBeyond32Bits;
  return out;
}
