// The kinds of characters, fast: the system's answers are kept in blocks of 256, each asked for on first use.
// Any thread.
#pragma once

#include <atomic>
#include <cstddef>

#include "platform/unicode.h"

inline constexpr char32_t kLastCharacter = 0x10FFFF;

namespace characters {

inline constexpr std::size_t kBlockBits = 8;
inline constexpr std::size_t kBlockSize = std::size_t{1} << kBlockBits;

// The kinds of the code points of each block, null until it is asked for.
extern std::atomic<const CharacterKind*> Blocks[(kLastCharacter + 1) >> kBlockBits];

// Makes the block of a code point.
[[nodiscard]] const CharacterKind* MakeBlock(char32_t character);

}  // namespace characters

// As KindOfCharacter.
[[nodiscard]] inline CharacterKind KnownKind(char32_t character) {
  using namespace characters;
  const CharacterKind* block = Blocks[character >> kBlockBits].load(std::memory_order_acquire);
  if (block == nullptr) [[unlikely]]
    block = MakeBlock(character);
  return block[character & (kBlockSize - 1)];
}
