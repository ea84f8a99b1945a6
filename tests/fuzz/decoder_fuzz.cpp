// Bytes of any kind through the decoders and the detection: every byte belongs to one character or to none,
// what was decoded encodes to its bytes, and where characters begin can be told from a few bytes around a
// place.
#include <algorithm>

#include "codes/characters.h"
#include "codes/decoders.h"
#include "codes/detection.h"
#include "tests/fuzz/fuzz_inputs.h"

namespace {

template <typename Code>
void Decode(const std::vector<std::uint8_t>& bytes) {
  const std::uint8_t* const begin = bytes.data();
  const std::uint8_t* const end = begin + bytes.size();
  const auto size = static_cast<std::int32_t>(bytes.size());
  for (std::int32_t at = 0; at < size;) {
    const Decoded next = Code::Decode(begin + at, end);
    FUZZ_CHECK(next.length >= 0 && next.length <= kLongestCharacter);
    FUZZ_CHECK(next.length != 0 || size - at < kLongestCharacter);
    FUZZ_CHECK(next.character != kNoCharacter || next.length == 0 || next.length == Code::kUnit);
    if (next.character != kNoCharacter) {
      FUZZ_CHECK(next.character <= kLastCharacter && (next.character & 0xFFFFF800) != 0xD800);
      FUZZ_CHECK(std::ranges::equal(
          Code::Encode(next.character), std::span(begin + at, static_cast<std::size_t>(next.length)),
          [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; }));
      static_cast<void>(KnownKind(next.character));
    }
    const std::int32_t behind = next.length == 0 ? size : at + next.length;
    // From a few bytes on, and of less than is there.
    for (std::int32_t inside = at; inside < (next.length == 0 ? at + 1 : behind); ++inside) {
      FUZZ_CHECK(CharacterStart<Code>(begin, size, inside) == at);
      const std::int32_t from = std::max(at - 2 * kLongestCharacter, 0);
      FUZZ_CHECK(from + CharacterStart<Code>(begin + from, size - from, inside - from) == at);
    }
    for (std::int32_t cut = at + 1; cut < behind; ++cut) {
      const Decoded less = Code::Decode(begin + at, begin + cut);
      FUZZ_CHECK(less.length == 0 || next.length == 0 || next.character == kNoCharacter);
    }
    at = behind;
  }
}

}  // namespace

void FuzzDecoder(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::uint8_t> bytes(data, data + size);
  Decode<Utf8>(bytes);
  Decode<Utf16Le>(bytes);
  Decode<Utf16Be>(bytes);
  for (const bool whole : {false, true}) {
    const FoundCode code = DetectCode(bytes, whole);
    FUZZ_CHECK(code == FoundCode::none || size >= 2);
  }
}
