// From what a Find dialog holds to the key of a search, and back to what it shows. The key is bytes of the
// file, so a text goes through the file's character code, and hex digits are read as they are typed. Knows no
// dialog: who asks shows the message of a check that fails and moves the focus.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/view_records.h"
#include "search/search_engine.h"
#include "settings/field_checks.h"
#include "settings/recent_lists.h"

inline constexpr std::int32_t kHexDigits = kRecentHexBytes - 1;  // of hex text, blanks included

// Reads hex text: two digits make a byte; one that stands alone is the high half, with 0 below it. Blanks
// (0x20) part bytes. The number of bytes written to `destination`, at most half of `length` rounded up; at
// the first character that is neither digit nor blank, at index i, -1 - i.
[[nodiscard]] std::int32_t ParseHexText(std::uint8_t* destination, const char* text, std::int32_t length);

// What the bytes of a key look like in the view's character code, as UTF-8.
[[nodiscard]] std::string KeyDisplayText(const void* key, std::int32_t count, ViewOptions formatFlags);

// What an entry of the history of texts stands for, as UTF-8: bytes in the code of the option word, or, where
// that has several bytes a character, text in UTF-8 or, where it is none, in ANSI.
[[nodiscard]] std::string HistoryText(const char* entry, ViewOptions formatFlags);

// Whether typed text (UTF-8) can be a key: 1 to kSearchKeyBytes characters and bytes in the code that the
// option word names. Where that has one byte a character, all of the Windows-1252 set, and of EBCDIC in that.
[[nodiscard]] FieldCheck CheckTextKey(std::string_view text, ViewOptions formatFlags);

// The key of a text that passes, in the code of the option word.
[[nodiscard]] std::string TextKeyOf(std::string_view text, ViewOptions formatFlags);

// Hex text (UTF-8) as it stands while it is typed.
struct HexKey {
  FieldCheck length;        // whether it has `least` to kHexDigits characters
  std::string error = " ";  // for the error line; a single blank when all digits are good
  std::int32_t badAt = -1;  // index of the character that the error names
  std::vector<std::uint8_t> bytes;
  [[nodiscard]] bool IsGood() const { return length.accepted && badAt < 0; }
};
[[nodiscard]] HexKey ReadHexKey(std::string_view text, std::int32_t least);

// Moves a key to the front of its history, a block of kRecentStrings slots of `width` bytes: entry `index`,
// which is copied to `text`, or with a negative index `text` itself, a buffer of `width` bytes. A text that
// was not in the history adds 1 to `count`, as long as there is room; `touched` is as in
// TouchRecentList. Result: the length of the key.
std::size_t TouchHistory(char* list, std::size_t width, std::int32_t& count, std::int32_t& touched,
                         std::int32_t index, char* text);
