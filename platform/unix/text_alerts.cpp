#include "platform/unix/text_alerts.h"

#include <cstdio>

#include "platform/unix/program_session.h"

static int32_t alertCount = 0;

int32_t reportedAlerts() {
  return alertCount;
}

void countAlert() {
  ++alertCount;
}

// A text of several lines becomes one.
static void printText(const char* text) {
  for (const char* at = text; *at != '\0'; ++at) {
    std::fputc(*at == '\n' || *at == '\r' ? ' ' : *at, stderr);
  }
}

void printMessage(const char* caption, const char* text) {
  printText(caption);
  std::fputs(": ", stderr);
  printText(text);
  std::fputc('\n', stderr);
}

void printAlert(const AlertContent& content) {
  printText(content.title);
  for (int32_t i = 0; i < content.textCount; ++i) {
    std::fputs(i == 0 ? ": " : " ", stderr);
    printText(content.texts[i].text);
  }
  std::fputc('\n', stderr);
}
