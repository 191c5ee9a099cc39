// Run time of the buckling analysis on girders of growing size, up to the
// largest the 16-bit freedom numbers admit (about 10,900 points), shallow and
// deep. For each: the steps of the run, the whole run against the sum of its
// factorizations and solves (what the arithmetic of a run cannot do without),
// the check of the eigenvalue against the rest of the run,
// and our factoring of the stage-one matrix against LAPACK's banded Cholesky
// (dpbtrf from OpenBLAS) on the same matrix, which is positive definite once
// the restraints are in. The machine may be shared: each girder is run
// several times and the fastest whole run is shown, and each factoring is the
// best of several.
//
//   analysis_bench                     all sizes
//   analysis_bench 60x60 ...           only the girders named (elements along x by y)
//   analysis_bench --runs 5 100x100    whole runs per girder (3 unless told)
#include "analysis/BandMatrix.h"
#include "analysis/Deck.h"
#include "analysis/EigenCalculation.h"
#include "common/Host.h"
#include "common/ProgramFolder.h"
#include "mesh/GirderBuilder.h"
#include "mesh/LoadRules.h"
#include "session/AnalysisRun.h"
#include "session/VELKMain.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <unistd.h>
#include <vector>

extern "C" {
void dpbtrf_(const char* uplo, const int* n, const int* kd, double* ab, const int* ldab, int* info,
             std::size_t uploLength);
void openblas_set_num_threads(int threads);
char* openblas_get_corename();
}

using namespace velk;

namespace {

using Clock = std::chrono::steady_clock;

double Since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// The last message box is kept (the eigenvalue, or why the
// run failed); every question gets OK.
class LastMessageHost final : public QuietHost {
public:
  int MsgBox(const std::string& text, int buttons, const std::string&) override {
    last = text;
    return DefaultAnswer(buttons);
  }
  std::string last;
};

// The default girder section (flanges 12 x 0.5, web 16 x 0.5, length 120) on
// nx by ny elements, on fork supports under a unit end moment: the rules of
// the batch tool's generate command.
bool Girder(int nx, int ny) {
  Clear_Session();
  Build_Girder(gBeamShape(), nx, ny, gMesh());
  Apply_Fork_Supports(gMesh(), gBeamShape());
  Apply_End_Moment(gMesh(), gBeamShape(), 1);
  return true;
}

// Rows 1..n of the band, bandwidth bw, into LAPACK's upper band storage:
// column j holds A(j - kd .. j, j), with A(i, j) at row kd + i - j.
std::vector<double> LapackUpper(const BandMatrix& M, int n, int bw) {
  const int kd = bw - 1, ld = kd + 1;
  std::vector<double> ab(static_cast<std::size_t>(ld) * n, 0.0);
  for (int j = 0; j < n; ++j)
    for (int i = std::max(0, j - kd); i <= j; ++i)
      ab[static_cast<std::size_t>(j) * ld + (kd + i - j)] = M(i + 1, j - i + 1);
  return ab;
}

// Best of `repeats` wall times of dpbtrf on fresh copies of ab.
double TimeLapack(const std::vector<double>& ab, int n, int bw, int threads, int repeats) {
  openblas_set_num_threads(threads);
  const int kd = bw - 1, ld = kd + 1;
  double best = 1e30;
  for (int r = 0; r < repeats; ++r) {
    std::vector<double> work = ab;
    int info = 0;
    const auto start = Clock::now();
    dpbtrf_("U", &n, &kd, work.data(), &ld, &info, 1);
    best = std::min(best, Since(start));
    if (info != 0) {
      std::printf("  dpbtrf: info %d (the matrix is not positive definite)\n", info);
      return -1;
    }
  }
  return best;
}

double TimeOurs(const BandMatrix& M, int n, int bw, int repeats) {
  double best = 1e30;
  for (int r = 0; r < repeats; ++r) {
    BandMatrix work = M;
    const auto start = Clock::now();
    Band_Factor(work, n, bw);
    best = std::min(best, Since(start));
  }
  return best;
}

// Rate of a factoring of n equations and bandwidth bw: n bw^2 / 2
// multiply-adds, two floating-point operations each.
double Gflops(int n, int bw, double seconds) {
  return static_cast<double>(n) * bw * bw / seconds * 1e-9;
}

struct Girth {
  int nx, ny;
};

struct Step {
  int n = 0, bw = 0;
  double seconds = 0;
};

// One whole run of the girder in the session, with the times of its steps.
struct RunTimes {
  bool completed = false;
  double deck = 0, whole = 0;
  std::map<RunStep, Step> once;
  std::vector<Step> shifts, cycles;
  int cycleCount = 0;
  double lambda = 0;
  // The factorizations and solves: stage one's factor and solve, and each
  // shift's factor and cycles (a product, a solve and a normalising each).
  double Arithmetic() const {
    double sum = 0;
    for (const RunStep s : {RunStep::StageOneFactor, RunStep::StageOneSolve})
      if (const auto it = once.find(s); it != once.end()) sum += it->second.seconds;
    for (const Step& s : shifts)
      sum += s.seconds;
    for (const Step& s : cycles)
      sum += s.seconds;
    return sum;
  }
};

// Writes the deck and runs it. With `stageOne` set, the stage-one matrix is
// copied there on its way into the factoring; the copy is not counted.
RunTimes RunGirder(BandMatrix* stageOne, int& n1, int& bw1) {
  RunTimes t;
  analysisHooks().Timing = [&](RunStep step, int n, int bw, double seconds) {
    if (step == RunStep::ShiftFactor)
      t.shifts.push_back({n, bw, seconds});
    else if (step == RunStep::ShiftCycles)
      t.cycles.push_back({n, bw, seconds});
    else
      t.once[step] = {n, bw, seconds};
  };
  double copying = 0;
  if (stageOne)
    analysisHooks().StageOneMatrix = [&](const BandMatrix& K, int n, int bw) {
      const auto start = Clock::now();
      *stageOne = K;
      n1 = n;
      bw1 = bw;
      copying = Since(start);
    };
  analysisHooks().Cycle = [&](int, int, double, double l, double) {
    t.lambda = l;
    ++t.cycleCount;
  };
  const auto deckStart = Clock::now();
  const Integer written = Write_Deck();
  t.deck = Since(deckStart);
  const auto runStart = Clock::now();
  Run_Analysis();
  t.whole = Since(runStart) - copying;
  analysisHooks() = AnalysisHooks{};
  t.completed = written == 1 && LastRunOutcome() == RunOutcome::Completed;
  return t;
}

struct Summary {
  Girth g;
  double whole, arithmetic, ratioOne, check;
};

const char* Verdict(bool met) {
  return met ? "met" : "MISSED";
}

} // namespace

int main(int argc, char** argv) {
  std::vector<Girth> sizes = {{20, 3},  {200, 3}, {1000, 3}, {2700, 3},
                              {30, 30}, {60, 60}, {100, 100}};
  int runs = 3;
  bool named = false;
  for (int a = 1; a < argc; ++a) {
    const std::string arg = argv[a];
    if (arg == "--runs" && a + 1 < argc) {
      runs = std::max(1, std::atoi(argv[++a]));
      continue;
    }
    Girth g{};
    if (std::sscanf(argv[a], "%dx%d", &g.nx, &g.ny) != 2) {
      std::fprintf(stderr, "usage: analysis_bench [--runs N] [NXxNY ...]\n");
      return 2;
    }
    if (!named) sizes.clear();
    named = true;
    sizes.push_back(g);
  }

  const std::string folder =
      (std::filesystem::temp_directory_path() / ("velk-bench-" + std::to_string(::getpid())))
          .string();
  std::filesystem::create_directories(folder);
  SetProgramFolder(folder);
  SetTemporaryFolder(folder);
  SetOptionFileEnabled(false);
  LastMessageHost host;
  InstallHost(&host);

  constexpr int kRepeats = 5;
  std::printf("OpenBLAS core: %s\n", openblas_get_corename());
  std::printf("GFLOP/s count n * bw^2 / 2 multiply-adds as two operations each.\n");
  std::printf("Times in seconds. Steps and whole run: the fastest of %d whole runs. Our "
              "factoring and dpbtrf: the best of %d on the stage-one matrix.\n",
              runs, kRepeats);
  std::printf("Targets: whole run (without the check) <= 2 x the sum of factorizations and "
              "solves; the check < 0.5 x the rest of the run; our factoring <= dpbtrf on 1 "
              "thread.\n\n");

  std::vector<Summary> summary;
  for (const Girth& g : sizes) {
    if (!Girder(g.nx, g.ny)) {
      std::printf("%d x %d: the generator refused it (%s)\n", g.nx, g.ny, host.last.c_str());
      continue;
    }
    const long points = (g.nx + 1L) * (g.ny + 1L);
    BandMatrix stageOne;
    int n1 = 0, bw1 = 0;
    RunTimes t;
    for (int r = 0; r < runs; ++r) {
      RunTimes one = RunGirder(r == 0 ? &stageOne : nullptr, n1, bw1);
      if (!one.completed) {
        t = one;
        break;
      }
      if (r == 0 || one.whole < t.whole) t = std::move(one);
    }

    std::printf("== girder %d x %d elements: %ld points\n", g.nx, g.ny, points);
    if (!t.completed) {
      std::printf("  the run did not complete: %s\n\n", host.last.c_str());
      continue;
    }
    const Step& a1 = t.once[RunStep::StageOneAssembly];
    const Step& f1 = t.once[RunStep::StageOneFactor];
    const Step& s1 = t.once[RunStep::StageOneSolve];
    const Step& a2 = t.once[RunStep::StageTwoAssembly];
    std::printf("  stage one: %6d equations, bandwidth %4d; assembly %.5f, factor %.5f "
                "(%.2f GFLOP/s), solve %.5f\n",
                f1.n, f1.bw, a1.seconds, f1.seconds, Gflops(f1.n, f1.bw, f1.seconds), s1.seconds);
    std::printf("  stage two: %6d equations, bandwidth %4d; assembly %.5f\n", a2.n, a2.bw,
                a2.seconds);
    for (std::size_t k = 0; k < t.shifts.size(); ++k)
      std::printf("    shift %zu: factor %.5f (%.2f GFLOP/s), cycles %.5f\n", k + 1,
                  t.shifts[k].seconds, Gflops(t.shifts[k].n, t.shifts[k].bw, t.shifts[k].seconds),
                  k < t.cycles.size() ? t.cycles[k].seconds : 0.0);
    std::printf("  deck %.5f; whole run %.5f; %d cycles; eigenvalue %.9e\n", t.deck, t.whole,
                t.cycleCount, t.lambda);
    const double check = t.once[RunStep::ResultCheck].seconds, own = t.whole - check;
    std::printf("  check %.5f / the rest of the run %.5f = %.2f: target < 0.5 %s\n", check, own,
                check / own, Verdict(check < 0.5 * own));
    const double arithmetic = t.Arithmetic(), ratio = own / arithmetic;
    std::printf("  run without the check %.5f / factorizations and solves %.5f = %.2f: target "
                "<= 2 %s\n",
                own, arithmetic, ratio, Verdict(ratio <= 2.0));

    const double ours = TimeOurs(stageOne, n1, bw1, kRepeats);
    const std::vector<double> ab = LapackUpper(stageOne, n1, bw1);
    const double one = TimeLapack(ab, n1, bw1, 1, kRepeats);
    const double two = TimeLapack(ab, n1, bw1, 2, kRepeats);
    std::printf("  stage-one matrix: ours %.5f (%.2f GFLOP/s); dpbtrf 1 thread %.5f (%.2f "
                "GFLOP/s), 2 threads %.5f (%.2f GFLOP/s)\n",
                ours, Gflops(n1, bw1, ours), one, Gflops(n1, bw1, one), two, Gflops(n1, bw1, two));
    std::printf("  ours / dpbtrf: %.2f (1 thread): target <= 1 %s; %.2f (2 threads)\n\n",
                ours / one, Verdict(ours <= one), ours / two);
    summary.push_back({g, own, arithmetic, ours / one, check});
    std::fflush(stdout);
  }

  std::printf("girder      run        fact.+solves  ratio (<= 2)  check    check/run (< 0.5)  "
              "ours/dpbtrf 1 thread (<= 1)\n");
  for (const Summary& s : summary)
    std::printf("%4d x %-4d %9.5f  %12.5f  %5.2f %-6s  %7.5f  %5.2f %-6s       %5.2f %s\n",
                s.g.nx, s.g.ny, s.whole, s.arithmetic, s.whole / s.arithmetic,
                Verdict(s.whole <= 2 * s.arithmetic), s.check, s.check / s.whole,
                Verdict(s.check < 0.5 * s.whole), s.ratioOne, Verdict(s.ratioOne <= 1));
  InstallHost(nullptr);
  std::filesystem::remove_all(folder);
  return 0;
}
