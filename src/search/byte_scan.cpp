#include "search/byte_scan.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace {

constexpr std::int32_t kSampleBytes = 4096;  // enough to tell common bytes from rare ones
constexpr std::int32_t kPairSamples = 256;   // places of the rarest byte at which its company is looked at

std::uint8_t Seen(const ByteKey& key, std::uint8_t byte) {
  return key.foldsCase ? FoldCase(byte) : byte;
}

// The place in the key of the byte that the sample holds least often.
std::int32_t RarestPlace(const ByteKey& key, const std::uint8_t* sample, std::int32_t length) {
  std::array<std::int32_t, 256> counts{};
  for (std::int32_t i = 0; i < length; ++i)
    ++counts[Seen(key, sample[i])];
  std::int32_t rarest = 0;
  for (std::int32_t i = 1; i < key.length; ++i) {
    if (counts[Seen(key, key.bytes[i])] < counts[Seen(key, key.bytes[rarest])]) rarest = i;
  }
  return rarest;
}

}  // namespace

ByteKey MakeByteKey(const std::uint8_t* bytes, std::int32_t length, bool foldsCase) {
  assert(length >= 1);
  return {bytes, length, foldsCase, 0, length - 1};
}

void ChooseFilter(ByteKey& key, const std::uint8_t* sample, std::int32_t length) {
  // Keys of a length that no dialog allows keep the filter that they have.
  constexpr std::int32_t kLongestKey = 64;
  length = std::min(length, kSampleBytes);
  if (key.length < 2 || key.length > kLongestKey || length < key.length) return;

  const std::int32_t rarest = RarestPlace(key, sample, length);
  // Letters keep company: the second rarest byte may well stand wherever the rarest does. So the second byte
  // is the one that is missed most often at the places where the first one stands.
  std::array<std::int32_t, kLongestKey> together{};
  std::int32_t places = 0;
  for (std::int32_t i = rarest; i + key.length - rarest <= length && places < kPairSamples; ++i) {
    if (Seen(key, sample[i]) != Seen(key, key.bytes[rarest])) continue;
    ++places;
    const std::uint8_t* const window = sample + i - rarest;
    for (std::int32_t j = 0; j < key.length; ++j) {
      together[static_cast<std::size_t>(j)] += Seen(key, window[j]) == Seen(key, key.bytes[j]) ? 1 : 0;
    }
  }
  std::int32_t partner = rarest == 0 ? key.length - 1 : 0;
  for (std::int32_t j = 0; j < key.length; ++j) {
    if (j != rarest && together[static_cast<std::size_t>(j)] < together[static_cast<std::size_t>(partner)]) {
      partner = j;
    }
  }
  key.first = std::min(rarest, partner);
  key.second = std::max(rarest, partner);
}

std::int32_t FindBytesPlain(const ByteKey& key, const std::uint8_t* buffer, std::int32_t length,
                            std::int32_t from, std::int32_t& refused) {
  const std::uint8_t first = Seen(key, key.bytes[key.first]);
  const std::uint8_t second = Seen(key, key.bytes[key.second]);
  for (std::int32_t i = from; i <= length - key.length; ++i) {
    if (Seen(key, buffer[i + key.first]) != first || Seen(key, buffer[i + key.second]) != second) continue;
    if (MatchesAt(key, buffer + i)) return i;
    ++refused;
  }
  return -1;
}

std::int32_t FindBytes(const ByteKey& key, const std::uint8_t* buffer, std::int32_t length, std::int32_t from,
                       std::int32_t& refused) {
  return FindBytesWide(key, buffer, length, from, refused);
}
