#include <cstdio>

#include "platform/alerts.h"
#include "platform/unix/program_session.h"

constexpr int32_t kCancelButton = 1;  // the number of every alert's Cancel

static int32_t alertCount = 0;

int32_t reportedAlerts() {
  return alertCount;
}

// A text of several lines becomes one.
static void printText(const char* text) {
  for (const char* at = text; *at != '\0'; ++at) {
    std::fputc(*at == '\n' || *at == '\r' ? ' ' : *at, stderr);
  }
}

void showPlatformMessage(const char* caption, const char* text) {
  ++alertCount;
  printText(caption);
  std::fputs(": ", stderr);
  printText(text);
  std::fputc('\n', stderr);
}

// Reports on standard error and goes on as if Cancel had been pressed.
int32_t showPlatformAlert(const AlertContent& content) {
  ++alertCount;
  printText(content.title);
  for (int32_t i = 0; i < content.textCount; ++i) {
    std::fputs(i == 0 ? ": " : " ", stderr);
    printText(content.texts[i].text);
  }
  std::fputc('\n', stderr);
  return kCancelButton;
}

// Nothing asks for it without a dialog.
void showPlatformSheet(const char*, const SheetRow*, int32_t) {
}
