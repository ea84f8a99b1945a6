#include "engine/text_lines.h"

#include <algorithm>
#include <cstring>

namespace {

// Bytes that are looked at in one step. A step asks twice, once for each kind of line break, so that a text
// without the one kind costs no more than a step too much.
constexpr std::int32_t kFirstStep = 256;
constexpr std::int32_t kLargestStep = 8192;
constexpr std::int32_t kBackStep = 64;
// Line breaks that alternate for longer than that are taken as pairs of CR LF.
constexpr std::int32_t kFarEnough = 32767;

const std::uint8_t* FindByte(const std::uint8_t* bytes, int value, std::int32_t count) {
  return static_cast<const std::uint8_t*>(std::memchr(bytes, value, static_cast<std::size_t>(count)));
}

bool HoldsLineBreak(const std::uint8_t* bytes) {
  unsigned found = 0;
  for (std::int32_t i = 0; i < kBackStep; ++i)
    found |= static_cast<unsigned>(bytes[i] == 10) | static_cast<unsigned>(bytes[i] == 13);
  return found != 0;
}

}  // namespace

std::int32_t FindLineBreak(const std::uint8_t* bytes, std::int32_t from, std::int32_t end) {
  for (std::int32_t step = kFirstStep; from < end; step = std::min(2 * step, kLargestStep)) {
    const std::int32_t count = std::min(step, end - from);
    const std::uint8_t* const at = bytes + from;
    const std::uint8_t* const lineFeed = FindByte(at, 10, count);
    const std::uint8_t* const carriageReturn =
        FindByte(at, 13, lineFeed != nullptr ? static_cast<std::int32_t>(lineFeed - at) : count);
    if (carriageReturn != nullptr) return static_cast<std::int32_t>(carriageReturn - bytes);
    if (lineFeed != nullptr) return static_cast<std::int32_t>(lineFeed - bytes);
    from += count;
  }
  return end;
}

std::int32_t BehindLineBreak(const std::uint8_t* bytes, std::int32_t from) {
  while (from >= kBackStep && !HoldsLineBreak(bytes + from - kBackStep))
    from -= kBackStep;
  while (from > 0 && !IsLineBreak(bytes[from - 1]))
    --from;
  return from;
}

namespace {

bool IsWideBreak(const std::uint8_t* at, TextUnit unit) {
  const int low = unit == TextUnit::utf16le ? 0 : 1;
  return at[1 - low] == 0 && IsLineBreak(at[low]);
}

}  // namespace

std::int32_t FindLineBreak(const std::uint8_t* bytes, std::int32_t from, std::int32_t end, TextUnit unit) {
  if (unit == TextUnit::byte) return FindLineBreak(bytes, from, end);
  for (; from + 1 < end; from += 2) {
    if (IsWideBreak(bytes + from, unit)) return from;
  }
  return end;
}

std::int32_t BehindLineBreak(const std::uint8_t* bytes, std::int32_t from, TextUnit unit) {
  if (unit == TextUnit::byte) return BehindLineBreak(bytes, from);
  while (from > 0 && !IsWideBreak(bytes + from - 2, unit))
    from -= 2;
  return from;
}

// Whether the line break at `index` is the second one of a pair.
bool TextPiece::IsSecondOfPair(std::int32_t index) {
  if (index < alternatingFrom_ || index > alternatingTo_) {
    std::int32_t from = index;
    while (from > 0 && IsBreakPair(UnitAt(from - step_), UnitAt(from)))
      from -= step_;
    alternatingFrom_ = from;
    alternatingTo_ = index;
  }
  const bool startUnknown = alternatingFrom_ == 0 && !fromStart_;
  // Then lines end as nearly all do that end in two bytes.
  const std::int32_t from = startUnknown && UnitAt(0) == 10 ? step_ : alternatingFrom_;
  return index > from && (index - from) / step_ % 2 != 0;
}

std::int32_t TextPiece::BreakStart(std::int32_t index) {
  index -= index % step_;
  if (IsEndMark(index)) index -= step_;
  return IsLineBreak(UnitAt(index)) && IsSecondOfPair(index) ? index - step_ : index;
}

std::int32_t TextPiece::LineStart(std::int32_t index) {
  return BehindLineBreak(bytes_, BreakStart(index), unit_);
}

bool TextPiece::KnowsStart(std::int32_t start) {
  if (fromStart_ || start > kFarEnough) return true;
  if (start == 0) return false;
  // How the line breaks in front of it are paired may depend on what lies before the piece.
  IsSecondOfPair(start - step_);
  return alternatingFrom_ > 0;
}

LongLine TextPiece::Judge(std::int32_t start, std::int32_t limit) const {
  const std::int32_t reach = size_ - start <= limit ? size_ : start + limit;
  std::int32_t end = FindLineBreak(bytes_, start, reach, unit_);
  if (end == reach) {
    if (reach < size_) return LongLine::yes;
    return toEnd_ ? LongLine::no : LongLine::unknown;
  }
  end += step_;
  const bool pairMayFollow = end == size_ && !toEnd_;
  if (end < size_ && IsBreakPair(UnitAt(end - step_), UnitAt(end))) end += step_;
  if (end - start > limit) return LongLine::yes;
  return pairMayFollow && end - start + step_ > limit ? LongLine::unknown : LongLine::no;
}
