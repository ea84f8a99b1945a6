// Numbers and texts of profile keys, as all option groups read and write them. `profile` is the path of the
// profile file.
#pragma once

#include <cstdint>
#include <string>

// Signed decimal; `absent` when there is no such key.
[[nodiscard]] std::int32_t ReadProfileInt(const char* profile, const char* section, const char* key,
                                          std::int32_t absent);

// At most `longest` bytes of the value; `absent` when there is no such key.
[[nodiscard]] std::string ReadProfileText(const char* profile, const char* section, const char* key,
                                          const char* absent, std::size_t longest);

// Writes of a save (platform/profile_batch.h), whose result tells whether they could be made.
void WriteProfileInt(const char* profile, const char* section, const char* key, std::int64_t value);
void WriteProfileText(const char* profile, const char* section, const char* key, const std::string& value);
void DeleteProfileKey(const char* profile, const char* section, const char* key);

// The decimal number that `text` begins with, behind blanks and a sign, as far as 32 bits hold it; 0 when
// there is none. `end`, if given, gets the offset behind the last digit, or 0 when there was no digit.
[[nodiscard]] std::int32_t LeadingNumber(const std::string& text, std::size_t* end = nullptr);
