#pragma once
// The host of the batch tool: the program's messages as lines of text.
#include "Stop.h"
#include "analysis/EigenCalculation.h"
#include "common/Host.h"

#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace velk::batch {

// Every message the logic shows is a failure, printed on stderr as one line
// with the tool's prefix; only a run that finds its eigenvalue has messages of
// its own, its result, which go to stdout. Questions take their first answer
// (OK, Yes).
class BatchHost final : public QuietHost {
public:
  int MsgBox(const std::string& message, int buttons, const std::string&) override {
    // A question the tool cannot ask is said as the fact it asks about.
    const std::string text = message == "Disk is full. Continue?" ? "the disk is full" : message;
    if (holding_)
      held_.push_back(text);
    else
      std::cerr << "velk-batch: " << text << '\n';
    return DefaultAnswer(buttons);
  }
  void Detail(const std::string& text) override { MsgBox(text, 0, {}); }
  // A stop signal cancels the run at its checkpoint, as Cancel does.
  void Yield() override {
    if (StopSignal()) AnalysisCancel = -1;
  }
  // A run's messages wait for its outcome to know their stream.
  void Hold() { holding_ = true; }
  // Prints what was held, on stdout for a run that succeeded; false when
  // nothing was held.
  bool Release(bool succeeded) {
    const std::vector<std::string> texts = Take();
    for (const std::string& text : texts)
      (succeeded ? std::cout : std::cerr) << (succeeded ? "" : "velk-batch: ") << text << '\n';
    return !texts.empty();
  }

  // Forgets what was held: the run's own words would mislead.
  void Discard() { Take(); }

  // What was held, for a caller that words the outcome itself.
  std::vector<std::string> Take() {
    holding_ = false;
    return std::exchange(held_, {});
  }

private:
  bool holding_ = false;
  std::vector<std::string> held_;
};

} // namespace velk::batch
