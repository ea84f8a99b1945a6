#include "settings/field_checks.h"

#include <algorithm>
#include <cassert>
#include <limits>
#include <optional>
#include <utility>

namespace {

constexpr const char* kDefaultName = "Value";

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

// White space in front of a number, by the rules of the C library in its own locale.
bool IsSpace(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}

std::string_view FieldText(std::string_view text) {
  return text.substr(0, kFieldBytes - 1);
}

FieldCheck Refuse(std::string message) {
  return {false, std::move(message)};
}

FieldCheck RefuseRange(const char* name, const std::string& low, const std::string& high) {
  return Refuse(std::string(name) + " must be a number between " + low + " and " + high + "!");
}

// `place` is 1-based. Where it points behind the text, the last character stands for what is missing.
FieldCheck RefuseCharacter(std::string_view text, std::size_t place, const char* name) {
  const char bad = text[std::min(place, text.size()) - 1];
  return Refuse(std::string("Invalid character \"") + bad + "\" in " + name + ".");
}

int DigitValue(char character) {
  if (IsDigit(character)) return character - '0';
  if (character >= 'a' && character <= 'f') return character - 'a' + 10;
  if (character >= 'A' && character <= 'F') return character - 'A' + 10;
  return 16;
}

// A number in the notation of its prefix, read as far as it goes.
struct LongNumber {
  std::uint64_t magnitude = 0;  // the largest value for a number that is too large
  bool negative = false;
  std::size_t used = 0;  // characters; 0: there is no number
};

LongNumber ReadLongNumber(std::string_view text) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
  LongNumber number;
  std::size_t i = 0;
  while (i < text.size() && IsSpace(text[i]))
    ++i;
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) number.negative = text[i++] == '-';

  unsigned base = 10;
  if (i < text.size() && text[i] == '0') {
    const bool hex =
        i + 2 < text.size() && (text[i + 1] == 'x' || text[i + 1] == 'X') && DigitValue(text[i + 2]) < 16;
    base = hex ? 16 : 8;
    if (hex) i += 2;
  }
  for (; i < text.size() && DigitValue(text[i]) < static_cast<int>(base); ++i) {
    const auto digit = static_cast<unsigned>(DigitValue(text[i]));
    const bool fits = number.magnitude <= (kMost - digit) / base;
    number.magnitude = fits ? number.magnitude * base + digit : kMost;
    number.used = i + 1;
  }
  return number;
}

// The number as a position. Unsigned, the upper half of the range is negative, and so below every range;
// signed, a number that is too large is the largest.
std::int64_t SignedValue(const LongNumber& number, bool isSigned) {
  constexpr auto kMostSigned = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (number.negative) return static_cast<std::int64_t>(0 - std::min(number.magnitude, kMostSigned + 1));
  return static_cast<std::int64_t>(isSigned ? std::min(number.magnitude, kMostSigned) : number.magnitude);
}

// The number that GetDlgItemInt would give; nothing where it reports failure.
std::optional<std::int32_t> ReadInt(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && IsSpace(text[i]))
    ++i;
  const bool negative = i < text.size() && text[i] == '-';
  if (negative) ++i;
  if (i == text.size()) return std::nullopt;
  std::int64_t value = 0;
  for (; i < text.size(); ++i) {
    if (!IsDigit(text[i])) return std::nullopt;
    value = value * 10 + (text[i] - '0');
    if (value > std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1) return std::nullopt;
  }
  if (negative) value = -value;
  if (value > std::numeric_limits<std::int32_t>::max()) return std::nullopt;
  return static_cast<std::int32_t>(value);
}

}  // namespace

std::int32_t ParseFixedPoint(std::string_view text, char separator, std::int32_t decimals,
                             std::int32_t& value) {
  std::size_t i = 0;
  const auto at = [&](char character) { return i < text.size() && text[i] == character; };
  const auto atDigit = [&] { return i < text.size() && IsDigit(text[i]); };
  std::uint32_t number = 0;
  const auto takeDigit = [&] { number = number * 10 + static_cast<std::uint32_t>(text[i++] - '0'); };

  while (at(' '))
    ++i;
  const bool negative = at('-');
  if (negative) ++i;
  const std::size_t nothing = i == text.size() ? i + 1 : 0;

  while (atDigit())
    takeDigit();
  std::int32_t taken = 0;
  if (at(separator)) {
    ++i;
    for (; taken < decimals && atDigit(); ++taken)
      takeDigit();
    while (atDigit())
      ++i;
  }
  while (at(' '))
    ++i;
  for (; taken < decimals; ++taken)
    number *= 10;
  value = static_cast<std::int32_t>(negative ? 0 - number : number);
  return static_cast<std::int32_t>(i == text.size() ? nothing : i + 1);
}

std::int32_t FormatFixedPoint(char* buffer, char separator, std::int32_t decimals, std::int32_t value) {
  assert(decimals >= 0 && decimals <= 9);
  std::uint32_t rest = value < 0 ? 0 - static_cast<std::uint32_t>(value) : static_cast<std::uint32_t>(value);
  const auto lowestDigit = [&rest] {
    const char digit = static_cast<char>('0' + rest % 10);
    rest /= 10;
    return digit;
  };
  std::string text;  // from the last character to the first
  for (std::int32_t i = 0; i < decimals; ++i) {
    const char digit = lowestDigit();
    if (digit != '0' || !text.empty()) text += digit;
  }
  if (!text.empty()) text += separator;
  const std::size_t fraction = text.size();
  while (rest != 0)
    text += lowestDigit();
  if (text.size() == fraction) text += '0';
  if (value < 0) text += '-';
  std::reverse_copy(text.begin(), text.end(), buffer);
  buffer[text.size()] = '\0';
  return static_cast<std::int32_t>(text.size());
}

FieldCheck ValidateFixedField(std::string_view text, std::int32_t low, std::int32_t high,
                              std::int32_t decimals, char separator, const char* name) {
  if (name == nullptr) name = kDefaultName;
  text = FieldText(text);
  if (!text.empty()) {
    std::int32_t value = 0;
    const std::int32_t place = ParseFixedPoint(text, separator, decimals, value);
    if (place != 0) return RefuseCharacter(text, static_cast<std::size_t>(place), name);
    if (value >= low && value <= high) return {};
  }
  char lowText[kFixedPointBytes];
  char highText[kFixedPointBytes];
  FormatFixedPoint(lowText, separator, decimals, low);
  FormatFixedPoint(highText, separator, decimals, high);
  return RefuseRange(name, lowText, highText);
}

FieldCheck ValidateIntField(std::string_view text, std::int32_t low, std::int32_t high, const char* name) {
  const std::optional<std::int32_t> value = ReadInt(FieldText(text));
  if (value && *value >= low && *value <= high) return {};
  return RefuseRange(name != nullptr ? name : kDefaultName, std::to_string(low), std::to_string(high));
}

FieldCheck ValidateLongField(std::string_view text, std::int64_t low, std::int64_t high, const char* name) {
  if (name == nullptr) name = kDefaultName;
  text = FieldText(text);
  if (!text.empty()) {
    const LongNumber number = ReadLongNumber(text);
    if (number.used < text.size()) return RefuseCharacter(text, number.used + 1, name);
    const std::int64_t value = SignedValue(number, false);
    if (value >= low && value <= high) return {};
  }
  return RefuseRange(name, std::to_string(low), std::to_string(high));
}

std::int64_t GetLongField(std::string_view text, bool& good, bool isSigned) {
  text = FieldText(text);
  const LongNumber number = ReadLongNumber(text);
  good = !text.empty() && number.used == text.size();
  return SignedValue(number, isSigned);
}

FieldCheck ValidateChoice(std::intptr_t selection, const char* name) {
  if (selection >= 0) return {};
  return Refuse(std::string("You must choose a ") + (name != nullptr ? name : "value") + " !");
}
