#pragma once
// The lists of the property table window: the model as plain text in fixed
// columns, one list per tab, rebuilt from the model each time.
#include <string>

namespace velk {

class Mesh;

struct PropertyTabs {
  enum : int { Plate, Stiffener, Coordinate, Boundary, Brace, Load, Stress, Buckled, Count };
};
// The tab captions, in tab order.
extern const char* const kPropertyTabCaptions[PropertyTabs::Count];

// The whole text of one tab: a header line, then a row for each object in
// position order that has something to show; CR LF after every line.
std::string Property_Table(int tab, Mesh& m);

} // namespace velk
