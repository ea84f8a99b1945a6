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
void FuzzWords(const std::uint8_t* data, std::size_t size);
void FuzzDecoder(const std::uint8_t* data, std::size_t size);

class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}

  std::uint8_t Byte() { return at_ < end_ ? *at_++ : std::uint8_t{0}; }
  std::uint32_t Word();
  bool Chance(int oneIn) { return Byte() % oneIn == 1 % oneIn; }
  std::int32_t Between(std::int32_t low, std::int32_t high) {
    const auto count = static_cast<std::uint64_t>(std::int64_t{high} - low + 1);
    return static_cast<std::int32_t>(low + static_cast<std::int64_t>(Word() % count));
  }
  template <typename T, std::size_t n>
  T OneOf(const T (&values)[n]) {
    return values[Byte() % n];
  }
  // A file's bytes of one of several kinds (noise, text, one endless line ...), at most `most` of them.
  std::vector<std::uint8_t> FileBytes(std::int32_t most);
  ViewOptions Options();
  std::int32_t LineLen();
  void SetTabs();

 private:
  const std::uint8_t* at_;
  const std::uint8_t* end_;
};

// The routines by the index of their format: text, hex, raw.
extern const FormatProc kFuzzRoutines[3];

// What lines are checked against: their characters, and the bytes of the file that these stand for.
struct Shown {
  const std::vector<std::uint8_t>& bytes;
  FilePos base = 0;  // file offset of the first of them
  int format = 0;
  ViewOptions options = 0;
  std::int32_t lineLen = 0;
  const Cell* text = nullptr;
  std::int32_t clusters = 0;
  [[nodiscard]] FilePos End() const { return base + bytes.size(); }
  // -1 where no byte is known.
  [[nodiscard]] int At(FilePos pos) const {
    return pos < base || pos >= End() ? -1 : bytes[static_cast<std::size_t>(pos - base)];
  }
  [[nodiscard]] bool BreakAt(FilePos pos) const { return At(pos) == 10 || At(pos) == 13; }
};

// What the option word says of the rows of a hex dump.
struct HexColumns {
  std::int32_t digits = 0;  // of the address
  std::int32_t extra = 0;   // columns by which what follows is moved to the right
  std::int32_t most = 0;    // the same where the file's addresses are largest
};
HexColumns ColumnsOfHex(ViewOptions options);

enum class LineEnd : std::uint8_t {
  exact,    // the line ends at `next`
  overlap,  // it may reach further than `next`, but not end in front of it
  open,     // `next` is unknown
};
// Checks that the characters of `line` are those of the bytes from its Lpos on, and that it ends at `next`.
// `headCut`: the line may begin above the file's first byte. Returns whether it ends at `next` exactly.
bool CheckLine(const Shown& shown, const LineEntry& line, FilePos next, LineEnd end, bool headCut);

// Set by the run with fixed inputs; printed with a failure, so that one input can be run again.
extern std::int64_t FuzzInputNumber;
[[noreturn]] void FuzzFail(const char* file, int line, const char* condition);
#define FUZZ_CHECK(condition) ((condition) ? void() : FuzzFail(__FILE__, __LINE__, #condition))
