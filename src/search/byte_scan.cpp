#include "search/byte_scan.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <functional>
#include <utility>

namespace {

// A sample of this size tells common pairs of bytes from rare ones, and costs no more than some slices.
constexpr std::int32_t kSampleBytes = 4096;
constexpr std::size_t kSampleWords = kSampleBytes / 64;
constexpr std::int32_t kRareBytes = 6;       // bytes of the key whose pairs are looked at
constexpr std::int32_t kLongestChosen = 64;  // longer keys keep the filter that they have

std::uint8_t Seen(const ByteKey& key, std::uint8_t byte) {
  return key.foldsCase ? FoldCase(byte) : byte;
}

std::uint8_t LooseBits(const ByteKey& key, std::int32_t place) {
  return key.loose != nullptr ? key.loose[place] : std::uint8_t{0};
}

// The places of a sample at which one byte of the key stands where a hit would have it: a bit for each, in an
// order that is the same for all sets.
using PlaceSet = std::array<std::uint64_t, kSampleWords>;

PlaceSet PlacesOf(std::uint8_t byte, std::uint8_t loose, const std::uint8_t* sample, std::int32_t places) {
  std::array<std::uint8_t, kSampleBytes> stands{};
  std::transform(sample, sample + places, stands.begin(), [byte, loose](std::uint8_t other) {
    return static_cast<std::uint8_t>((other | loose) == byte ? 1 : 0);
  });
  PlaceSet set{};
  for (std::size_t i = 0; i < kSampleBytes / 8; ++i) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, &stands[8 * i], 8);
    // The product has the eight lowest bits of the bytes side by side at its top.
    set[i / 8] |= (eight * 0x0102040810204080u) >> 56 << (8 * (i % 8));
  }
  return set;
}

PlaceSet Common(const PlaceSet& a, const PlaceSet& b) {
  PlaceSet common;
  std::transform(a.begin(), a.end(), b.begin(), common.begin(), std::bit_and<>());
  return common;
}

std::int32_t CountCommon(const PlaceSet& a, const PlaceSet& b) {
  std::int32_t count = 0;
  for (std::size_t i = 0; i < kSampleWords; ++i)
    count += std::popcount(a[i] & b[i]);
  return count;
}

}  // namespace

ByteKey MakeByteKey(const std::uint8_t* bytes, std::int32_t length, bool foldsCase) {
  assert(length >= 1);
  return {bytes, length, foldsCase, nullptr, 0, length - 1, length / 2};
}

void ChooseFilter(ByteKey& key, const std::uint8_t* sample, std::int32_t length) {
  length = std::min(length, kSampleBytes);
  const std::int32_t places = length - key.length + 1;
  if (key.length < 2 || key.length > kLongestChosen || places < 1) return;

  std::array<std::uint8_t, kSampleBytes> seen;
  std::transform(sample, sample + length, seen.begin(),
                 [&key](std::uint8_t byte) { return Seen(key, byte); });
  std::array<PlaceSet, kLongestChosen> sets;
  const auto setOf = [&sets](std::int32_t place) -> PlaceSet& {
    return sets[static_cast<std::size_t>(place)];
  };
  for (std::int32_t i = 0; i < key.length; ++i)
    setOf(i) = PlacesOf(Seen(key, key.bytes[i]), LooseBits(key, i), &seen[i], places);

  // The rarest bytes of the key, rarest first. One of them is always in a good pair.
  std::array<std::int32_t, kLongestChosen> alone{};
  std::array<std::int32_t, kLongestChosen> order{};
  for (std::int32_t i = 0; i < key.length; ++i) {
    order[static_cast<std::size_t>(i)] = i;
    alone[static_cast<std::size_t>(i)] = CountCommon(setOf(i), setOf(i));
  }
  const std::int32_t rare = std::min(key.length, kRareBytes);
  std::partial_sort(order.begin(), order.begin() + rare, order.begin() + key.length,
                    [&](std::int32_t i, std::int32_t j) {
                      return alone[static_cast<std::size_t>(i)] < alone[static_cast<std::size_t>(j)];
                    });

  // Counted together, since letters keep company: two rare bytes may well stand together wherever they stand.
  // Of those that are equally rare together, the one that is rarer alone.
  const auto rarity = [&](const PlaceSet& others, std::int32_t place) {
    return std::pair(CountCommon(others, setOf(place)), alone[static_cast<std::size_t>(place)]);
  };
  auto least = std::pair(places + 1, 0);
  for (std::int32_t r = 0; r < rare; ++r) {
    const std::int32_t i = order[static_cast<std::size_t>(r)];
    for (std::int32_t j = 0; j < key.length; ++j) {
      if (j == i || rarity(setOf(i), j) >= least) continue;
      least = rarity(setOf(i), j);
      key.first = std::min(i, j);
      key.second = std::max(i, j);
    }
  }
  const PlaceSet both = Common(setOf(key.first), setOf(key.second));
  auto leastOfThree = std::pair(places + 1, 0);
  for (std::int32_t i = 0; i < key.length; ++i) {
    if ((key.length > 2 && (i == key.first || i == key.second)) || rarity(both, i) >= leastOfThree) continue;
    leastOfThree = rarity(both, i);
    key.third = i;
  }
  // One stop in a sample is eight in a slice, and they cost as much as asking everywhere.
  key.asksThird = leastOfThree.first < least.first;
}

std::int32_t FindBytesPlain(const ByteKey& key, const std::uint8_t* buffer, std::int32_t length,
                            std::int32_t from, std::int32_t& refused) {
  const std::uint8_t first = Seen(key, key.bytes[key.first]);
  const std::uint8_t second = Seen(key, key.bytes[key.second]);
  const std::uint8_t looseFirst = LooseBits(key, key.first);
  const std::uint8_t looseSecond = LooseBits(key, key.second);
  for (std::int32_t i = from; i <= length - key.length; ++i) {
    if ((Seen(key, buffer[i + key.first]) | looseFirst) != first) continue;
    if ((Seen(key, buffer[i + key.second]) | looseSecond) != second) continue;
    if (MatchesAt(key, buffer + i)) return i;
    ++refused;
  }
  return -1;
}

std::int32_t FindBytes(const ByteKey& key, const std::uint8_t* buffer, std::int32_t length, std::int32_t from,
                       std::int32_t& refused) {
  return FindBytesWide(key, buffer, length, from, refused);
}
