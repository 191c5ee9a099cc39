#pragma once
// A scripted host: records every call and answers from queues.
#include "common/Host.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace velk::test {

class FakeHost final : public QuietHost {
public:
  struct Message {
    std::string text;
    int buttons;
    std::string title;
  };
  std::vector<Message> messages;
  std::deque<int> msgAnswers;                         // default: OK / Yes
  std::deque<std::optional<std::string>> openAnswers; // none left, or nullopt: cancel
  std::deque<std::optional<std::string>> saveAnswers;
  std::deque<std::optional<std::string>> inputAnswers; // none left: the default; nullopt: Cancel
  std::vector<std::string> prompts;                    // of the input boxes, in order
  std::vector<FileDialog> dialogsShown;
  int yields = 0;

  int MsgBox(const std::string& text, int buttons, const std::string& title) override;
  std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                      const std::string& defaultText) override;
  bool ShowOpen(FileDialog& d) override { return Answer(openAnswers, d); }
  bool ShowSave(FileDialog& d) override { return Answer(saveAnswers, d); }
  void Yield() override {
    ++yields;
    if (onYield) onYield();
  }
  void Progress(const std::string& text) override { progress.push_back(text); }
  std::function<void()> onYield;     // runs inside each yield, e.g. a Cancel click
  std::vector<std::string> progress; // progress texts of a run, in order

  std::vector<std::string> Texts() const;

private:
  bool Answer(std::deque<std::optional<std::string>>& q, FileDialog& d);
};

} // namespace velk::test
