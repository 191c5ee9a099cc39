// velk-batch: the program's logic without windows, for scripted studies and
// regression tests.
#include "analysis/EigenCalculation.h"
#include "common/Host.h"
#include "common/ProgramFolder.h"
#include "common/TextRules.h"
#include "forms/ResultCheckText.h"
#include "session/ProjectFile.h"
#include "session/ReportCommands.h"
#include "session/VELKMain.h"

#include "BatchHost.h"
#include "Cases.h"
#include "Stop.h"
#include "Sweep.h"
#include "Usage.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

using namespace velk;
using namespace velk::batch;

namespace {

const char* kUsage =
    "usage:\n"
    "  velk-batch generate [FIELD=TEXT ...] [RULE ...] -o OUT.inp\n"
    "      builds a girder mesh as the Geometry dialog does in a new session and saves it.\n"
    "      FIELD is one of the dialog's fields: txtBL txtBTFW txtBTFT txtBWH txtBWT txtBBFW\n"
    "      txtBBFT txtBTFWE txtBTFTE txtBWHE txtBWTE txtBBFWE txtBBFTE txtOffset txtMOE txtPR\n"
    "      txtNumXElements txtNumYElements chkProportionalMesh\n"
    "      RULE puts supports and loads on the mesh (x along, y up, z out of the web):\n"
    "        --supports fork|simple  fork: both ends held in z, y at both bottom nodes, x at\n"
    "                                End 1's; simple (plates): z on the edges, rigid body only\n"
    "        --moment M   end moments, top flange in compression for M > 0\n"
    "        --axial P    compression P over the end sections\n"
    "        --point P[:x[:top|bottom]]  downward load P at the node at x (mid-length when\n"
    "                     not given) of the top row, or of the bottom row\n"
    "        --udl q      downward load q per length along the top row\n"
    "        --patch F:c[:x]  downward load F spread over the length c of the top row,\n"
    "                     centred at x (mid-length when not given)\n"
    "        --edge-sx S[:S2]  (plates) edge compression stress along x, S at the bottom\n"
    "                     edge varying linearly to S2 at the top (uniform S when alone)\n"
    "        --edge-sxy T (plates) edge shear stress T on all four edges\n"
    "  velk-batch info IN.inp\n"
    "      reads a project (version 1.4 or 1.3) and prints its counts.\n"
    "  velk-batch run IN.inp [-o OUT.inp] [--listing FILE] [--deck FILE] [--vtu FILE]\n"
    "                 [--estimate X] [--max-shift N] [--max-cycle N] [--factor F]\n"
    "                 [--sym] [--torsion] [--shear] [--modes N] [--no-check]\n"
    "      runs the buckling analysis as the Run dialog does and prints its result, e.g.\n"
    "      \"Eigenvalue of 3.7480E-02\". Options not given take their defaults (3 shifts,\n"
    "      8 cycles, factor 0.8, unsymmetric start, no torsion or shear option); the\n"
    "      estimate comes from the project unless --estimate is given. -o saves the\n"
    "      project with the results; --listing and --deck keep copies of the listing\n"
    "      and the deck; --vtu writes the model with its results for ParaView, as\n"
    "      export does. Exit status 1 when no eigenvalue was found, or when the\n"
    "      structure can move without deforming (a pivot under 1e-10 of its diagonal).\n"
    "      --modes N (1 to 20) then prints the N eigenvalues of smallest magnitude,\n"
    "      one a line: \"Mode 1 eigenvalue 2.4660E+04\".\n"
    "      The eigenvalue is then checked: converged (its residual bounds its error\n"
    "      to 0.1 %) and the smallest in magnitude (no load factor of either sign\n"
    "      0.1 % or more below it, by the Sturm count); so are the modes. A check\n"
    "      that fails is a warning on stderr and exit status 3. --no-check skips it.\n"
    "  velk-batch report IN.inp -o OUT.vrp\n"
    "  velk-batch grid IN.inp -o OUT.txt\n"
    "      write the report file or the displacement grid of the project as it stands,\n"
    "      as File > Create Report File does; no analysis is run (use run -o first).\n"
    "  velk-batch export IN.inp -o OUT.vtu\n"
    "      writes the model of the project as it stands, with its results if it holds\n"
    "      them, as a VTK unstructured grid (ASCII .vtu): plates as quads, stiffeners as\n"
    "      lines, the buckled shape as the vector array Mode1; run --vtu with --modes N\n"
    "      adds the further shapes as Mode2 to ModeN.\n"
    "  velk-batch sweep FIELD=FROM:TO:STEP [FIELD=TEXT ...] [RULE ...] [--estimate X]\n"
    "                   [--max-shift N] [--max-cycle N] [--factor F] [--sym] [--torsion]\n"
    "                   [--shear] -o STUDY.csv [--plot FILE.png|FILE.svg] [--jobs N]\n"
    "                   [--shard K/N]\n"
    "      generates and runs one girder for each value FROM, FROM+STEP, ... up to TO of\n"
    "      one field, the other fields and the rules as for generate, the options as\n"
    "      for run, and writes one row a case: \"FIELD,eigenvalue,equations,bandwidth,\n"
    "      seconds,failure,check\" (the eigenvalue as run prints it; equations and\n"
    "      bandwidth of the buckling stage; the failure's message, empty for a case\n"
    "      that found its eigenvalue; the check of that eigenvalue: ok, not converged,\n"
    "      not lowest, or not checked with --no-check). Cases run in N processes at\n"
    "      once (default: one a core) and each tells its end on stderr; rows come in\n"
    "      the order of the field.\n"
    "      --plot draws the eigenvalue over the field. --shard K/N runs only the cases\n"
    "      i (from 0) with i % N = K-1, so N jobs together make the whole study.\n"
    "      STEP must not be below the spacing of Single numbers at FROM and TO (the\n"
    "      values would repeat). The outputs are tried before the first case; each\n"
    "      row is written as its case ends, so a study stopped by SIGINT or SIGTERM\n"
    "      keeps the rows of the cases that finished (exit status 128 + the signal).\n"
    "      Exit status 1 when no case found its eigenvalue, else 3 when the check of a\n"
    "      case failed.\n"
    "messages of a failure go to stderr, each as \"velk-batch: MESSAGE\"; the warnings\n"
    "of the check as \"velk-batch: warning: MESSAGE\".\n"
    "exit status: 0 success, 1 the command failed, 2 usage error, 3 an eigenvalue was\n"
    "found but it is not the verified smallest (the check failed: see the warning)\n";

int Generate(const std::vector<std::string>& args) {
  std::string out, why;
  GirderRequest girder;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a == "-o") {
      if (i + 1 >= args.size()) return Usage("-o needs a file name");
      out = args[++i];
    } else if (const Taken t = TakeRule(args, i, girder, why); t != Taken::No) {
      if (t == Taken::Refused) return Usage(why);
    } else if (auto eq = a.find('='); eq != std::string::npos && eq > 0) {
      girder.fields.emplace_back(a.substr(0, eq), a.substr(eq + 1));
    } else {
      return Usage("unexpected argument '" + a + "'");
    }
  }
  if (out.empty()) return Usage("generate needs -o OUT.inp");
  if (const std::string bad = CheckFields(girder); !bad.empty()) return Usage(bad);

  BatchHost host;
  InstallHost(&host);
  if (!Generate_Girder(girder)) return 1;
  return Save_Project_Path(out) ? 0 : 1;
}

int Info(const std::vector<std::string>& args) {
  if (args.size() != 1) return Usage("info takes one file");
  BatchHost host;
  InstallHost(&host);
  float version = 0;
  bool read = false;
  bool ok =
      Run_File_Command("File Open Error!", [&] { read = Open_Project_File(args[0], &version); });
  if (!ok || !read) return 1;
  Mesh& m = gMesh();
  long definedPlates = 0, definedStiffeners = 0, connected = 0;
  for (const auto& p : m.fourNodes())
    definedPlates += p->PropertyDefined != 0;
  for (const auto& s : m.twoNodes())
    definedStiffeners += s->PropertyDefined != 0;
  for (const auto& n : m.Nodes())
    connected += n->Connected != 0;
  std::cout << "version: " << SingleToText(version) << '\n'
            << "title: " << gAnalysis().Title << '\n'
            << "nodes: " << m.Nodes().Count() << '\n'
            << "plates: " << m.fourNodes().Count() << '\n'
            << "stiffeners: " << m.twoNodes().Count() << '\n'
            << "defined_plates: " << definedPlates << '\n'
            << "defined_stiffeners: " << definedStiffeners << '\n'
            << "connected_nodes: " << connected << '\n'
            << "max_thickness: " << SingleToText(m.fourNodes().MaxThickness()) << '\n'
            << "eigenvalue: " << SingleToText(gAnalysis().EigenValue) << '\n';
  return 0;
}

// Copies a file of the run where the user asked; a missing file (a run that
// never got so far) is not copied.
bool CopyIfMade(const std::string& from, const std::string& to) {
  if (to.empty() || !std::filesystem::exists(from)) return true;
  std::error_code ec;
  std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, ec);
  if (ec) std::cerr << "velk-batch: cannot write " << to << ": " << ec.message() << '\n';
  return !ec;
}

// 0 when the arguments make a request, else the usage error's exit status.
int ParseRun(const std::vector<std::string>& args, RunRequest& r) {
  const std::map<std::string, std::string*> valued = {{"-o", &r.out},
                                                      {"--listing", &r.listing},
                                                      {"--deck", &r.deck},
                                                      {"--vtu", &r.vtu},
                                                      {"--modes", &r.modes}};
  std::string why;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (const Taken t = TakeIterationOption(args, i, r, why); t != Taken::No) {
      if (t == Taken::Refused) return Usage(why);
    } else if (auto v = valued.find(a); v != valued.end()) {
      if (i + 1 >= args.size()) return Usage(a + " needs a value");
      *v->second = args[++i];
    } else if (!a.empty() && a[0] != '-' && r.in.empty()) {
      r.in = a;
    } else {
      return Usage("unexpected argument '" + a + "'");
    }
  }
  if (r.in.empty()) return Usage("run needs a project file");
  if (!r.estimate.empty() && !IsNumeric(r.estimate)) return Usage("--estimate takes a number");
  return 0;
}

// The count of --modes, 0 when not given; -1 (after the message) when it is
// not a whole number from 1 to kMostModes.
constexpr int kMostModes = 20;
int ModesWanted(const std::string& text) {
  if (text.empty()) return 0;
  int count = 0;
  const bool whole =
      !text.empty() && text.size() <= 2 &&
      std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
  if (whole) count = std::stoi(text);
  if (count >= 1 && count <= kMostModes) return count;
  std::cerr << "velk-batch: --modes takes a whole number from 1 to " << kMostModes << ", not '"
            << text << "'\n";
  return -1;
}

// The further modes of the run just made, one a line after its result; false
// (with the reason on stderr) when they were not all found.
bool PrintModes(int wanted) {
  const BucklingModes& modes = LastRunModes();
  if (modes.eigenvalues.size() != static_cast<std::size_t>(wanted)) {
    std::cerr << "velk-batch: no further modes: "
              << (modes.failure.empty() ? "the analysis did not get so far" : modes.failure)
              << '\n';
    return false;
  }
  for (int i = 0; i < wanted; ++i)
    std::cout << "Mode " << i + 1 << " eigenvalue "
              << Format(modes.eigenvalues[static_cast<std::size_t>(i)], "0.0000E+00") << '\n';
  if (!modes.converged)
    std::cerr << "velk-batch: the modes did not settle in " << modes.iterations << " cycles\n";
  return modes.converged;
}

// The warnings of the last run's check on stderr; true when there were any.
bool WarnOfCheck(bool modes) {
  const ResultCheck& check = LastRunCheck();
  std::vector<std::string> warnings = Check_Warnings(check, CheckReader::Batch);
  if (modes && !check.Free()) {
    for (std::size_t m = 0; m < check.modeResiduals.size(); ++m)
      if (check.modeResiduals[m] > kResidualLimit)
        warnings.push_back("mode " + std::to_string(m + 1) + " did not converge (residual " +
                           Format(check.modeResiduals[m], "0.00E+00") + ")");
    if (check.belowFirstMode > 0)
      warnings.push_back(std::to_string(check.belowFirstMode) +
                         " buckling load factor(s) of smaller magnitude than mode 1 exist");
  }
  for (const std::string& w : warnings)
    std::cerr << "velk-batch: warning: " << w << '\n';
  return !warnings.empty();
}


int Run(const std::vector<std::string>& args) {
  RunRequest r;
  if (const int usage = ParseRun(args, r)) return usage;
  const int modes = ModesWanted(r.modes);
  if (modes < 0) return 1;

  BatchHost host;
  InstallHost(&host);
  bool read = false;
  if (!Run_File_Command("File Open Error!", [&] { read = Open_Project_File(r.in); }) || !read) {
    std::cerr << "velk-batch: cannot read " << r.in << '\n';
    return 1;
  }
  if (!ApplyRunOptions(r)) return Usage("invalid iteration option");

  TemporaryFolderGuard folder;
  const RunEnd end = Run_Model(host, r.estimate, modes);
  if (StopSignal()) return 128 + StopSignal(); // the folder goes with the guard
  if (end == RunEnd::Free) {
    std::cerr << "velk-batch: " << kFreeStructure << '\n';
    CopyIfMade(session().gTempOutFile, r.listing);
    CopyIfMade(session().gTempInFile, r.deck);
    return 1;
  }
  const bool completed = end == RunEnd::Completed;
  const bool told = host.Release(completed);
  const bool modesFound = !completed || modes == 0 || PrintModes(modes);

  bool copied = CopyIfMade(session().gTempOutFile, r.listing);
  copied = CopyIfMade(session().gTempInFile, r.deck) && copied;
  if (!completed) {
    if (!told) std::cerr << "velk-batch: the analysis did not finish\n";
    return 1;
  }
  if (!r.out.empty() && !Save_Project_Path(r.out)) return 1;
  if (!r.vtu.empty() &&
      !Write_Vtu_Path(r.vtu, modes > 1 && modesFound ? Further_Mode_Shapes() : std::vector<ModeShape>{}))
    return 1;
  if (!copied || !modesFound) return 1;
  return WarnOfCheck(modes > 0) ? 3 : 0;
}

// `report`, `grid` and `export`: the project as it stands into one of the report files.
int Report(const std::vector<std::string>& args, bool (*write)(const std::string&)) {
  std::string in, out;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "-o") {
      if (i + 1 >= args.size()) return Usage("-o needs a file name");
      out = args[++i];
    } else if (!args[i].empty() && args[i][0] != '-' && in.empty()) {
      in = args[i];
    } else {
      return Usage("unexpected argument '" + args[i] + "'");
    }
  }
  if (in.empty() || out.empty()) return Usage("a project file and -o OUT are needed");
  BatchHost host;
  InstallHost(&host);
  bool read = false;
  if (!Run_File_Command("File Open Error!", [&] { read = Open_Project_File(in); }) || !read)
    return 1;
  return write(out) ? 0 : 1;
}

} // namespace

int velk::batch::Usage(const std::string& why) {
  if (!why.empty()) std::cerr << "velk-batch: " << why << '\n';
  std::cerr << kUsage;
  return 2;
}

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + 1, argv + argc);
  if (args.empty()) return Usage("");
  std::string cmd = args.front();
  args.erase(args.begin());
  if (cmd == "-h" || cmd == "--help") {
    std::cout << kUsage;
    return 0;
  }
  // An option whose value is an empty text is a mistake of the script (an
  // unset variable), never "no file": refused before anything runs.
  for (std::size_t i = 0; i + 1 < args.size(); ++i) {
    static const std::vector<std::string> valued = {
        "-o",       "--vtu",       "--listing",   "--deck",     "--plot",  "--jobs",
        "--shard",  "--estimate",  "--max-shift", "--max-cycle", "--factor", "--modes"};
    if (args[i + 1].empty() && std::find(valued.begin(), valued.end(), args[i]) != valued.end())
      return Usage(args[i] + " takes a value, not an empty text");
  }
  // Scripts get the class defaults of the options, never the user's settings.
  SetOptionFileEnabled(false);
  InstallStopHandlers();
  try {
    if (cmd == "generate") return Generate(args);
    if (cmd == "info") return Info(args);
    if (cmd == "run") return Run(args);
    if (cmd == "report") return Report(args, Write_Report_Path);
    if (cmd == "grid") return Report(args, Write_GridFile_Path);
    if (cmd == "export")
      return Report(args, [](const std::string& out) { return Write_Vtu_Path(out); });
    if (cmd == "sweep") return Sweep(args);
  } catch (const std::exception& e) {
    std::cerr << "velk-batch: " << e.what() << '\n';
    return 1;
  }
  return Usage("unknown command '" + cmd + "'");
}
