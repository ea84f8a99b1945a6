// The checks of all edit fields and lists of dialogs, on their texts: a check accepts, or says in one message
// which field is wrong and what it may hold. Under them the fixed-point conversion, numbers with a decimal
// separator held as scaled integers, so that no floating point occurs. Knows no dialog: who asks shows the
// message under kFieldCheckCaption with the beep and icon of a stop sign, and puts the focus on the field.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "engine/file_pos.h"

inline constexpr const char* kFieldCheckCaption = "Bad Options";

// What a field is read into, the NUL included. Checks look at one byte less, whatever they are given.
inline constexpr std::size_t kFieldBytes = 40;

// Reads `text` as a number with at most `decimals` decimals: blanks, a minus sign, digits, the separator,
// digits, blanks. `value` becomes the number x 10^decimals; further decimals are dropped, not rounded. 0 if
// the text is good; otherwise the 1-based place of the first character that is not, which for a text without
// anything but blanks and a sign is the place behind it. A number that is too large loses its upper bits.
[[nodiscard]] std::int32_t ParseFixedPoint(std::string_view text, char separator, std::int32_t decimals,
                                           std::int32_t& value);

// Bytes of the longest text of a fixed-point number, the NUL included.
inline constexpr std::size_t kFixedPointBytes = 24;

// Writes `value` / 10^decimals, zero-terminated, without zeros at the end of the fraction. `buffer` has
// kFixedPointBytes or more, `decimals` is at most 9. The length of the text.
std::int32_t FormatFixedPoint(char* buffer, char separator, std::int32_t decimals, std::int32_t value);

// The outcome of a check.
struct FieldCheck {
  bool accepted = true;
  std::string message;  // for the user, when it is not
};

// The checks. `low` and `high` are both allowed. `name` tells the user which field it is; null stands for
// "Value". An empty field is never good.
[[nodiscard]] FieldCheck ValidateFixedField(std::string_view text, std::int32_t low, std::int32_t high,
                                            std::int32_t decimals, char separator, const char* name);
[[nodiscard]] FieldCheck ValidateIntField(std::string_view text, std::int32_t low, std::int32_t high,
                                          const char* name);

// As above for a number in the notation of its prefix: 0x hexadecimal, a leading 0 octal, else decimal.
[[nodiscard]] FieldCheck ValidateLongField(std::string_view text, std::int64_t low, std::int64_t high,
                                           const char* name);

// The number of such a field. `good` tells whether the whole text was one. A number that is too large gives
// the largest, as a signed or an unsigned one; an empty field gives 0.
[[nodiscard]] std::int64_t GetLongField(std::string_view text, bool& good, bool isSigned);

// A list must have a chosen row: `selection` is its index, or negative. Null for `name` stands for "value".
[[nodiscard]] FieldCheck ValidateChoice(std::intptr_t selection, const char* name);
