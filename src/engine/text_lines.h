// The physical lines of a piece of text: where one begins and ends, and whether it is too long to be made in
// one go. A line break is LF, CR, or one of the pairs CR LF and LF CR; which two of a row of line breaks are
// a pair is counted from the first of them, so that the answer is the same from both sides. Text is units of
// one byte, or of two in UTF-16. Knows bytes only, no rows and no file.
#pragma once

#include <cstdint>

// The units of a text.
enum class TextUnit : std::uint8_t { byte, utf16le, utf16be };

[[nodiscard]] constexpr std::int32_t UnitBytes(TextUnit unit) {
  return unit == TextUnit::byte ? 1 : 2;
}

// Whether a unit is a line break, and whether two are one: LF CR and CR LF are, LF LF and CR CR are two.
constexpr bool IsLineBreak(std::uint32_t unit) {
  return unit == 10 || unit == 13;
}
constexpr bool IsBreakPair(std::uint32_t first, std::uint32_t second) {
  return IsLineBreak(first) && IsLineBreak(second) && first != second;
}

// Index of the first line break in bytes `from` to `end` - 1, or `end`.
[[nodiscard]] std::int32_t FindLineBreak(const std::uint8_t* bytes, std::int32_t from, std::int32_t end);

// Index behind the last line break in front of `from`, or 0.
[[nodiscard]] std::int32_t BehindLineBreak(const std::uint8_t* bytes, std::int32_t from);

// The same for text of any units, of which one begins at index 0 and one at `from`.
[[nodiscard]] std::int32_t FindLineBreak(const std::uint8_t* bytes, std::int32_t from, std::int32_t end,
                                         TextUnit unit);
[[nodiscard]] std::int32_t BehindLineBreak(const std::uint8_t* bytes, std::int32_t from, TextUnit unit);

// Whether a line has more bytes than a limit.
enum class LongLine : std::uint8_t { unknown, no, yes };

// A piece of a file, as far as lines go.
class TextPiece {
 public:
  // `fromStart`: the file begins with the piece; `toEnd`: it ends with it. Units begin at even offsets of the
  // file, and so does the piece where they have two bytes.
  TextPiece(const std::uint8_t* bytes, std::int32_t size, bool fromStart, bool toEnd,
            TextUnit unit = TextUnit::byte)
      : bytes_(bytes),
        size_(size),
        fromStart_(fromStart),
        toEnd_(toEnd),
        unit_(unit),
        step_(UnitBytes(unit)) {}

  // The unit that begins at `index`; what the piece cuts is no line break.
  [[nodiscard]] std::uint32_t UnitAt(std::int32_t index) const {
    if (unit_ == TextUnit::byte) return bytes_[index];
    if (index + 1 >= size_) return kNoUnit;
    const std::int32_t low = unit_ == TextUnit::utf16le ? 0 : 1;
    return bytes_[index + low] | static_cast<std::uint32_t>(bytes_[index + 1 - low]) << 8;
  }

  // Whether the unit at `index` is an end-of-file mark (26) that belongs to the line break before it.
  [[nodiscard]] bool IsEndMark(std::int32_t index) const {
    return toEnd_ && index > 0 && index == size_ - step_ && UnitAt(index) == 26 &&
           IsLineBreak(UnitAt(index - step_));
  }

  // Index of the first byte of the line that holds the byte at `index`, as far as the piece tells.
  [[nodiscard]] std::int32_t LineStart(std::int32_t index);

  // Whether what lies in front of the piece could not make LineStart give another answer than `start`.
  [[nodiscard]] bool KnowsStart(std::int32_t start);

  // Index of the line break, with what belongs to it, that holds the byte at `index`; the start of its unit
  // when that is no part of a line break.
  [[nodiscard]] std::int32_t BreakStart(std::int32_t index);

  // Whether the line that begins at `start` has more than `limit` bytes, its line break included. `unknown`
  // when the piece ends too early to tell.
  [[nodiscard]] LongLine Judge(std::int32_t start, std::int32_t limit) const;

 private:
  static constexpr std::uint32_t kNoUnit = 0x10000;

  bool IsSecondOfPair(std::int32_t index);

  const std::uint8_t* bytes_;
  std::int32_t size_;
  bool fromStart_;
  bool toEnd_;
  TextUnit unit_;
  std::int32_t step_;  // bytes of a unit
  // The row of alternating line breaks that was looked at last: it begins at alternatingFrom_, and reaches as
  // far as alternatingTo_ at least.
  std::int32_t alternatingFrom_ = 0;
  std::int32_t alternatingTo_ = -1;
};
