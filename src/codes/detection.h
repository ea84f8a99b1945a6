// Which code a text is in, by its first bytes. Knows bytes only.
#pragma once

#include <cstdint>
#include <span>

enum class FoundCode : std::uint8_t {
  none,  // nothing tells: ASCII alone, or no text in a code of Unicode
  utf8,
  utf16le,
  utf16be,
};

// As many bytes as are looked at.
inline constexpr std::int32_t kDetectionBytes = 65536;

// A byte order mark decides. Else text that is strict UTF-8 with a character beyond ASCII is UTF-8, and text
// of units of which an eighth or more have a zero byte on one side, and few on the other, is UTF-16: without
// halves of surrogate pairs, zero units, and more than a few control characters. `whole`: the text ends with
// the bytes; else they may cut a character.
[[nodiscard]] FoundCode DetectCode(std::span<const std::uint8_t> bytes, bool whole);
