// Numbers and texts of profile keys, as all option groups read and write them. `profile` is the path of the
// profile file.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Signed decimal; `absent` when there is no such key.
[[nodiscard]] std::int32_t ReadProfileInt(const char* profile, const char* section, const char* key,
                                          std::int32_t absent);

// Four numbers with commas between them, each by the rule of LeadingNumber; those that are missing are 0. Of
// a value at most 255 bytes count.
[[nodiscard]] std::array<std::int32_t, 4> ReadProfileNumbers(const char* profile, const char* section,
                                                             const char* key);

// Whether there is such a key with a value that is not empty.
[[nodiscard]] bool ProfileHolds(const char* profile, const char* section, const char* key);

// The names of a section's keys, in its order.
[[nodiscard]] std::vector<std::string> ProfileKeyNames(const char* profile, const char* section);

// At most `longest` bytes of the value; `absent` when there is no such key.
[[nodiscard]] std::string ReadProfileText(const char* profile, const char* section, const char* key,
                                          const char* absent, std::size_t longest);

// Writes of a save (platform/profile_batch.h), whose result tells whether they could be made.
void WriteProfileInt(const char* profile, const char* section, const char* key, std::int64_t value);
void WriteProfileText(const char* profile, const char* section, const char* key, const std::string& value);
void DeleteProfileKey(const char* profile, const char* section, const char* key);

// Whether two names are one to the profile, which looks at no ASCII case.
[[nodiscard]] bool SameProfileName(std::string_view one, std::string_view other);

// The decimal number that `text` begins with, behind blanks and a sign, as far as 32 bits hold it; 0 when
// there is none. `end`, if given, gets the offset behind the last digit, or 0 when there was no digit.
[[nodiscard]] std::int32_t LeadingNumber(const std::string& text, std::size_t* end = nullptr);

// The longest beginning of UTF-8 text with at most `most` bytes that cuts no character.
[[nodiscard]] std::string_view WholeCharacters(std::string_view text, std::size_t most);
