#pragma once
// What the five property dialogs share: the fields come from the first
// selected object, Apply checks every field before anything is written, then
// writes each selected object, updates its flags and runs the follow-up.
#include "common/Fault.h"
#include "common/Host.h"
#include "common/TextRules.h"
#include "editing/Selection.h"
#include "session/VELKMain.h"

#include <exception>
#include <initializer_list>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace velk {

constexpr const char* kNumbersMessage = "Input Data Error : Numbers!";
constexpr const char* kOutOfRangeMessage = "Input Data Error : Number out of range!";

class PropertyForm {
public:
  bool Unloaded = false; // the dialog has closed itself

protected:
  // One text field and the Single it is read into.
  struct Number {
    const std::string* text;
    Single* value;
  };
  // Every text numeric, then every value within a Single's range; false after
  // the message of the first failure.
  static bool ReadNumbers(const std::vector<Number>& fields);
  // False after `message` when any value lies below `bound`.
  static bool NotBelow(std::initializer_list<Single> values, Single bound, const char* message);

  // The selected object at `index` (1 up) as the dialog's class; a mixed
  // selection fails here, inside the caller's trap.
  template <class T> static T& Selected(Long index) {
    const std::shared_ptr<T>& p = std::get<std::shared_ptr<T>>(gSelection().Item(index));
    if (!p) Raise(errObjectNotSet);
    return *p;
  }

  // Fill_Fields: the first selected object's values, when there is one.
  template <class T, class Fill> static void FillFrom(Fill&& fill) {
    try {
      if (gSelection().SelectedCounter() != 0) fill(Selected<T>(1));
    } catch (const std::exception&) {
      MsgBox("Error...");
    }
  }

  // Apply: nothing is written unless `check` passes; a fault in the loop
  // leaves what was written so far and keeps the dialog open.
  template <class T, class Check, class Write, class FollowUp>
  void ApplyToSelection(Check&& check, Write&& write, FollowUp&& followUp) {
    try {
      if (!check()) return;
      const Long count = gSelection().SelectedCounter();
      for (Long i = 1; i <= count; ++i) {
        T& object = Selected<T>(i);
        write(object);
        object.UpdatePropertyDefined();
      }
      followUp();
      Unloaded = true;
    } catch (const std::exception&) {
      MsgBox("Error...");
    }
  }
};

} // namespace velk
