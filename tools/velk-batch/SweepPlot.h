#pragma once
// The curve of a sweep as a picture: PNG or SVG by the file's extension.
#include <string>
#include <utility>
#include <vector>

namespace velk::batch {

// Draws the eigenvalue (second) over the swept value (first), the points in
// the order of the field. False, with the reason in `why`, when the file
// could not be written. Starts the toolkit, offscreen: call it only after
// every case's process has been forked.
bool Plot_Sweep(const std::string& file, const std::string& field,
                const std::vector<std::pair<double, double>>& points, std::string& why);

} // namespace velk::batch
