#include "settings/label_text.h"

#include <vector>

namespace {

// Byte offsets of the characters of UTF-8 text.
std::vector<std::size_t> Characters(const std::string& text) {
  std::vector<std::size_t> offsets;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) offsets.push_back(i);
  }
  return offsets;
}

}  // namespace

std::string ShortenInMiddle(const std::string& text, std::size_t most) {
  const std::vector<std::size_t> characters = Characters(text);
  if (characters.size() <= most) return text;
  const std::size_t head = most / 2;
  const std::size_t tail = most - head - 3;
  return text.substr(0, characters[head]) + "..." + text.substr(characters[characters.size() - tail]);
}

std::string LiteralLabel(const std::string& text) {
  std::string label;
  for (const char character : text) {
    label += character;
    if (character == '&') label += character;
  }
  return label;
}
