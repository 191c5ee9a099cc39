#pragma once
// SIGINT and SIGTERM end the tool cleanly: a run stops at its next Cancel
// checkpoint (some milliseconds), its temporary folder is removed, a sweep
// stops its cases and keeps the rows of those that finished.

namespace velk::batch {

// Installs the handlers; the cases a sweep forks inherit them.
void InstallStopHandlers();
// The signal that asked to stop, 0 while none has.
int StopSignal();

} // namespace velk::batch
