#include "codes/detection.h"

#include <algorithm>
#include <array>

#include "codes/decoders.h"

namespace {

template <std::size_t count>
bool BeginsWith(std::span<const std::uint8_t> bytes, const std::array<std::uint8_t, count>& mark) {
  return bytes.size() >= count && std::ranges::equal(bytes.first(count), mark);
}

bool IsUtf8BeyondAscii(std::span<const std::uint8_t> bytes, bool whole) {
  bool beyond = false;
  const std::uint8_t* const end = bytes.data() + bytes.size();
  for (const std::uint8_t* at = bytes.data(); at < end;) {
    const Decoded next = Utf8::Decode(at, end);
    if (next.length == 0) return beyond && !whole;
    if (next.character == kNoCharacter) return false;
    beyond = beyond || next.character >= 0x80;
    at += next.length;
  }
  return beyond;
}

bool IsLayout(char32_t character) {
  return character >= 9 && character <= 13;
}

template <typename Code>
bool IsUtf16(std::span<const std::uint8_t> bytes, bool whole) {
  constexpr std::size_t kFewestUnits = 2;
  constexpr std::size_t kFewestLatin = 8;    // one among so many units
  constexpr std::size_t kMostControls = 64;  // the same
  const std::size_t units = bytes.size() / Code::kUnit;
  if (units < kFewestUnits || (whole && bytes.size() % Code::kUnit != 0)) return false;
  std::size_t latin = 0;
  std::size_t swapped = 0;  // that would be Latin with their bytes in the other order
  std::size_t controls = 0;
  const std::uint8_t* const end = bytes.data() + units * Code::kUnit;
  for (const std::uint8_t* at = bytes.data(); at < end;) {
    const Decoded next = Code::Decode(at, end);
    if (next.length == 0) break;  // a pair that the slice cuts
    if (next.character == kNoCharacter || next.character == 0) return false;
    if (next.character < 0x10000 && (next.character & 0xFF) == 0) ++swapped;
    if (next.character <= 0xFF) ++latin;
    if (next.character < 0x20 && !IsLayout(next.character)) ++controls;
    at += next.length;
  }
  return kFewestLatin * latin >= units && 4 * swapped <= latin && kMostControls * controls <= units;
}

}  // namespace

FoundCode DetectCode(std::span<const std::uint8_t> bytes, bool whole) {
  if (BeginsWith(bytes, std::array<std::uint8_t, 3>{0xEF, 0xBB, 0xBF})) return FoundCode::utf8;
  if (BeginsWith(bytes, std::array<std::uint8_t, 2>{0xFF, 0xFE})) return FoundCode::utf16le;
  if (BeginsWith(bytes, std::array<std::uint8_t, 2>{0xFE, 0xFF})) return FoundCode::utf16be;
  if (IsUtf8BeyondAscii(bytes, whole)) return FoundCode::utf8;
  if (IsUtf16<Utf16Le>(bytes, whole)) return FoundCode::utf16le;
  if (IsUtf16<Utf16Be>(bytes, whole)) return FoundCode::utf16be;
  return FoundCode::none;
}
