// The user's limit on the size of files (RLIMIT_FSIZE), as a writer meets it.
#pragma once

#include <csignal>

// A write above the limit raises a signal, which ends a process that does not look at it. Ignored, the write
// fails like that on a full disk.
inline void IgnoreSizeLimitSignal() {
  struct sigaction present {};
  if (sigaction(SIGXFSZ, nullptr, &present) == 0 && present.sa_handler == SIG_DFL) {
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
  }
}
