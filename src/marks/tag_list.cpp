#include "marks/tag_list.h"

#include <span>

namespace {

std::span<TagEntry> Entries(const TagList& list) {
  return {list.entries, static_cast<std::size_t>(list.count)};
}

// The first entry at or behind `position`.
TagEntry* FirstFrom(const TagList& list, FilePos position) {
  return std::to_address(std::ranges::lower_bound(Entries(list), position, {}, &TagEntry::position));
}

TagEntry* End(const TagList& list) {
  return list.entries + list.count;
}

}  // namespace

std::int32_t TagInsert(TagList& list, FilePos position, std::uint32_t flags) {
  if (list.count >= list.capacity) return -1;
  TagEntry* const place = FirstFrom(list, position);
  if (place != End(list) && place->position == position) {
    place->flags |= flags;
  } else {
    std::move_backward(place, End(list), End(list) + 1);
    *place = {position, flags};
    ++list.count;
  }
  return static_cast<std::int32_t>(place - list.entries);
}

std::int32_t TagRemoveRange(TagList& list, FilePos from, FilePos to) {
  if (to < from) std::swap(from, to);
  TagEntry* const first = FirstFrom(list, from);
  TagEntry* const behind = to == kBehindEveryPosition ? End(list) : FirstFrom(list, to + 1);
  const auto removed = static_cast<std::int16_t>(behind - first);
  std::move(behind, End(list), first);
  list.count = static_cast<std::int16_t>(list.count - removed);
  return removed;
}

FilePos TagNext(TagList& list, FilePos position) {
  if (position == kBehindEveryPosition) return kNoPosition;
  const TagEntry* const next = FirstFrom(list, position + 1);
  return next == End(list) ? kNoPosition : next->position;
}

void MarkLines(LineArray& lines, TagList& tags) {
  tags.entries[tags.count].position = kBehindEveryPosition;
  const TagEntry* tag = tags.entries;
  while (tag->position < lines.Aline[lines.Afirst].Lpos)
    ++tag;
  for (std::int32_t i = lines.Afirst; i < lines.Alast; ++i) {
    lines.Aline[i].Lflags &= ~LF_TAGMASK;
    for (; tag->position < lines.Aline[i + 1].Lpos; ++tag)
      lines.Aline[i].Lflags |= tag->flags & LF_TAGMASK;
  }
}
