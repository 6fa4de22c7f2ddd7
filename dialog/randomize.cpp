#include "dialog/randomize.h"

#include "entry/session_record.h"
#include "services/random_numbers.h"
#include "settings/random_values.h"

// The order decides which random number goes where; a seed gives the same look everywhere.
void randomizeSettings(SessionRecord* session) {
  EffectSettings* settings = settingsOf(session);
  settings->texture = randomInRange(-100, 100);
  settings->reflection = randomInRange(0, 100);
  settings->height = randomInRange(-70, 70);
  settings->radius = randomInRange(0, 50);
  settings->blendMode = 1;
  if ((randomNumber() & 3) == 0) settings->blendMode = randomInRange(1, 10);
  settings->variant = randomInRange(1, 3);
  settings->shape = randomInRange(1, 13);
  settings->gloss = randomInRange(0, 100);
  settings->glare = randomInRange(0, 100);
  settings->iriColors = randomInRange(0, 100);
  settings->iridescence = randomInRange(0, 100);
  settings->tarnish = randomInRange(0, 60);
  randomColor(&settings->light1Color);
  randomColor(&settings->light2Color);
  randomColor(&settings->tarnishColor);
  settings->glassiness = randomInRange(0, 100);
  settings->caustic = randomInRange(0, 100);
  settings->textureScale = randomInRange(30, 75);
}
