// What passes between a job on the reader's thread and the one who waits for it. Every field may be read and
// written by both at any time.
#pragma once

#include <atomic>

#include "engine/file_pos.h"

struct LongJob {
  std::atomic<bool> stop{false};      // the job is to end soon; what it has done so far does not count
  std::atomic<FilePos> position{0};   // how far it has come
  std::atomic<FilePos> end{0};        // and where it ends; 0: it does not tell
  std::atomic<bool> started{false};   // the thread has come to it
  std::atomic<bool> givenUp{false};   // nobody waits for it any more, and it may never end
  std::atomic<bool> finished{false};  // set last: everything that the job wrote can be seen
};
