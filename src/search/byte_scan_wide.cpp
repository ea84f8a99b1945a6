// The wide road of the byte scan. This file is compiled once for each kind of register that the processor
// family has; the kind that the running processor offers is taken at the first call.
#include "search/byte_scan.h"

#include <cstddef>

#ifdef QUORL_WIDE_SCAN

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "search/byte_scan_wide.cpp"
#include <hwy/foreach_target.h>
// Must follow foreach_target.h.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace byte_scan {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

// At most 64 places at once, so that their outcome fits a 64-bit word.
using Lanes = hn::CappedTag<std::uint8_t, 64>;
using Vector = hn::Vec<Lanes>;

// What a byte of the filter must be, and the bits that are set on both sides before the compare: 0x20 makes a
// letter of either case the small one, and makes nothing else a letter.
struct FilterByte {
  const std::uint8_t* start;  // stands this byte there, the key may stand at offset 0
  std::uint8_t value;
  std::uint8_t caseBit;
};

HWY_INLINE FilterByte MakeFilterByte(const ByteKey& key, const std::uint8_t* buffer, std::int32_t place) {
  const std::uint8_t byte = key.bytes[place];
  if (key.loose != nullptr) return {buffer + place, byte, key.loose[place]};
  const std::uint8_t folded = FoldCase(byte);
  const bool letter = key.foldsCase && folded >= 'a' && folded <= 'z';
  return {buffer + place, letter ? folded : byte, static_cast<std::uint8_t>(letter ? 0x20 : 0)};
}

// Zero in each lane whose byte is the wanted one.
template <bool kFolds>
HWY_INLINE Vector Difference(const std::uint8_t* place, Vector value, Vector caseBit) {
  const Vector bytes = hn::LoadU(Lanes(), place);
  if constexpr (kFolds) {
    return hn::Xor(hn::Or(bytes, caseBit), value);
  } else {
    return hn::Xor(bytes, value);
  }
}

// The three bytes of the key that are looked for at many places at once.
struct Filter {
  FilterByte first;
  FilterByte second;
  FilterByte third;
};

// A bit for each of one register's places from `base` on at which all three bytes stand.
template <bool kFolds>
HWY_INLINE std::uint64_t Candidates(const Filter& filter, std::int32_t base) {
  const Lanes d;
  Vector difference = hn::Zero(d);
  for (const FilterByte* const byte : {&filter.first, &filter.second, &filter.third}) {
    difference = hn::Or(difference, Difference<kFolds>(byte->start + base, hn::Set(d, byte->value),
                                                       hn::Set(d, byte->caseBit)));
  }
  std::uint8_t bytes[8] = {};
  hn::StoreMaskBits(d, hn::Eq(difference, hn::Zero(d)), bytes);
  std::uint64_t bits = 0;
  for (int i = 0; i < 8; ++i)
    bits |= static_cast<std::uint64_t>(bytes[i]) << (8 * i);
  return bits;
}

// The first hit among the candidates of the places from `base` on; -1 when none is one.
HWY_INLINE std::int32_t FirstHit(const ByteKey& key, const std::uint8_t* buffer, std::int32_t base,
                                 std::uint64_t bits) {
  for (; bits != 0; bits &= bits - 1) {
    const std::int32_t place = base + static_cast<std::int32_t>(hwy::Num0BitsBelowLS1Bit_Nonzero64(bits));
    if (MatchesAt(key, buffer + place)) return place;
  }
  return -1;
}

// The first offset from `i` on, in steps of four registers, at which one of the places that these cover
// passes the filter, or from which fewer than four registers are left. A function of its own so that the loop
// has all the registers for itself.
template <bool kFolds, bool kThree>
HWY_NOINLINE std::int32_t SkipPlaces(const Filter& filter, std::int32_t i, std::int32_t places) {
  const Lanes d;
  const auto step = static_cast<std::int32_t>(hn::Lanes(d));
  const std::ptrdiff_t one = step;
  const Vector firstValue = hn::Set(d, filter.first.value);
  const Vector firstCase = hn::Set(d, filter.first.caseBit);
  const Vector secondValue = hn::Set(d, filter.second.value);
  const Vector secondCase = hn::Set(d, filter.second.caseBit);
  const Vector thirdValue = hn::Set(d, filter.third.value);
  const Vector thirdCase = hn::Set(d, filter.third.caseBit);
  for (; i <= places - 4 * step; i += 4 * step) {
    const std::uint8_t* const a = filter.first.start + i;
    const std::uint8_t* const b = filter.second.start + i;
    Vector v0 =
        hn::Or(Difference<kFolds>(a, firstValue, firstCase), Difference<kFolds>(b, secondValue, secondCase));
    Vector v1 = hn::Or(Difference<kFolds>(a + one, firstValue, firstCase),
                       Difference<kFolds>(b + one, secondValue, secondCase));
    Vector v2 = hn::Or(Difference<kFolds>(a + 2 * one, firstValue, firstCase),
                       Difference<kFolds>(b + 2 * one, secondValue, secondCase));
    Vector v3 = hn::Or(Difference<kFolds>(a + 3 * one, firstValue, firstCase),
                       Difference<kFolds>(b + 3 * one, secondValue, secondCase));
    if constexpr (kThree) {
      const std::uint8_t* const c = filter.third.start + i;
      v0 = hn::Or(v0, Difference<kFolds>(c, thirdValue, thirdCase));
      v1 = hn::Or(v1, Difference<kFolds>(c + one, thirdValue, thirdCase));
      v2 = hn::Or(v2, Difference<kFolds>(c + 2 * one, thirdValue, thirdCase));
      v3 = hn::Or(v3, Difference<kFolds>(c + 3 * one, thirdValue, thirdCase));
    }
    const Vector least = hn::Min(hn::Min(v0, v1), hn::Min(v2, v3));
    if (!hn::AllFalse(d, hn::Eq(least, hn::Zero(d)))) break;
  }
  return i;
}

template <bool kFolds>
HWY_INLINE std::int32_t Scan(const ByteKey& key, const std::uint8_t* buffer, std::int32_t length,
                             std::int32_t from, std::int32_t& refused) {
  const auto step = static_cast<std::int32_t>(hn::Lanes(Lanes()));
  const std::int32_t places = length - key.length + 1;  // offsets at which the key can stand
  if (places < step) return FindBytesPlain(key, buffer, length, from, refused);
  const Filter filter = {MakeFilterByte(key, buffer, key.first), MakeFilterByte(key, buffer, key.second),
                         MakeFilterByte(key, buffer, key.third)};
  std::int32_t i = from;
  // A register that straddles two cache lines costs two reads. So the first places come by themselves, up to
  // one from which the first byte's registers straddle none.
  const auto address = reinterpret_cast<std::uintptr_t>(filter.first.start + from);
  const auto crooked = static_cast<std::int32_t>(address % static_cast<std::uintptr_t>(step));
  if (crooked != 0 && places - from >= step) {
    const std::int32_t hit = FirstHit(key, buffer, from, Candidates<kFolds>(filter, from));
    if (hit >= 0) return hit;
    i += step - crooked;
  }
  for (;;) {
    i = key.asksThird ? SkipPlaces<kFolds, true>(filter, i, places)
                      : SkipPlaces<kFolds, false>(filter, i, places);
    if (i > places - 4 * step) break;
    // All four registers at once: which of them it was that stopped the loop cannot be foreseen, and a
    // processor that guesses pays for each guess.
    std::uint64_t bits[4];
    for (int k = 0; k < 4; ++k)
      bits[k] = Candidates<kFolds>(filter, i + k * step);
    if ((bits[0] | bits[1] | bits[2] | bits[3]) != 0) {
      for (int k = 0; k < 4; ++k) {
        const std::int32_t hit = FirstHit(key, buffer, i + k * step, bits[k]);
        if (hit >= 0) return hit;
      }
    }
    ++refused;
    i += 4 * step;
  }
  for (; i < places; i += step) {
    // The last places are taken together with some before them, which have been tried.
    const std::int32_t base = i < places - step ? i : places - step;
    const std::int32_t hit = FirstHit(key, buffer, i, Candidates<kFolds>(filter, base) >> (i - base));
    if (hit >= 0) return hit;
  }
  return -1;
}

std::int32_t Find(const ByteKey& key, const std::uint8_t* buffer, std::int32_t length, std::int32_t from,
                  std::int32_t& refused) {
  return key.foldsCase || key.loose != nullptr ? Scan<true>(key, buffer, length, from, refused)
                                               : Scan<false>(key, buffer, length, from, refused);
}

}  // namespace HWY_NAMESPACE
}  // namespace byte_scan
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace byte_scan {
namespace {

HWY_EXPORT(Find);

std::int32_t FindWithBestRegisters(const ByteKey& key, const std::uint8_t* buffer, std::int32_t length,
                                   std::int32_t from, std::int32_t& refused) {
  return HWY_DYNAMIC_DISPATCH(Find)(key, buffer, length, from, refused);
}

}  // namespace
}  // namespace byte_scan

std::int32_t FindBytesWide(const ByteKey& key, const std::uint8_t* buffer, std::int32_t length,
                           std::int32_t from, std::int32_t& refused) {
  return byte_scan::FindWithBestRegisters(key, buffer, length, from, refused);
}

bool HasWideScan() {
  return true;
}
#endif

#else

std::int32_t FindBytesWide(const ByteKey& key, const std::uint8_t* buffer, std::int32_t length,
                           std::int32_t from, std::int32_t& refused) {
  return FindBytesPlain(key, buffer, length, from, refused);
}

bool HasWideScan() {
  return false;
}

#endif
