// The marks of the Mark menu. A tag is a file position, not a line, so it stays on its byte when the lines
// around it are made anew. The list is a sorted array; its records are those of engine/view_records.h.
#pragma once

#include "engine/view_records.h"

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
