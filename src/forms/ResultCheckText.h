#pragma once
// The words of the check of a buckling load factor, for the front ends: the
// batch tool's warnings and the window's "Result Check" box say the same
// things, each with the advice its user can follow.
#include <string>
#include <vector>

#include "analysis/ResultCheck.h"

namespace velk {

enum class CheckReader { Batch, Window };

// One sentence for each test that failed, the free structure first; empty
// when the check passed or was not made.
std::vector<std::string> Check_Warnings(const ResultCheck& check, CheckReader reader);

// The verdict in a word or two, for a table: "ok", "free", "not converged",
// "not lowest", "not checked".
std::string Check_Verdict(const ResultCheck& check);

// The verdict on further mode `index` (0 for mode 1) of a run that asked for
// them: "not converged" when its residual is too large, "not lowest" for
// every mode when load factors of smaller magnitude than mode 1 exist.
std::string Mode_Verdict(const ResultCheck& check, std::size_t index);

} // namespace velk
