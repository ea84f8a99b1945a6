#include "codes/characters.h"

#include <memory>

namespace characters {

std::atomic<const CharacterKind*> Blocks[(kLastCharacter + 1) >> kBlockBits];

const CharacterKind* MakeBlock(char32_t character) {
  auto made = std::make_unique<CharacterKind[]>(kBlockSize);
  const char32_t first = character & ~static_cast<char32_t>(kBlockSize - 1);
  for (char32_t i = 0; i < kBlockSize; ++i)
    made[i] = KindOfCharacter(first + i);
  const CharacterKind* known = nullptr;
  // Two threads may make the same block; the one that comes second throws its own away. Blocks live as long
  // as the program.
  if (!Blocks[character >> kBlockBits].compare_exchange_strong(known, made.get())) return known;
  return made.release();
}

}  // namespace characters
