// The characters of formats that have a column for each byte. In a code of several bytes a character stands
// in the column of its first byte, and dots on the rest; a wide one takes the column behind it too, where the
// row has that. What the characters are never depends on where a slice begins.
#pragma once

#include <array>
#include <cstring>

#include "codes/characters.h"
#include "codes/decoders.h"
#include "engine/char_map.h"
#include "engine/view_records.h"

// Bytes in front of a row and behind it that decide which characters stand in it.
inline constexpr std::int32_t kColumnReach = kLongestCharacter;

// A sign for each control character; a character that combines with others stands alone.
[[nodiscard]] Cell ColumnCell(char32_t character, ViewOptions options);

namespace byte_columns {

inline constexpr Cell kDot = 0xB7;

// Bytes that are a character each.
class Mapped {
 public:
  Mapped(const FileSlice& slice, const Cell* map) : bytes_(slice.Sbuf), map_(map) {}
  // Whether the slice tells all characters of the bytes from index `from` to `end` - 1.
  [[nodiscard]] static bool Knows(ByteCount /*from*/, ByteCount /*end*/) { return true; }
  // Writes the cells of the bytes from index `from` on.
  void Write(Cell* to, std::int32_t from, std::int32_t count) const {
    const std::uint8_t* const bytes = bytes_ + from;
    // Eight look-ups a step: with one, the loop's own work costs as much as the look-up. And two of them a
    // store.
    constexpr std::int32_t kStep = 8;
    const auto put = [&](std::int32_t at) {
      const std::array<Cell, 2> two = {map_[bytes[at]], map_[bytes[at + 1]]};
      std::memcpy(to + at, two.data(), sizeof two);
    };
    std::int32_t i = 0;
    for (; i + kStep <= count; i += kStep) {
      for (std::int32_t k = 0; k < kStep; k += 2)
        put(i + k);
    }
    for (; i + 2 <= count; i += 2)
      put(i);
    if (i < count) to[i] = map_[bytes[i]];
  }

 private:
  const std::uint8_t* bytes_;
  const Cell* map_;
};

template <typename Code>
class Decoding {
 public:
  // `base`: the file offset of the slice's first byte. A unit of two bytes may be cut by it.
  Decoding(const FileSlice& slice, FilePos base, ViewOptions options)
      : skipped_(static_cast<std::int32_t>(base.Offset() % Code::kUnit)),
        bytes_(slice.Sbuf + skipped_),
        size_(std::max(slice.Slen + slice.Sahead - skipped_, 0)),
        fromStart_(base == 0),
        toEnd_(slice.Slast || slice.Sahead > 0),
        options_(options) {}

  [[nodiscard]] bool Knows(ByteCount from, ByteCount end) const {
    return (fromStart_ || from >= skipped_ + Code::kReach) &&
           (toEnd_ || end + Code::kReach <= skipped_ + size_);
  }

  void Write(Cell* to, std::int32_t from, std::int32_t count) const {
    std::fill_n(to, count, kDot);
    const std::int32_t first = from - skipped_;
    std::int32_t at = first <= 0 ? 0 : CharacterStart<Code>(bytes_, size_, first);
    for (; at < std::min(first + count, size_);) {
      Decoded next = Code::Decode(bytes_ + at, bytes_ + size_);
      if (next.length == 0) next = {kNoCharacter, std::min(Code::kUnit, size_ - at)};
      if (at >= first) Put(to + (at - first), first + count - at, at, next);
      at += next.length;
    }
  }

 private:
  void Put(Cell* to, std::int32_t room, std::int32_t at, const Decoded& next) const {
    if (next.character == kNoCharacter) {
      *to = kBadCell | bytes_[at];
      return;
    }
    *to = ColumnCell(next.character, options_);
    const bool isWide = KnownKind(next.character) == CharacterKind::wide;
    if (isWide && room > 1 && next.length > 1) to[1] = kWideTail;
  }

  std::int32_t skipped_;
  const std::uint8_t* bytes_;
  std::int32_t size_;
  bool fromStart_, toEnd_;
  ViewOptions options_;
};

}  // namespace byte_columns

// Calls `use` with the columns of a slice in the code that the options name; `pos` is the file offset of the
// byte at slice.Soff.
template <typename Use>
void WithByteColumns(const FileSlice& slice, FilePos pos, ViewOptions options, Use use) {
  const FilePos base = pos - slice.Soff;
  switch (options & VO_UNICODE) {
    case VO_UTF8:
      return use(byte_columns::Decoding<Utf8>(slice, base, options));
    case VO_UTF16LE:
      return use(byte_columns::Decoding<Utf16Le>(slice, base, options));
    case VO_UTF16BE:
      return use(byte_columns::Decoding<Utf16Be>(slice, base, options));
    default:
      return use(byte_columns::Mapped(slice, GetCellMap(options)));
  }
}
