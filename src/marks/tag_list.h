// The marks of the Mark menu. A tag is a file position, not a line, so it stays on its byte when the lines
// around it are made anew. The list is a sorted array of a fixed size.
#pragma once

#include "engine/view_records.h"

inline constexpr std::int16_t kTagSlots = 1000;  // entries of the tag block, the sentinel's included

// One tag: a file offset, not a line.
struct TagEntry {
  FilePos position = 0;
  std::uint32_t flags = 0;  // 2 set by the user, 1 found by Mark All; only the low 4 bits are in use
};

// Tags in ascending order, positions unique. The slot behind the last entry is the sentinel's: a routine
// that walks the list writes kBehindEveryPosition there first.
struct TagList {
  TagEntry* entries = nullptr;
  std::int16_t capacity = 0;  // tags that the list accepts: one less than the slots
  std::int16_t count = 0;
};

// How a tag came to be.
inline constexpr std::uint32_t kTagByUser = 2;
inline constexpr std::uint32_t kTagBySearch = 1;

// Adds a tag, or adds `flags` to the tag that is there. Its index, or -1 when the list is full, also for a
// position that has a tag already: a full list takes nothing.
std::int32_t TagInsert(TagList& list, FilePos position, std::uint32_t flags);

// Removes the tags from `from` to `to`, both included, in either order. The number removed.
std::int32_t TagRemoveRange(TagList& list, FilePos from, FilePos to);

// The position of the first tag strictly behind `position`, or kNoPosition.
[[nodiscard]] FilePos TagNext(TagList& list, FilePos position);

// Copies the tags onto the lines: each line gets the flags of every tag from its first byte up to the next
// line's first byte.
void MarkLines(LineArray& lines, TagList& tags);
