#include "forms/ResultCheckText.h"

#include <cstdio>

#include "common/TextRules.h"

namespace velk {

namespace {

std::string Residual(double r) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.1E", r);
  return buf;
}

std::string Smaller(const ResultCheck& c) {
  const int n = c.Below();
  std::string s = std::to_string(n) +
                  (n == 1 ? " buckling load factor of smaller magnitude exists"
                          : " buckling load factors of smaller magnitude exist");
  if (c.smaller) s += ", about " + Format(*c.smaller, "0.0000E+00");
  return s;
}

} // namespace

std::vector<std::string> Check_Warnings(const ResultCheck& c, CheckReader reader) {
  std::vector<std::string> w;
  if (c.Ok()) return w;
  const bool batch = reader == CheckReader::Batch;
  if (c.Free()) {
    w.push_back(batch ? "the structure is not restrained against rigid-body motion: the "
                        "eigenvalue is meaningless; check the restraints"
                      : "The structure is not restrained against rigid-body motion: the "
                        "eigenvalue is meaningless. Check the restraints.");
    return w;
  }
  if (!c.Converged())
    w.push_back(batch ? "the iteration did not converge (residual " + Residual(c.residual) +
                            "); raise --max-cycle or --max-shift"
                      : "The iteration did not converge (residual " + Residual(c.residual) +
                            "): raise Max. Cycle or Max. Shift in Analysis Option and run "
                            "again.");
  if (!c.Lowest())
    w.push_back(batch ? Smaller(c) + "; give a smaller --estimate"
                      : Smaller(c) + ": give a smaller estimate in Run Analysis (0 for "
                                     "none) and run again.");
  return w;
}

std::string Check_Verdict(const ResultCheck& c) {
  if (!c.made) return "not checked";
  if (c.Free()) return "free";
  if (!c.Converged()) return "not converged";
  if (!c.Lowest()) return "not lowest";
  return "ok";
}

std::string Mode_Verdict(const ResultCheck& c, std::size_t index) {
  if (!c.made || index >= c.modeResiduals.size()) return "not checked";
  if (c.Free()) return "free";
  if (c.modeResiduals[index] > kResidualLimit) return "not converged";
  if (c.belowFirstMode > 0) return "not lowest";
  return "ok";
}

} // namespace velk
