#pragma once
// The Parameter Sweep window's logic: a study of one field of the girder
// dialog, run by the batch tool as a child process so the window stays free.
// The form builds the tool's arguments from the girder in the window (the
// girder dialog's fields as the model holds them), the rules and the analysis
// options, and reads the tool's line per finished case into the curve.
#include <optional>
#include <string>
#include <vector>

#include "forms/frmAnalysisOption.h"
#include "forms/frmBeamShape.h"
#include "forms/frmSupportsLoads.h"

namespace velk {

class frmSweep {
public:
  // Caption "Parameter Sweep".
  std::string cboField = "txtBL"; // "Field", shown by its caption
  std::string txtFrom, txtTo, txtStep;
  std::string txtEstimate;   // "Estimate" (blank: the program's own)
  std::string txtCsv;        // "CSV file"
  std::string txtPlot;       // "Picture" (.png or .svg; blank: none)
  std::string txtJobs = "";  // "Processes" (blank: one a core)
  frmSupportsLoads rules;    // the rules, as in Supports and Loads
  frmAnalysisOption options; // the iteration options

  // One finished case as the tool reports it.
  struct Point {
    double x = 0;
    std::optional<double> eigenvalue; // empty for a case that failed
    std::string check, failure;
  };
  std::vector<Point> points; // in the order they finished
  int done = 0, total = 0;
  std::string lblStatus = "Ready...";

  // The fields from the girder in the window and the stored options.
  void Form_Load();
  // The tool's arguments after "velk-batch"; empty, with the message in
  // `why`, when a field is refused.
  std::vector<std::string> Arguments(std::string& why);
  // A line of the tool's standard error; true when it was a finished case.
  bool TakeLine(const std::string& line);
  // The tool's end: its exit status, or nothing when it was stopped.
  void Finished(std::optional<int> status, const std::string& lastMessage);

private:
  frmBeamShape girder_;
};

} // namespace velk
