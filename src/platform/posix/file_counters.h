// How often files were opened and how much was read, for tests that hold the program to its promise of
// bounded work. Counting costs an addition and is always on.
#pragma once

#include <cstdint>

struct FileCounters {
  std::int64_t opened = 0;     // successful FileOpenShared calls
  std::int64_t bytesRead = 0;  // bytes that FileRead delivered
};

[[nodiscard]] FileCounters& CountersOfFiles();
