// The one type of a place in a file: a byte offset, as wide as the LPARAM that carries it through the
// messages, so that a file may have any size the system can hold. Counts within a line and indices of
// lines have narrower types of their own; `int` never holds a file quantity.
#pragma once

#include <cstdint>

using FilePos = std::intptr_t;

// No place. Arguments and fields that name a position hold it for "none".
inline constexpr FilePos kNoPosition = -1;

// Behind every place of every file: what the sentinel of a tag list holds.
inline constexpr FilePos kBehindEveryPosition = INTPTR_MAX;
