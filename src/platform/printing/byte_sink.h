// Where the bytes of a printed document go: a file made aside, a print service. A sink is one document long:
// it takes bytes in their order, then either Finish or Abort is called, once. It belongs to one thread.
#pragma once

#include <cstddef>

#include "platform/file.h"

namespace platform_printing {

class ByteSink {
 public:
  ByteSink() = default;
  virtual ~ByteSink() = default;
  ByteSink(const ByteSink&) = delete;
  ByteSink& operator=(const ByteSink&) = delete;

  // Takes all bytes, or tells why not. Behind an error nothing more is written.
  [[nodiscard]] virtual FileError Write(const void* bytes, std::size_t count) = 0;
  // The document is whole. On an error nothing of it may be relied on, as if it had been aborted.
  [[nodiscard]] virtual FileError Finish() = 0;
  // The document is given up: what came so far is thrown away.
  virtual void Abort() = 0;
};

}  // namespace platform_printing
