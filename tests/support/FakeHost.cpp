#include "FakeHost.h"

namespace velk::test {

int FakeHost::MsgBox(const std::string& text, int buttons, const std::string& title) {
  messages.push_back({text, buttons, title});
  if (msgAnswers.empty()) return DefaultAnswer(buttons);
  const int a = msgAnswers.front();
  msgAnswers.pop_front();
  return a;
}

std::optional<std::string> FakeHost::InputBox(const std::string& prompt, const std::string&,
                                              const std::string& defaultText) {
  prompts.push_back(prompt);
  if (inputAnswers.empty()) return defaultText;
  auto a = inputAnswers.front();
  inputAnswers.pop_front();
  return a;
}

bool FakeHost::Answer(std::deque<std::optional<std::string>>& q, FileDialog& d) {
  dialogsShown.push_back(d);
  if (q.empty()) return false;
  auto a = q.front();
  q.pop_front();
  if (!a) return false;
  d.FileName = *a;
  d.FileTitle = FileTitleOf(*a);
  return true;
}

std::vector<std::string> FakeHost::Texts() const {
  std::vector<std::string> t;
  for (const auto& m : messages)
    t.push_back(m.text);
  return t;
}

} // namespace velk::test
