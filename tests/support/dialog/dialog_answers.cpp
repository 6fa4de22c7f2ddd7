#include "tests/support/dialog/dialog_answers.h"

#include <deque>

#include "tests/support/dialog/dialog_user.h"

static std::deque<std::string> fileAnswers;
static std::deque<ColorAnswer> colorAnswers;
static std::vector<std::string> chooserTitles;
static int32_t alerts = 0;
static int32_t sheets = 0;

void forgetAnswers() {
  fileAnswers.clear();
  colorAnswers.clear();
  chooserTitles.clear();
  alerts = 0;
  sheets = 0;
}

void answerFiles(const std::vector<std::string>& paths) {
  fileAnswers.insert(fileAnswers.end(), paths.begin(), paths.end());
}

void answerColors(const std::vector<ColorAnswer>& colors) {
  colorAnswers.insert(colorAnswers.end(), colors.begin(), colors.end());
}

template <typename Answers>
static auto nextAnswer(Answers* answers) {
  typename Answers::value_type answer = {};
  if (!answers->empty()) {
    answer = answers->front();
    answers->pop_front();
  }
  return answer;
}

std::string nextFileAnswer() {
  return nextAnswer(&fileAnswers);
}

ColorAnswer nextColorAnswer() {
  return nextAnswer(&colorAnswers);
}

void noteChooser(const std::string& title) {
  chooserTitles.push_back(title);
}

void noteAlert() {
  ++alerts;
}

void noteSheet() {
  ++sheets;
}

std::vector<std::string> shownChoosers() {
  return chooserTitles;
}

int32_t shownAlerts() {
  return alerts;
}

int32_t DialogUser::shownSheets() {
  return sheets;
}
