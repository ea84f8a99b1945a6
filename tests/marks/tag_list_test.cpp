// The tag list against a plain sorted map as its model.
#include "marks/tag_list.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <vector>

namespace {

class TagListTest : public testing::Test {
 protected:
  void ExpectModel() {
    ASSERT_EQ(list.count, static_cast<std::int16_t>(model.size()));
    const TagEntry* entry = list.entries;
    for (const auto& [position, flags] : model) {
      ASSERT_EQ(entry->position, position);
      ASSERT_EQ(entry->flags, flags);
      ++entry;
    }
  }

  std::vector<TagEntry> slots = std::vector<TagEntry>(kTagSlots);
  TagList list{slots.data(), kTagSlots - 1, 0};
  std::map<FilePos, std::uint32_t> model;
};

TEST_F(TagListTest, AgreesWithASortedSet) {
  std::mt19937 random(7);
  for (int step = 0; step < 4000; ++step) {
    const auto position = FilePos::At(random() % 4000 * (step % 2 == 0 ? 1 : 5000000000));
    switch (random() % 10) {
      case 0: {
        const FilePos other = position + random() % 400 - 200;
        const auto from = model.lower_bound(std::min(position, other));
        const auto to = model.upper_bound(std::max(position, other));
        ASSERT_EQ(TagRemoveRange(list, position, other), std::distance(from, to));
        model.erase(from, to);
        break;
      }
      case 1: {
        const auto next = model.upper_bound(position);
        ASSERT_EQ(TagNext(list, position), next == model.end() ? kNoPosition : next->first);
        break;
      }
      default: {
        const std::uint32_t flags = random() % 2 == 0 ? kTagByUser : kTagBySearch;
        const bool full = model.size() == 999;
        const std::int32_t index = TagInsert(list, position, flags);
        if (full) {
          ASSERT_EQ(index, -1);
        } else {
          model[position] |= flags;
          ASSERT_EQ(index, std::distance(model.begin(), model.find(position)));
        }
      }
    }
    ASSERT_NO_FATAL_FAILURE(ExpectModel());
  }
}

TEST_F(TagListTest, Holds999) {
  for (std::int32_t i = 0; i < 999; ++i)
    ASSERT_EQ(TagInsert(list, FilePos::At(i * 3), kTagByUser), i);
  EXPECT_EQ(TagInsert(list, 1, kTagByUser), -1);
  EXPECT_EQ(TagInsert(list, 3, kTagBySearch), -1);
  EXPECT_EQ(list.entries[1].flags, kTagByUser);
  EXPECT_EQ(TagRemoveRange(list, 0, kBehindEveryPosition), 999);
  EXPECT_EQ(TagRemoveRange(list, 0, 10), 0);
  EXPECT_EQ(TagNext(list, kNoPosition), kNoPosition);
}

}  // namespace
