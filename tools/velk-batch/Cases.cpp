#include "Cases.h"

#include "BatchHost.h"
#include "analysis/Deck.h"
#include "analysis/EigenCalculation.h"
#include "common/Fault.h"
#include "common/Host.h"
#include "common/TextRules.h"
#include "forms/frmAnalysisOption.h"
#include "forms/frmEigen.h"
#include "mesh/LoadRules.h"
#include "model/ModelCheck.h"
#include "session/VELKMain.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace velk::batch {

namespace {

// False, after the message, when a rule does not fit the model.
bool ApplyRules(const std::vector<Rule>& rules) {
  for (const Rule& r : rules) {
    try {
      Apply_Rule(gMesh(), gBeamShape(), r.option, r.value);
    } catch (const RuleRefused& e) {
      MsgBox(r.option + ' ' + r.value + ": " + e.what());
      return false;
    }
  }
  return true;
}

// A connected node that loads the plane stage: a load the deck writes (above
// the tolerance) or a prescribed in-plane displacement that is not 0.
bool Loads(const Nodeb& n) {
  return n.vID != 0 && (std::abs(n.XLoad) > kTolerance || std::abs(n.YLoad) > kTolerance ||
                        (IsTrue(n.XTDir()) && n.XTDirValue != 0) ||
                        (IsTrue(n.YTDir()) && n.YTDirValue != 0));
}

// Three freedoms a point, numbered in 16 bits.
constexpr Long kMostPoints = 32767 / 3;

// Why the run cannot give a meaningful result, where that shows beforehand;
// empty when it may go. The window gives these cases bare messages ("Error...",
// "Error: Overflow!") or a wrong load: here they are said in plain words.
std::string Refusal(const std::string& estimate) {
  if (IsNumeric(estimate)) try {
      TextToSingle(estimate);
    } catch (const Fault&) {
      return "the estimate " + estimate + " lies beyond the range of a Single (about 3.4E+38)";
    }
  if (const auto problem = Check_Model(gMesh(), gMaterial())) return problem->text;
  const Nodes& nodes = gMesh().Nodes();
  if (nodes.MaxvID == 0) return "no plate or stiffener of the model has a section";
  if (nodes.MaxvID > kMostPoints)
    return "the model has " + std::to_string(nodes.MaxvID) +
           " connected nodes; a run takes at most " + std::to_string(kMostPoints) +
           ", whose three freedoms each are numbered in 16 bits";
  if (std::none_of(nodes.begin(), nodes.end(), [](const auto& n) { return Loads(*n); }))
    return "the model has no load: no connected node carries a load or a prescribed in-plane "
           "displacement";
  return {};
}

} // namespace

std::map<std::string, std::string*> FieldsOf(frmBeamShape& f) {
  return {{"txtBL", &f.txtBL},
          {"txtBTFW", &f.txtBTFW},
          {"txtBTFT", &f.txtBTFT},
          {"txtBWH", &f.txtBWH},
          {"txtBWT", &f.txtBWT},
          {"txtBBFW", &f.txtBBFW},
          {"txtBBFT", &f.txtBBFT},
          {"txtBTFWE", &f.txtBTFWE},
          {"txtBTFTE", &f.txtBTFTE},
          {"txtBWHE", &f.txtBWHE},
          {"txtBWTE", &f.txtBWTE},
          {"txtBBFWE", &f.txtBBFWE},
          {"txtBBFTE", &f.txtBBFTE},
          {"txtOffset", &f.txtOffset},
          {"txtMOE", &f.txtMOE},
          {"txtPR", &f.txtPR},
          {"txtNumXElements", &f.txtNumXElements},
          {"txtNumYElements", &f.txtNumYElements}};
}

bool IsField(const std::string& name) {
  frmBeamShape form;
  return name == "chkProportionalMesh" || FieldsOf(form).count(name) != 0;
}

Taken TakeRule(const std::vector<std::string>& args, std::size_t& i, GirderRequest& g,
               std::string& why) {
  const std::string& a = args[i];
  const auto& options = Rule_Options();
  if (std::find(options.begin(), options.end(), a) == options.end()) return Taken::No;
  if (i + 1 >= args.size()) {
    why = a + " needs a value";
    return Taken::Refused;
  }
  const std::string& v = args[++i];
  why = Rule_Value_Problem(a, v);
  if (!why.empty()) return Taken::Refused;
  g.rules.push_back({a, v});
  return Taken::Yes;
}

std::string CheckFields(const GirderRequest& g) {
  for (const auto& [name, text] : g.fields)
    if (!IsField(name)) return "unknown field '" + name + "'";
  for (const auto& [name, text] : g.fields)
    if (name == "chkProportionalMesh" && text != "0" && text != "1")
      return "chkProportionalMesh takes 0 or 1";
  return {};
}

bool Generate_Girder(const GirderRequest& g) {
  frmBeamShape form;
  auto fields = FieldsOf(form);
  form.Form_Activate();
  for (const auto& [name, text] : g.fields) {
    if (name == "chkProportionalMesh")
      form.chkProportionalMesh = text == "1";
    else
      *fields.at(name) = text;
  }
  form.cmdGenerate_Click();
  return form.Unloaded && ApplyRules(g.rules);
}

Taken TakeIterationOption(const std::vector<std::string>& args, std::size_t& i, RunRequest& r,
                          std::string& why) {
  const std::map<std::string, std::string*> valued = {{"--estimate", &r.estimate},
                                                      {"--max-shift", &r.shift},
                                                      {"--max-cycle", &r.cycle},
                                                      {"--factor", &r.factor}};
  const std::map<std::string, bool*> flags = {
      {"--sym", &r.sym}, {"--torsion", &r.torsion}, {"--shear", &r.shear},
      {"--no-check", &r.noCheck}};
  const std::string& a = args[i];
  if (auto f = flags.find(a); f != flags.end()) {
    *f->second = true;
    return Taken::Yes;
  }
  const auto v = valued.find(a);
  if (v == valued.end()) return Taken::No;
  if (i + 1 >= args.size()) {
    why = a + " needs a value";
    return Taken::Refused;
  }
  *v->second = args[++i];
  return Taken::Yes;
}

bool ApplyRunOptions(const RunRequest& r) {
  const Analysis defaults;
  Analysis& a = gAnalysis();
  a.MaxShift = defaults.MaxShift;
  a.MaxCycle = defaults.MaxCycle;
  a.ShiftFactor = defaults.ShiftFactor;
  a.IGSTF = defaults.IGSTF;
  a.ISHEAR = defaults.ISHEAR;
  a.OptionInitialB = defaults.OptionInitialB;
  frmAnalysisOption options;
  options.Form_Load();
  if (!r.shift.empty()) options.txtShift = r.shift;
  if (!r.cycle.empty()) options.txtCycle = r.cycle;
  if (!r.factor.empty()) options.txtFactor = r.factor;
  options.chktorsion = r.torsion ? 1 : 0;
  options.chkshear = r.shear ? 1 : 0;
  options.optAll = r.sym;
  options.optOneThird = !r.sym;
  options.cmdApply_Click();
  Request_Check(!r.noCheck);
  return options.Unloaded;
}

TemporaryFolderGuard::TemporaryFolderGuard() {
  std::string pattern = (std::filesystem::temp_directory_path() / "velk-batch-XXXXXX").string();
  if (!::mkdtemp(pattern.data())) throw std::runtime_error("cannot create a temporary folder");
  path_ = pattern;
  SetTemporaryFolder(path_);
}

TemporaryFolderGuard::~TemporaryFolderGuard() {
  SetTemporaryFolder("");
  std::error_code ec;
  std::filesystem::remove_all(path_, ec);
}

RunEnd Run_Model(BatchHost& host, const std::string& estimate, int modes) {
  frmEigen form;
  form.ShowCheck = false;
  form.Form_Load();
  if (!estimate.empty()) form.txtEstimation = estimate;
  Request_Modes(modes);
  host.Hold();
  if (const std::string why = Refusal(form.txtEstimation); !why.empty()) {
    MsgBox(why);
    return RunEnd::Failed;
  }
  form.cmdApply_Click();
  if (LastRunSmallestPivotRatio() < kTinyPivotRatio) {
    host.Discard();
    return RunEnd::Free;
  }
  return LastRunOutcome() == RunOutcome::Completed ? RunEnd::Completed : RunEnd::Failed;
}

} // namespace velk::batch
