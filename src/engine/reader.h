// The reader thread: everything that may wait for a disk runs on it, so that the window's thread never does.
// A job that does not come back is given up: its thread is left to itself until the disk answers, and the
// next job gets a new thread. Knows no window: who starts a job is told on the reader's thread that it has
// ended.
#pragma once

#include <atomic>
#include <functional>
#include <memory>

#include "engine/byte_source.h"
#include "engine/long_job.h"

// A job owns, alone or shared, all that it works on: it may outlive the one who waits for it.
using ReadWork = std::function<void(ByteSource& source, LongJob& job)>;
using OriginMaker = std::function<std::unique_ptr<ByteOrigin>()>;

class Reader {
 public:
  // Threads at most that are left to themselves at one time.
  static constexpr int kMostGivenUp = 4;

  explicit Reader(OriginMaker makeOrigin = MakeFileOrigin);
  // As Stop.
  ~Reader();
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  // Runs `work` on the reader's thread, behind the jobs started before it. `ended`, if given, is called there
  // when it has ended. The source is closed then. Null, and nothing is started, when the disk does not answer
  // and too many threads wait for it already, or when the system gives no thread.
  [[nodiscard]] std::shared_ptr<LongJob> Start(ReadWork work, std::function<void()> ended = {});

  // Gives the job under way up, and those that wait behind it: `stop` is set, and their thread is left to
  // itself.
  void GiveUp();

  // Threads that are left to themselves now.
  [[nodiscard]] int GivenUp() const;

  // Ends the thread. One that does not come back in time is left to itself.
  void Stop();

 private:
  struct Worker;
  static void RunWorker(const std::shared_ptr<Worker>& worker);

  OriginMaker makeOrigin_;
  std::shared_ptr<std::atomic<int>> givenUp_;
  std::shared_ptr<Worker> worker_;
};
