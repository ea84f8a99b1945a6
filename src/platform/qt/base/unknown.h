// What happens to a flag or message that the layer does not know: never silence.
#pragma once

#include <cassert>
#include <cstdint>
#include <cstdio>

namespace platform_qt {

// A line on stderr, and in an unoptimised build an assertion.
inline void ReportUnknown(const char* operation, std::uint64_t value) {
  std::fprintf(stderr, "quorl: %s: unknown value 0x%llx\n", operation,
               static_cast<unsigned long long>(value));
#ifndef __OPTIMIZE__
  assert(false && "a flag or message that the layer does not know");
#endif
}

// Reports what stands in `value` besides `known`.
inline void ReportUnknownBits(const char* operation, std::uint64_t value, std::uint64_t known) {
  if ((value & ~known) != 0) {
    ReportUnknown(operation, value & ~known);
  }
}

}  // namespace platform_qt
