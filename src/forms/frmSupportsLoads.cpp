#include "forms/frmSupportsLoads.h"

#include "common/Host.h"
#include "common/TextRules.h"
#include "mesh/LoadRules.h"
#include "session/VELKMain.h"
#include "view/View.h"

#include <cctype>

namespace velk {

namespace {

constexpr const char* kTitle = "Supports and Loads";

bool Blank(const std::string& text) {
  return text.find_first_not_of(" \t") == std::string::npos;
}

std::string Trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

} // namespace

std::vector<frmSupportsLoads::Rule> frmSupportsLoads::Rules(std::string& why) const {
  std::vector<Rule> rules;
  why.clear();
  auto need = [&](const std::string& text, const char* caption) {
    if (why.empty() && !Blank(text) && !IsNumeric(text))
      why = std::string("Input Data Error : ") + caption + " is not a number!";
  };
  need(txtMoment, "End moment M");
  need(txtAxial, "Axial load P");
  need(txtPoint, "Point load P");
  need(txtPointX, "the point load's x");
  need(txtUdl, "Line load q");
  need(txtPatch, "Patch load F");
  need(txtPatchC, "the patch's length c");
  need(txtPatchX, "the patch's x");
  need(txtEdgeS1, "Edge stress S1");
  need(txtEdgeS2, "Edge stress S2");
  need(txtEdgeShear, "Edge shear T");
  auto part = [&](const std::string& part, const std::string& whole, const char* text) {
    if (why.empty() && !Blank(part) && Blank(whole)) why = text;
  };
  part(txtPointX, txtPoint, "Give the point load P for its x.");
  part(txtPatchC + txtPatchX, txtPatch, "Give the patch load F for its length and x.");
  part(txtPatch, txtPatchC, "Give the length c over which the patch load spreads.");
  part(txtEdgeS2, txtEdgeS1, "Give the edge stress S1 at the bottom for S2 at the top.");
  if (why.empty() && chkFork && chkSimple) why = "Choose fork or simple supports, not both.";
  if (!why.empty()) return {};

  if (chkFork) rules.push_back({"--supports", "fork"});
  if (chkSimple) rules.push_back({"--supports", "simple"});
  auto add = [&](const char* option, const std::string& text) {
    if (!Blank(text)) rules.push_back({option, Trimmed(text)});
  };
  add("--moment", txtMoment);
  add("--axial", txtAxial);
  if (!Blank(txtPoint))
    rules.push_back({"--point", Trimmed(txtPoint) +
                                    (Blank(txtPointX) && !chkPointBottom ? ""
                                                                         : ":" + Trimmed(txtPointX)) +
                                    (chkPointBottom ? ":bottom" : "")});
  add("--udl", txtUdl);
  if (!Blank(txtEdgeS1))
    rules.push_back({"--edge-sx", Trimmed(txtEdgeS1) +
                                      (Blank(txtEdgeS2) ? "" : ":" + Trimmed(txtEdgeS2))});
  add("--edge-sxy", txtEdgeShear);
  if (!Blank(txtPatch))
    rules.push_back({"--patch", Trimmed(txtPatch) + ":" + Trimmed(txtPatchC) +
                                    (Blank(txtPatchX) ? "" : ":" + Trimmed(txtPatchX))});
  return rules;
}

void frmSupportsLoads::cmdApply_Click() {
  std::string why;
  const std::vector<Rule> rules = Rules(why);
  if (!why.empty()) {
    MsgBox(why, vbExclamation, kTitle);
    return;
  }
  if (rules.empty()) {
    MsgBox("No support or load is given.", vbExclamation, kTitle);
    return;
  }
  // Rules write only into the nodes: a copy of them puts a refused set back.
  Nodes& nodes = gMesh().Nodes();
  std::vector<Nodeb> before;
  before.reserve(static_cast<std::size_t>(nodes.Count()));
  for (const auto& n : nodes)
    before.push_back(*n);
  for (const Rule& r : rules) {
    try {
      Apply_Rule(gMesh(), gBeamShape(), r.option, r.value);
    } catch (const RuleRefused& e) {
      std::size_t i = 0;
      for (const auto& n : nodes)
        *n = before[i++];
      std::string reason = e.what();
      if (!reason.empty()) reason[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(reason[0])));
      MsgBox(reason + ".", vbExclamation, kTitle);
      return;
    }
  }
  Unloaded = true;
  gView().Refresh();
}

} // namespace velk
