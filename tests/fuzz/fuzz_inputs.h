// What both kinds of run share: libFuzzer's endless one and the short one with fixed inputs. An input is any
// sequence of bytes; it is read as a list of decisions, and what is missing at its end reads as 0.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/view_records.h"

// Each runs one input to its end, or prints what was broken and aborts.
void FuzzFormat(const std::uint8_t* data, std::size_t size);
void FuzzLoad(const std::uint8_t* data, std::size_t size);

// The bytes of one input.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}

  std::uint8_t Byte() { return at_ < end_ ? *at_++ : std::uint8_t{0}; }
  std::uint32_t Word() {
    std::uint32_t word = 0;
    for (int i = 0; i < 4; ++i)
      word = word << 8 | Byte();
    return word;
  }
  bool Chance(int oneIn) { return Byte() % oneIn == 1 % oneIn; }
  std::int32_t Between(std::int32_t low, std::int32_t high) {
    const auto count = static_cast<std::uint64_t>(std::int64_t{high} - low + 1);
    return static_cast<std::int32_t>(low + static_cast<std::int64_t>(Word() % count));
  }
  template <typename T, std::size_t n>
  T OneOf(const T (&values)[n]) {
    return values[Byte() % n];
  }

 private:
  const std::uint8_t* at_;
  const std::uint8_t* end_;
};

// Bytes of one of several kinds (noise, text, one endless line, NULs ...), at most `most` of them.
std::vector<std::uint8_t> FuzzBytes(FuzzInput& input, std::int32_t most);
ViewOptions FuzzOptions(FuzzInput& input);
std::int32_t FuzzLineLen(FuzzInput& input);
// The routine of a format by its index, 0 to 2.
FormatProc FuzzRoutine(int format);

// A place of the file that is in memory: byte k of `bytes` is at file offset base + k.
struct KnownBytes {
  const std::vector<std::uint8_t>& bytes;
  FilePos base = 0;
  [[nodiscard]] FilePos End() const { return base + static_cast<FilePos>(bytes.size()); }
  [[nodiscard]] std::uint8_t At(FilePos pos) const { return bytes[static_cast<std::size_t>(pos - base)]; }
};

// Checks that the characters of `line` are those of the bytes from its Lpos on, and that `next` is where it
// ends. `headCut`: the line may begin above the file's first byte.
struct LineCheck {
  int format = 0;
  ViewOptions options = 0;
  std::int32_t lineLen = 0;
  const char* text = nullptr;
};
enum class LineEnd : std::uint8_t {
  exact,    // the line ends at `next`
  overlap,  // it may reach further than `next`, but not end in front of it
  open,     // `next` is unknown
};
void CheckLine(const LineCheck& check, const KnownBytes& known, const LineEntry& line, FilePos next,
               LineEnd end, bool headCut);
// Whether the line would pass with LineEnd::exact, as far as its end is concerned.
bool EndsAt(const LineCheck& check, const KnownBytes& known, const LineEntry& line, FilePos next);

// Set by the run with fixed inputs; printed with a failure, so that one input can be run again.
extern std::int64_t FuzzInputNumber;
[[noreturn]] void FuzzFail(const char* file, int line, const char* condition);
#define FUZZ_CHECK(condition) ((condition) ? void() : FuzzFail(__FILE__, __LINE__, #condition))
