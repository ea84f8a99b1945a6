// Which OEM code page the user's locale has, and the tables between its bytes and the Windows-1252 set.
#pragma once

#include <cstdint>
#include <string_view>

// Name (for iconv) of the OEM code page of a locale such as "de_AT.UTF-8"; CP437 where none is known or the
// page is not one of single bytes.
[[nodiscard]] const char* OemCodePageOf(std::string_view locale);

// Fills `table` with the Windows-1252 character of each byte of `codePage`. Bytes below 32 stay themselves.
// A character that Windows-1252 lacks gets a stand-in that looks or sounds like it, else '?'.
void FillOemTable(const char* codePage, std::uint8_t (&table)[256]);

// Fills `table` with the byte of `codePage` for each Windows-1252 character, the inverse of the above as far
// as both sets have the character. The lower half stays itself. A character that the page lacks becomes an
// ASCII one that looks like it, else '?'; a paragraph or section sign the control byte that shows it on a PC.
void FillAnsiTable(const char* codePage, std::uint8_t (&table)[256]);
