// The text of a profile file: finding values in it and editing it in place. Knows no files. An edit touches
// the bytes of the one value or line that it is about; all else that a person wrote (comments, blank lines,
// spacing, order, keys of other programs, line ends, a byte order mark, even lines that mean nothing) stays
// as it is, since nothing is ever taken apart and written anew.
//
// A line "[name]" opens a section, a line "key = value" holds a key. Names match without regard to ASCII
// case and to blanks around them. Lines that begin with ; or # are comments. Of sections, and of keys in a
// section, that stand twice the first counts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

// Offset of the first line of `section`, behind its header; npos when the text has no such section.
[[nodiscard]] std::size_t FindSectionInText(std::string_view text, std::string_view section);

// The value of `key` in the section whose first line is at `body`: without blanks at its ends, and without
// the one pair of like quotes around it, if there is one. A part of `text`.
[[nodiscard]] std::optional<std::string_view> FindKeyInText(std::string_view text, std::size_t body,
                                                            std::string_view key);

// The names of the keys in that section, each with a NUL behind it.
[[nodiscard]] std::string KeysInText(std::string_view text, std::size_t body);

// The edits. Each gives true when the text has changed; writing what stands there already changes nothing.

// Gives `key` the value; key and section come into being as needed: a key behind the last one of its
// section, a section at the end of the text. A value that would lose blanks or quotes at its ends when it is
// read is written in quotes. The value holds no line feed.
bool SetKeyInText(std::string& text, std::string_view section, std::string_view key, std::string_view value);

// Removes the lines of `key`, all of them, so that it is gone indeed.
bool DeleteKeyInText(std::string& text, std::string_view section, std::string_view key);

// Removes the section of that name, all of them: header, keys and comments up to the next header. Comment
// lines right above the next header belong to that one and stay.
bool DeleteSectionInText(std::string& text, std::string_view section);
