#include "platform/posix/command_words.h"

#include <cassert>
#include <utility>

#include "platform/program.h"

namespace {

std::vector<std::string>& Words() {
  static std::vector<std::string> words;
  return words;
}

}  // namespace

void StoreCommandWords(std::vector<std::string> words) {
  Words() = std::move(words);
}

int CommandWordCount() {
  return static_cast<int>(Words().size());
}

const char* CommandWord(int index) {
  assert(index >= 0 && index < CommandWordCount());
  return Words()[static_cast<std::size_t>(index)].c_str();
}
