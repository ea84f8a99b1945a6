// What Unicode says of its characters, from the system's tables. Any thread. The names of the standard: UAX
// #11 (widths), UAX #44 (categories), CaseFolding.txt (folding).
#pragma once

#include <cstdint>

// What stands for bytes that are no character.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// How a character stands in a grid of columns.
enum class CharacterKind : std::uint8_t {
  narrow,   // one column
  wide,     // two columns
  mark,     // none: it combines with the character in front of it
  control,  // has no picture: a control character
  format,   // has no picture: a format character, a separator of lines or paragraphs, a noncharacter
};

// The kind of a code point, 0 to 0x10FFFF. The soft hyphen, which people see, is narrow.
[[nodiscard]] CharacterKind KindOfCharacter(char32_t character);

// Whether people expect a colored picture: a wide symbol.
[[nodiscard]] bool IsEmoji(char32_t character);

// The simple case folding of a code point: itself, or the one that it equals when case does not matter.
[[nodiscard]] char32_t SimpleFold(char32_t character);

// Of the tables, as "15.0.0".
[[nodiscard]] const char* UnicodeVersion();
