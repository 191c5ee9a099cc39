#pragma once
// Models for the run tests, built as a user would: the girder dialog for the
// grid, then restraints, springs and loads put on the nodes; and a fixture
// that runs them and reads the listing.
#include <algorithm>
#include <string>
#include <vector>

#include "TestSession.h"
#include "session/VELKMain.h"

namespace velk::test {

// A flat rectangular web of nx by ny elements, no flanges, E 1000, nu 0.3.
void Generate_Web(int nx, int ny, Single length, Single depth, Single thickness);

// The node at column ix (0..nx) and row iy (0..ny) of a generated grid.
Nodeb& GridNode(int ix, int iy);

// The side-10 square plate, t 0.1, E 1000, nu 0.3, on n x n elements: u fixed
// along x = 0, v at the origin, w along all four sides, a unit load per length
// in -X on x = 10 (half shares at the two end nodes).
void Simply_Supported_Plate(int n);

// The same plate with a line of stiffeners along y = 5 (one per element,
// thickness 0.1, width 1); n must be even.
void Stiffened_Plate(int n);

// A girder of the default section (flanges 12 x 0.5, web 16 x 0.5, length 120,
// E 29000) on 14 x 3 elements, held in-plane at its two bottom corners, braced
// out of plane at both ends, under equal and opposite end moments made of
// flange forces: the top flange in compression.
void Girder_In_Bending();

// One plate on the corners (0,0), (10,0), (10,10), (0,10), t 0.5, the four
// nodes declared as a grid of nodesX by nodesY.
void One_Plate(int nodesX, int nodesY);

// n bars 0.1 x 1 in a line from the origin, each (dx, dy) long, on nodes
// 1..n + 1 declared as one grid row (dx not 0) or one grid column.
void Bar_Line(int n, Single dx, Single dy);

class RunFixture : public SessionTest {
protected:
  // A new session with the host's records cleared.
  void Restart() {
    Clear_Session();
    host.messages.clear();
    host.progress.clear();
  }
  // Writes the deck and runs; returns the eigenvalue stored in the model.
  double Run();
  std::vector<std::string> Listing();
  static bool Has(const std::vector<std::string>& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
  }
  // The rows under a section title, up to the next title.
  static std::vector<std::string> Section(const std::vector<std::string>& lines,
                                          const std::string& title);
};

} // namespace velk::test
