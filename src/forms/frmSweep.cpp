#include "forms/frmSweep.h"

#include "common/TextRules.h"
#include "forms/GirderFields.h"

#include <regex>

namespace velk {

void frmSweep::Form_Load() {
  girder_.Form_Activate();
  options.Form_Load();
  const std::string value = girder_.*(Girder_Fields().front().text);
  if (txtFrom.empty()) {
    cboField = "txtBL";
    txtFrom = value;
    txtTo = value;
    txtStep = value;
  }
}

std::vector<std::string> frmSweep::Arguments(std::string& why) {
  why.clear();
  auto number = [&](const std::string& text, const char* caption) {
    if (why.empty() && !IsNumeric(text)) why = std::string("Input Data Error : ") + caption + "!";
  };
  number(txtFrom, "From");
  number(txtTo, "To");
  number(txtStep, "Step");
  if (!txtEstimate.empty()) number(txtEstimate, "Estimate");
  if (!txtJobs.empty()) number(txtJobs, "Processes");
  if (why.empty() && txtCsv.empty()) why = "Give the CSV file the study is written to.";
  const std::vector<frmSupportsLoads::Rule> given = rules.Rules(why);
  if (!why.empty()) return {};

  std::vector<std::string> args = {"sweep", cboField + "=" + txtFrom + ":" + txtTo + ":" + txtStep};
  for (const GirderField& f : Girder_Fields()) {
    const std::string& text = girder_.*(f.text);
    if (f.name != cboField && !text.empty()) args.push_back(std::string(f.name) + "=" + text);
  }
  args.push_back(std::string("chkProportionalMesh=") + (girder_.chkProportionalMesh ? "1" : "0"));
  for (const frmSupportsLoads::Rule& r : given) {
    args.push_back(r.option);
    args.push_back(r.value);
  }
  if (!txtEstimate.empty()) args.insert(args.end(), {"--estimate", txtEstimate});
  args.insert(args.end(), {"--max-shift", options.txtShift, "--max-cycle", options.txtCycle,
                           "--factor", options.txtFactor});
  if (options.optAll) args.push_back("--sym");
  if (options.chktorsion) args.push_back("--torsion");
  if (options.chkshear) args.push_back("--shear");
  args.insert(args.end(), {"-o", txtCsv});
  if (!txtPlot.empty()) args.insert(args.end(), {"--plot", txtPlot});
  if (!txtJobs.empty()) args.insert(args.end(), {"--jobs", txtJobs});
  points.clear();
  done = total = 0;
  lblStatus = "Running...";
  return args;
}

bool frmSweep::TakeLine(const std::string& line) {
  // "velk-batch: case 3/10 txtBL=180: 1.2345E+04", "... (not converged)",
  // "... : failed: MESSAGE"
  static const std::regex kCase(R"(^velk-batch: case (\d+)/(\d+) \S+?=(\S+): (.*)$)");
  std::smatch m;
  if (!std::regex_match(line, m, kCase)) return false;
  Point p;
  p.x = TextToDouble(m[3].str());
  const std::string rest = m[4].str();
  if (rest.rfind("failed: ", 0) == 0) {
    p.failure = rest.substr(8);
  } else {
    const auto space = rest.find(' ');
    p.eigenvalue = TextToDouble(rest.substr(0, space));
    p.check = "ok";
    if (space != std::string::npos && rest.size() > space + 2)
      p.check = rest.substr(space + 2, rest.size() - space - 3); // inside the brackets
  }
  points.push_back(p);
  ++done;
  total = std::stoi(m[2].str());
  lblStatus = "Case " + std::to_string(done) + " of " + std::to_string(total);
  return true;
}

void frmSweep::Finished(std::optional<int> status, const std::string& lastMessage) {
  if (!status)
    lblStatus = "Stopped after " + std::to_string(done) + " of " + std::to_string(total) +
                " cases.";
  else if (*status == 0)
    lblStatus = "Done: " + std::to_string(done) + " cases.";
  else if (*status == 3)
    lblStatus = "Done: the check doubts some cases (see the check column).";
  else
    lblStatus = lastMessage.empty() ? "The study failed." : lastMessage;
}

} // namespace velk
