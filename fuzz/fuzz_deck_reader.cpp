// Reads any bytes as the analysis deck of a fixed small model, as Run_Analysis
// reads the file it finds: the run must end by itself (a failure is a message,
// never a throw), and whatever it leaves in the model's result fields must be
// finite numbers. The deck's counts may say anything, so no single allocation
// of a run may grow beyond what the model's sizes and the deck's own length
// account for.
#include "DeckModels.h"
#include "analysis/Deck.h"
#include "analysis/EigenCalculation.h"
#include "common/Host.h"
#include "common/ProgramFolder.h"
#include "session/AnalysisRun.h"
#include "session/VELKMain.h"

#include <sanitizer/allocator_interface.h>

#include <atomic>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

using namespace velk;

namespace {

QuietHost gQuiet;
std::string gFolder;

// The largest single allocation while a run is on. The hooks see every malloc
// of the process; they only record while `watching` is set.
std::atomic<bool> watching{false};
std::atomic<std::size_t> largest{0};

void OnMalloc(const volatile void*, std::size_t size) {
  if (!watching.load(std::memory_order_relaxed)) return;
  std::size_t seen = largest.load(std::memory_order_relaxed);
  while (size > seen && !largest.compare_exchange_weak(seen, size)) {
  }
}
void OnFree(const volatile void*) {}

// What a run may allocate at once: the band matrices and vectors sized from the
// model, scratch of fixed size, and copies of the deck text (read whole) or of
// a field of it. Anything beyond was sized by a number from the deck.
std::size_t AllowedAllocation(std::size_t deckBytes) {
  Mesh& m = gMesh();
  const std::size_t R = 3 * static_cast<std::size_t>(m.Nodes().MaxvID);
  const std::size_t B = 3 * (static_cast<std::size_t>(m.Nodes().NumberNodesY()) + 2);
  return 64 * 1024 + 2 * R * B * sizeof(double) + 4 * deckBytes;
}

bool Finite(Single v) {
  return std::isfinite(v);
}

void CheckResults() {
  for (const auto& n : gMesh().Nodes())
    for (Single v :
         {n->xcoord, n->InPDispX, n->InPDispY, n->zcoord, n->Sx, n->Sy, n->SXY, n->Mises})
      if (!Finite(v)) {
        std::fprintf(stderr, "node %ld: a result field is not finite\n", static_cast<long>(n->ID));
        std::abort();
      }
  for (const auto& e : gMesh().twoNodes())
    if (!Finite(e->Stress)) {
      std::fprintf(stderr, "stiffener %ld: Stress is not finite\n", static_cast<long>(e->ID));
      std::abort();
    }
  if (!Finite(gAnalysis().EigenValue)) {
    std::fprintf(stderr, "EigenValue is not finite\n");
    std::abort();
  }
}

void RunOn(const std::string& deck) {
  {
    std::ofstream f(session().gTempInFile, std::ios::binary | std::ios::trunc);
    f.write(deck.data(), static_cast<std::streamsize>(deck.size()));
    if (!f) std::abort(); // the scratch folder must take the deck
  }
  largest = 0;
  watching = true;
  try {
    Run_Analysis();
  } catch (...) {
    std::fprintf(stderr, "Run_Analysis threw\n");
    std::abort();
  }
  watching = false;
  if (LastRunOutcome() == RunOutcome::NotRun) std::abort();
  if (largest > AllowedAllocation(deck.size())) {
    std::fprintf(stderr, "a run allocated %zu bytes at once\n", largest.load());
    std::abort();
  }
  CheckResults();
}

void RemoveFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(gFolder, ignored);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  char pattern[] = "/tmp/velk-fuzz-deck-XXXXXX";
  if (!mkdtemp(pattern)) std::abort();
  gFolder = pattern;
  std::atexit(RemoveFolder);
  SetProgramFolder(gFolder);
  SetOptionFileEnabled(false);
  SetTemporaryFolder(gFolder);
  InstallHost(&gQuiet);
  __sanitizer_install_malloc_and_free_hooks(OnMalloc, OnFree);

  fuzz::Stiffened_Web();
  // The model's own deck must run to an eigenvalue, or the fuzzing would
  // start from a model that fails anyway.
  if (Write_Deck() != 1) std::abort();
  std::ifstream in(session().gTempInFile, std::ios::binary);
  const std::string own((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  RunOn(own);
  if (LastRunOutcome() != RunOutcome::Completed) std::abort();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  RunOn(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
