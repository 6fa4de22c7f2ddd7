#include "platform/alerts.h"
#include "platform/unix/text_alerts.h"

void showPlatformMessage(const char* caption, const char* text) {
  countAlert();
  printMessage(caption, text);
}

// Goes on as if Cancel had been pressed.
int32_t showPlatformAlert(const AlertContent& content) {
  countAlert();
  printAlert(content);
  return kAlertCancelButton;
}

// Nothing asks for it without a dialog.
void showPlatformSheet(const char*, const SheetRow*, int32_t) {
}
