// The physical lines of a piece of text: where one begins and ends, and whether it is too long to be made in
// one go. A line break is LF, CR, or one of the pairs CR LF and LF CR; which two bytes of a row of line
// breaks are a pair is counted from the first of them, so that the answer is the same from both sides. Knows
// bytes only, no rows and no file.
#pragma once

#include <cstdint>

// Whether a byte is a line break, and whether two bytes are one: LF CR and CR LF are, LF LF and CR CR are
// two.
constexpr bool IsLineBreak(std::uint8_t byte) {
  return byte == 10 || byte == 13;
}
constexpr bool IsBreakPair(std::uint8_t first, std::uint8_t second) {
  return IsLineBreak(first) && IsLineBreak(second) && first != second;
}

// Index of the first line break in bytes `from` to `end` - 1, or `end`.
[[nodiscard]] std::int32_t FindLineBreak(const std::uint8_t* bytes, std::int32_t from, std::int32_t end);

// Index behind the last line break in front of `from`, or 0.
[[nodiscard]] std::int32_t BehindLineBreak(const std::uint8_t* bytes, std::int32_t from);

// Whether a line has more bytes than a limit.
enum class LongLine : std::uint8_t { unknown, no, yes };

// A piece of a file, as far as lines go.
class TextPiece {
 public:
  // `fromStart`: the file begins with the piece; `toEnd`: it ends with it.
  TextPiece(const std::uint8_t* bytes, std::int32_t size, bool fromStart, bool toEnd)
      : bytes_(bytes), size_(size), fromStart_(fromStart), toEnd_(toEnd) {}

  // Whether the byte at `index` is an end-of-file mark (26) that belongs to the line break before it.
  [[nodiscard]] bool IsEndMark(std::int32_t index) const {
    return toEnd_ && index > 0 && index == size_ - 1 && bytes_[index] == 26 && IsLineBreak(bytes_[index - 1]);
  }

  // Index of the first byte of the line that holds the byte at `index`, as far as the piece tells.
  [[nodiscard]] std::int32_t LineStart(std::int32_t index);

  // Whether what lies in front of the piece could not make LineStart give another answer than `start`.
  [[nodiscard]] bool KnowsStart(std::int32_t start);

  // Index of the line break, with what belongs to it, that holds the byte at `index`; `index` itself when
  // that is no part of a line break.
  [[nodiscard]] std::int32_t BreakStart(std::int32_t index);

  // Whether the line that begins at `start` has more than `limit` bytes, its line break included. `unknown`
  // when the piece ends too early to tell.
  [[nodiscard]] LongLine Judge(std::int32_t start, std::int32_t limit) const;

 private:
  bool IsSecondOfPair(std::int32_t index);

  const std::uint8_t* bytes_;
  std::int32_t size_;
  bool fromStart_;
  bool toEnd_;
  // The row of alternating line breaks that was looked at last: it begins at alternatingFrom_, and reaches as
  // far as alternatingTo_ at least.
  std::int32_t alternatingFrom_ = 0;
  std::int32_t alternatingTo_ = -1;
};
