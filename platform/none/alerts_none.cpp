#include "platform/alerts.h"

#include "platform/none/none_state.h"

int32_t showPlatformAlert(const AlertContent& content) {
  noneState().record.alerts.push_back({content.name, content.title, content.text});
  return noneState().script.alertAnswer;
}

void showPlatformMessage(const char* caption, const char* text) {
  noneState().record.alerts.push_back({"", caption, text});
}
