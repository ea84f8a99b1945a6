// Prints what the decoders make of standard input: `decoding utf8|utf16le|utf16be`, a line for each character
// with its offset and its number in hex, or a dash. Compared by tests/codes/judge/judge with another decoder.
#include <cstdio>
#include <iterator>
#include <string>
#include <vector>

#include "codes/decoders.h"

template <typename Code>
void Print(const std::vector<std::uint8_t>& bytes) {
  const std::uint8_t* const end = bytes.data() + bytes.size();
  for (const std::uint8_t* at = bytes.data(); at < end;) {
    Decoded next = Code::Decode(at, end);
    if (next.length == 0) next = {kNoCharacter, Code::kUnit};
    const long offset = at - bytes.data();
    if (next.character == kNoCharacter) {
      std::printf("%ld -\n", offset);
    } else {
      std::printf("%ld %lx\n", offset, static_cast<unsigned long>(next.character));
    }
    at += next.length;
  }
}

int main(int argc, char** argv) {
  const std::string code = argc > 1 ? argv[1] : "";
  std::vector<std::uint8_t> bytes;
  for (int byte; (byte = std::getchar()) != EOF;)
    bytes.push_back(static_cast<std::uint8_t>(byte));
  if (code == "utf8") Print<Utf8>(bytes);
  if (code == "utf16le") Print<Utf16Le>(bytes);
  if (code == "utf16be") Print<Utf16Be>(bytes);
  return 0;
}
