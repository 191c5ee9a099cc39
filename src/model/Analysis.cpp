#include "model/Analysis.h"

#include "common/Fault.h"
#include "common/TextFile.h"

namespace velk {

void Analysis::ReadData1_4(FieldReader& in) {
  Title = in.Text();
  Discription = in.Text();
  RunID = in.Text();
  EigenValueEstimation = in.Single();
  EigenValue = in.Single();
}

void Analysis::StoreData1_4(FieldWriter& out) const {
  out.Text(Title);
  out.EndLine();
  out.Text(Discription);
  out.EndLine();
  out.Text(RunID);
  out.EndLine();
  out.Single(EigenValueEstimation);
  out.Single(EigenValue);
  out.EndLine();
}

void Analysis::ReadData1_4Option(FieldReader& in) {
  try {
    MaxShift = in.Integer();
    MaxCycle = in.Integer();
    ShiftFactor = in.Single();
    IGSTF = in.Boolean();
    ISHEAR = in.Boolean();
    OptionInitialB = in.Integer();
    // What the options dialog would refuse is damage like an unreadable field.
    if (MaxShift < 1 || MaxCycle < 1 || (OptionInitialB != 0 && OptionInitialB != 1))
      Raise(errInvalidCall, "a run option beyond the dialog's range");
  } catch (const Fault&) {
    MaxShift = 3;
    MaxCycle = 8;
    ShiftFactor = 0.8f;
    IGSTF = vbFalse;
    ISHEAR = vbFalse;
    OptionInitialB = 0;
  }
}

void Analysis::StoreData1_4Option(FieldWriter& out) const {
  out.Integer(MaxShift);
  out.Integer(MaxCycle);
  out.Single(ShiftFactor);
  out.Boolean(IGSTF);
  out.Boolean(ISHEAR);
  out.Integer(OptionInitialB);
  out.EndLine();
}

} // namespace velk
