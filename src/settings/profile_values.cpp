#include "settings/profile_values.h"

#include <algorithm>
#include <limits>

#include "platform/win32.h"

namespace {

constexpr std::size_t kLongestNumbers = 255;

}  // namespace

std::int32_t ReadProfileInt(const char* profile, const char* section, const char* key, std::int32_t absent) {
  return static_cast<std::int32_t>(GetPrivateProfileIntA(section, key, absent, profile));
}

std::string ReadProfileText(const char* profile, const char* section, const char* key, const char* absent,
                            std::size_t longest) {
  std::string text(longest + 1, '\0');
  text.resize(
      GetPrivateProfileStringA(section, key, absent, text.data(), static_cast<DWORD>(text.size()), profile));
  return text;
}

std::array<std::int32_t, 4> ReadProfileNumbers(const char* profile, const char* section, const char* key) {
  std::array<std::int32_t, 4> numbers{};
  std::string rest = ReadProfileText(profile, section, key, "", kLongestNumbers);
  for (std::int32_t& number : numbers) {
    number = LeadingNumber(rest);
    const std::size_t comma = rest.find(',');
    rest = comma == std::string::npos ? "" : rest.substr(comma + 1);
  }
  return numbers;
}

bool ProfileHolds(const char* profile, const char* section, const char* key) {
  return !ReadProfileText(profile, section, key, "", 1).empty();
}

std::vector<std::string> ProfileKeyNames(const char* profile, const char* section) {
  std::string text(4096, '\0');
  for (;;) {
    const auto size = static_cast<DWORD>(text.size());
    const DWORD length = GetPrivateProfileStringA(section, nullptr, "", text.data(), size, profile);
    if (length + 2 < size) {
      text.resize(length);
      break;
    }
    text.resize(text.size() * 4);
  }
  std::vector<std::string> names;
  for (std::size_t at = 0; at < text.size(); at += names.back().size() + 1)
    names.emplace_back(text.c_str() + at);
  return names;
}

bool SameProfileName(std::string_view one, std::string_view other) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::ranges::equal(one, other, {}, lower, lower);
}

void WriteProfileInt(const char* profile, const char* section, const char* key, std::int64_t value) {
  WriteProfileText(profile, section, key, std::to_string(value));
}

void WriteProfileText(const char* profile, const char* section, const char* key, const std::string& value) {
  WritePrivateProfileStringA(section, key, value.c_str(), profile);
}

void DeleteProfileKey(const char* profile, const char* section, const char* key) {
  WritePrivateProfileStringA(section, key, nullptr, profile);
}

std::int32_t LeadingNumber(const std::string& text, std::size_t* end) {
  constexpr std::int64_t kFar = std::int64_t{1} << 40;
  std::size_t at = std::min(text.find_first_not_of(" \t"), text.size());
  const bool negative = at < text.size() && text[at] == '-';
  if (negative || (at < text.size() && text[at] == '+')) ++at;
  const std::size_t digits = at;
  std::int64_t number = 0;
  for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
    number = std::min(number * 10 + (text[at] - '0'), kFar);
  }
  if (end != nullptr) *end = at > digits ? at : 0;
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(negative ? -number : number, Limits::min(), Limits::max()));
}

std::string_view WholeCharacters(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0) == 0x80)
    --most;
  return text.substr(0, most);
}
