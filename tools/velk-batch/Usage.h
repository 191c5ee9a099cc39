#pragma once
#include <string>

namespace velk::batch {

// Prints why (when given) and the usage text on stderr; the exit status of a
// usage error.
int Usage(const std::string& why);

} // namespace velk::batch
