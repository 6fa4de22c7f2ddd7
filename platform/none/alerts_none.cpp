#include "platform/alerts.h"

#include "platform/none/none_state.h"

int32_t showPlatformAlert(const AlertContent& content) {
  NoneState& state = noneState();
  ShownAlert shown = {content.name, content.title, {}, {}};
  for (int32_t i = 0; i < content.textCount; ++i) shown.texts.push_back(content.texts[i].text);
  for (int32_t i = 0; i < content.buttonCount; ++i) {
    shown.buttons.push_back(content.buttons[i].number);
  }
  const size_t answered = state.record.alerts.size();
  state.record.alerts.push_back(shown);
  const std::vector<int32_t>& answers = state.script.alertAnswers;
  return answered < answers.size() ? answers[answered] : 1;
}

void showPlatformMessage(const char* caption, const char* text) {
  noneState().record.alerts.push_back({"", caption, {text}, {}});
}

void showPlatformSheet(const char* caption, const SheetRow* rows, int32_t count) {
  std::vector<std::string>& sheets = noneState().record.sheets;
  sheets.emplace_back(caption);
  for (int32_t i = 0; i < count; ++i) {
    sheets.back() += std::string("\n") + rows[i].term + "\t" + rows[i].meaning;
  }
}
