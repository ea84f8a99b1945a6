// Finds a byte string in memory, letter case folded or exact. Knows no file and no window. The one idea: two
// or three bytes of the key, those that the data at hand holds least often together, are compared at many
// places at once over wide registers, and only where they stand is the whole key compared. The
// plain road, one place after the other, gives the same results and serves where there are no wide registers.
#pragma once

#include <cstdint>
#include <cstring>

// A key ready for scanning. Bytes of the key are not copied: they must outlive the record.
struct ByteKey {
  const std::uint8_t* bytes = nullptr;
  std::int32_t length = 0;  // at least 1
  bool foldsCase = false;   // A to Z equal a to z, on both sides; no other byte folds
  // Bits of each byte that do not count, and are set in `bytes`; null: all count. Not together with
  // foldsCase.
  const std::uint8_t* loose = nullptr;
  // Places within the key of the bytes that filter. Any serve; the choice is a matter of speed.
  std::int32_t first = 0;
  std::int32_t second = 0;
  std::int32_t third = 0;
  bool asksThird = false;  // two would stop the scan too often
};

[[nodiscard]] constexpr std::uint8_t FoldCase(std::uint8_t byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<std::uint8_t>(byte | 0x20) : byte;
}

// Makes a key that filters on its first, last and middle byte. `length` is at least 1.
[[nodiscard]] ByteKey MakeByteKey(const std::uint8_t* bytes, std::int32_t length, bool foldsCase);

// Chooses the bytes of the key that filter best on data like `sample`. Looks at its first few
// kilobytes; an empty sample changes nothing.
void ChooseFilter(ByteKey& key, const std::uint8_t* sample, std::int32_t length);

// Whether the key stands at `place`, where as many bytes as the key has must be readable.
[[nodiscard]] inline bool MatchesAt(const ByteKey& key, const std::uint8_t* place) {
  // Most places that pass the filter differ at once, without the cost of a call.
  if (key.loose != nullptr) {
    for (std::int32_t i = 0; i < key.length; ++i) {
      if ((place[i] | key.loose[i]) != key.bytes[i]) return false;
    }
    return true;
  }
  if (!key.foldsCase) {
    return place[0] == key.bytes[0] && place[key.length / 2] == key.bytes[key.length / 2] &&
           std::memcmp(place, key.bytes, static_cast<std::size_t>(key.length)) == 0;
  }
  for (std::int32_t i = 0; i < key.length; ++i) {
    if (FoldCase(place[i]) != FoldCase(key.bytes[i])) return false;
  }
  return true;
}

// The first offset in `buffer`, `from` or above, at which the whole key stands; -1 when there is none.
// `refused` grows each time that the first two bytes of the filter stopped the scan and there was no hit:
// when it grows fast, the filter suits the data badly.
[[nodiscard]] std::int32_t FindBytes(const ByteKey& key, const std::uint8_t* buffer, std::int32_t length,
                                     std::int32_t from, std::int32_t& refused);

// The two roads of FindBytes. The wide one is the plain one in a build without wide registers.
[[nodiscard]] std::int32_t FindBytesPlain(const ByteKey& key, const std::uint8_t* buffer, std::int32_t length,
                                          std::int32_t from, std::int32_t& refused);
[[nodiscard]] std::int32_t FindBytesWide(const ByteKey& key, const std::uint8_t* buffer, std::int32_t length,
                                         std::int32_t from, std::int32_t& refused);

// Whether this build has the wide road.
[[nodiscard]] bool HasWideScan();
