#pragma once
// The analysis input deck: the model flattened into comma-separated records
// that the solver reads in one forward pass. The writer speaks in model objects
// and compact numbers; the reader speaks in analysis node and element numbers
// and knows nothing of the model.
#include <string>

#include "analysis/CheckedArithmetic.h"
#include "analysis/RunArrays.h"
#include "common/TextFile.h"
#include "common/TextRules.h"
#include "model/Analysis.h"
#include "model/Material.h"
#include "model/Mesh.h"

namespace velk {

constexpr const char* kDeckFileName = "velktempin.vlk";
constexpr const char* kListingFileName = "velktempout.vlk";

// Where the deck and the listing go. Empty (the default) means the program's
// writable folder; the batch tool points it at a temporary folder of its own.
void SetTemporaryFolder(const std::string& folder);
std::string TemporaryFolder();

// Writes the deck of the model and names the run's two files: `inFile` the
// deck, `outFile` the listing, both in TemporaryFolder(). Returns 1 when the
// deck is complete, 0 when anything failed (the deck is then closed as far as
// it got).
Integer Write_Deck(Mesh& mesh, const Material& material, const Analysis& analysis,
                   std::string& inFile, std::string& outFile);

// The reader side. Every integer field is a 16-bit value (beyond it: overflow);
// every real is parsed to the double nearest to its text. The end of the deck
// and a field that cannot be converted are faults of their own numbers.
class DeckReader {
public:
  explicit DeckReader(std::string data) : in_(std::move(data)) {}
  static DeckReader Open(const std::string& path) { return DeckReader(FieldReader::FromFile(path)); }

  std::string Text() { return in_.Text(); }
  Integer Int() { return in_.Integer(); }
  double Real() { return in_.Double(); }

private:
  explicit DeckReader(FieldReader in) : in_(std::move(in)) {}
  FieldReader in_;
};

// Record 3.
struct DeckCounts {
  Integer plates = 0, stiffeners = 0, points = 0, loads = 0, inPlaneBoundary = 0,
          inPlaneSprings = 0, outBoundary = 0, outSprings = 0;
};
DeckCounts Read_Counts(DeckReader& deck);

// first, last, step of a run record, as read and then as repaired.
struct RunRecord {
  Integer first = 0, last = 0, step = 1;
};
// The repairs differ from block to block; each block names its own.
enum class RunRepair {
  Points,   // last <= 0 becomes first, step <= 0 becomes 1
  Sections, // last = 0 becomes first, step = 0 becomes 1
  Nodal,    // last < first becomes first, step <= 0 becomes 1 (blocks 10 to 14)
};
RunRecord Read_Run(DeckReader& deck, RunRepair repair);

// Walks n = first, first + step, ... up to last (down to it for a negative
// step), calling fn(n, k) with k = 0, 1, 2, ... The counter is a 16-bit value,
// so stepping it past 32767 is an overflow, as the counter of the run loop is.
template <class Fn> void For_Run(const RunRecord& run, Fn&& fn) {
  Integer k = 0;
  for (long n = run.first; run.step > 0 ? n <= run.last : n >= run.last;) {
    fn(static_cast<Integer>(n), k);
    k = Int16(static_cast<long>(k) + 1);
    n = Int16(n + run.step);
  }
}

// Blocks 5 to 9 into the pipeline's arrays, which are sized beforehand; an
// element or node number beyond them is a subscript fault. The counts say how
// many points and elements the blocks must generate.
void Read_Mesh(DeckReader& deck, RunArrays& a, Integer nPlates, Integer nStiff, Integer nPoints);

} // namespace velk
