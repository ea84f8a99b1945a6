// What defines the search of the program: a key, typed or taken from a history, and how it is looked for. A
// dialog, a key of the keyboard and another program define it by the same two verbs.
#pragma once

#include "search/search_key.h"

// How the key is looked for.
struct SearchWish {
  bool caseSensitive = false;  // of a text; bytes always are
  bool fromTop = false;
  bool markAll = false;  // tag every hit, instead of showing the next one
};

// Reads the history of the Find Text or the Find Hex dialog, unless that has been done. With `enabled` 0 it
// begins empty.
void LoadTextHistory(const char* profile, std::int32_t enabled, RecentSearchLists& recent);
void LoadHexHistory(const char* profile, std::int32_t enabled, RecentSearchLists& recent);

// Defines a search for `text` (UTF-8), in the code that `code` names. With `row` 0 or more the key is that
// entry of the history, whose bytes are taken as they are. The key moves to the front of the history. When
// the check fails nothing has changed.
[[nodiscard]] FieldCheck SetTextSearch(std::string_view text, std::int32_t row, const SearchWish& wish,
                                       ViewOptions code, RecentSearchLists& recent, SearchState& search);

// Defines a search for the bytes of hex text, which moves to the front of its history. When the text is not
// good, only the key's last good bytes stand.
[[nodiscard]] HexKey SetHexSearch(std::string_view text, const SearchWish& wish, RecentSearchLists& recent,
                                  SearchState& search);

// Makes hex text of `least` characters or more the key while it is typed. When it is not good, the key stays.
[[nodiscard]] HexKey SetHexKey(std::string_view text, std::int32_t least, SearchState& search);
