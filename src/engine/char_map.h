// Display maps: what character of the Windows-1252 set stands for each byte of the file, in the three codes
// of one byte a character. A map is a table of 256 bytes that lives as long as the program.
#pragma once

#include <cstdint>

#include "engine/view_records.h"

// The byte that begins a page, and the marks of the bytes that have no picture.
inline constexpr std::uint8_t kPageCharacter = 12;
inline constexpr std::uint8_t kControlMark = 183;
inline constexpr std::uint8_t kTabMark = 164;
inline constexpr std::uint8_t kPageMark = 240;

// Signs for characters that have no picture, in the codes of several bytes a character.
inline constexpr Cell kControlSign = 0xB7;
inline constexpr Cell kTabSign = 0xA4;
inline constexpr Cell kPageSign = 0x240C;

// The map that the option word selects: VO_EBCDIC, else VO_ASCII (the system's OEM code page), else ANSI.
// With VO_KEEPFF the page character stays itself in the ANSI and ASCII maps. The same table is given out at
// every call; the entry of the page character is set anew each time.
[[nodiscard]] const std::uint8_t* GetCharMap(ViewOptions options);

// The cells that the map's characters stand in. These tables do not change.
[[nodiscard]] const Cell* GetCellMap(ViewOptions options);

// EBCDIC code of each character, 0 for a character that has none. For a character that several codes share,
// the highest of them.
[[nodiscard]] const std::uint8_t* GetEbcdicInverse();
