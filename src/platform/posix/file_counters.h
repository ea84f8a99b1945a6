// How often files were opened and how much was read, for tests that hold the program to its promise of
// bounded work. Counting costs an addition and is always on.
#pragma once

#include <atomic>
#include <cstdint>

struct FileCounters {
  std::atomic<std::int64_t> opened = 0;     // successful FileOpenShared calls
  std::atomic<std::int64_t> reads = 0;      // FileReadAt calls
  std::atomic<std::int64_t> bytesRead = 0;  // bytes that FileReadAt delivered
};

[[nodiscard]] FileCounters& CountersOfFiles();
