#include "Stop.h"

#include <csignal>

namespace velk::batch {

namespace {
volatile std::sig_atomic_t gStop = 0;
extern "C" void OnStop(int signal) {
  gStop = signal;
}
} // namespace

void InstallStopHandlers() {
  struct sigaction action {};
  action.sa_handler = OnStop;
  sigemptyset(&action.sa_mask);
  action.sa_flags = 0; // no restart: a waiting poll returns to look at the flag
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
}

int StopSignal() {
  return gStop;
}

} // namespace velk::batch
