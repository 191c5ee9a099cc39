#include "forms/PropertyForm.h"

#include "common/Fault.h"

#include <algorithm>

namespace velk {

bool PropertyForm::ReadNumbers(const std::vector<Number>& fields) {
  if (!std::all_of(fields.begin(), fields.end(),
                   [](const Number& f) { return IsNumeric(*f.text); })) {
    MsgBox(kNumbersMessage);
    return false;
  }
  // "1e40" is numeric text but no Single: it is refused here rather than
  // written as infinity or failing half-way through the selection.
  try {
    for (const Number& f : fields)
      *f.value = TextToSingle(*f.text);
  } catch (const Fault&) {
    MsgBox(kOutOfRangeMessage);
    return false;
  }
  return true;
}

bool PropertyForm::NotBelow(std::initializer_list<Single> values, Single bound,
                            const char* message) {
  if (std::any_of(values.begin(), values.end(), [bound](Single v) { return v < bound; })) {
    MsgBox(message);
    return false;
  }
  return true;
}

} // namespace velk
