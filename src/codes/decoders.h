// The characters of bytes in UTF-8 and UTF-16 and back, one at a time and strictly (Unicode 15, chapter 3.9):
// a sequence that is cut short, longer than it need be, or beyond Unicode is no character, nor is half a
// surrogate pair. Each byte that belongs to no character of UTF-8 stands alone; of UTF-16 each unit of two
// bytes. So where characters begin can be told from the few bytes around a place. Knows bytes only.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

// The character that begins at a place.
struct Decoded {
  char32_t character = 0;   // kNoCharacter: these bytes are none
  std::int32_t length = 0;  // bytes; 0: the bytes at hand end within what may be a character
};
inline constexpr char32_t kNoCharacter = 0xFFFFFFFF;

// The most bytes that a character has.
inline constexpr std::int32_t kLongestCharacter = 4;

class Utf8 {
 public:
  static constexpr std::int32_t kUnit = 1;  // bytes that every character has a multiple of

  // `at` < `end`.
  static Decoded Decode(const std::uint8_t* at, const std::uint8_t* end) {
    const std::uint32_t lead = *at;
    if (lead < 0x80) return {lead, 1};
    if (lead < 0xC2 || lead > 0xF4) return {kNoCharacter, 1};
    const std::int32_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    const auto here = static_cast<std::int32_t>(std::min<std::ptrdiff_t>(end - at, length));
    std::uint32_t character = lead & (0xFFU >> (length + 1));
    for (std::int32_t i = 1; i < here; ++i) {
      const std::uint32_t byte = at[i];
      if ((byte & 0xC0) != 0x80) return {kNoCharacter, 1};
      character = character << 6 | (byte & 0x3F);
      // The second byte tells of what is too long, a surrogate, or too large.
      if (i == 1 && !SecondFits(lead, byte)) return {kNoCharacter, 1};
    }
    if (here < length) return {kNoCharacter, 0};
    return {character, length};
  }

  // Bytes in front of a place that may belong to a character which reaches over it.
  static constexpr std::int32_t kReach = 3;

  static std::string Encode(char32_t character) {
    constexpr std::uint32_t kLeads[] = {0, 0xC0, 0xE0, 0xF0};
    const std::uint32_t further = character < 0x80 ? 0 : character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    std::string bytes(1, static_cast<char>(kLeads[further] | (character >> (6 * further))));
    for (std::uint32_t i = further; i > 0; --i)
      bytes += static_cast<char>(0x80 | ((character >> (6 * (i - 1))) & 0x3F));
    return bytes;
  }

 private:
  static bool SecondFits(std::uint32_t lead, std::uint32_t second) {
    switch (lead) {
      case 0xE0:
        return second >= 0xA0;
      case 0xED:
        return second < 0xA0;
      case 0xF0:
        return second >= 0x90;
      case 0xF4:
        return second < 0x90;
      default:
        return true;
    }
  }
};

// `kLow`: the index of the low byte within a unit.
template <int kLow>
class Utf16 {
 public:
  static constexpr std::int32_t kUnit = 2;
  static constexpr std::int32_t kReach = 2;

  static std::uint32_t UnitAt(const std::uint8_t* at) {
    return static_cast<std::uint32_t>(at[kLow]) | static_cast<std::uint32_t>(at[1 - kLow]) << 8;
  }

  static Decoded Decode(const std::uint8_t* at, const std::uint8_t* end) {
    if (end - at < 2) return {kNoCharacter, 0};
    const std::uint32_t unit = UnitAt(at);
    if ((unit & 0xF800) != 0xD800) return {unit, 2};
    if (unit >= 0xDC00) return {kNoCharacter, 2};
    if (end - at < 4) return {kNoCharacter, 0};
    const std::uint32_t low = UnitAt(at + 2);
    if ((low & 0xFC00) != 0xDC00) return {kNoCharacter, 2};
    return {0x10000 + ((unit & 0x3FF) << 10 | (low & 0x3FF)), 4};
  }

  static std::string Encode(char32_t character) {
    if (character < 0x10000) return UnitBytes(character);
    return UnitBytes(0xD800 + ((character - 0x10000) >> 10)) + UnitBytes(0xDC00 + (character & 0x3FF));
  }

 private:
  static std::string UnitBytes(std::uint32_t unit) {
    std::string bytes(2, '\0');
    bytes[kLow] = static_cast<char>(unit & 0xFF);
    bytes[1 - kLow] = static_cast<char>(unit >> 8);
    return bytes;
  }
};
using Utf16Le = Utf16<0>;
using Utf16Be = Utf16<1>;

// The start of the character that holds the byte at index `index` of `size` bytes: that index, or one at most
// kReach below it. Index 0 must be a multiple of kUnit in the file, and `index` within the bytes. Bytes in
// front of those at hand count as no part of a character.
template <typename Code>
std::int32_t CharacterStart(const std::uint8_t* bytes, std::int32_t size, std::int32_t index) {
  index -= index % Code::kUnit;
  for (std::int32_t back = Code::kUnit; back <= Code::kReach && back <= index; back += Code::kUnit) {
    const Decoded before = Code::Decode(bytes + index - back, bytes + size);
    if (before.length > back) return index - back;
  }
  return index;
}
