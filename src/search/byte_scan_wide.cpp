// The wide road of the byte scan. This file is compiled once for each kind of register that the processor
// family has; the kind that the running processor offers is taken at the first call.
#include "search/byte_scan.h"

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

// What a byte of the filter must be, and the bit that is set on both sides before the compare: 0x20 makes a
// letter of either case the small one, and makes nothing else a letter.
struct FilterByte {
  std::uint8_t value;
  std::uint8_t caseBit;
};

HWY_INLINE FilterByte MakeFilterByte(const ByteKey& key, std::int32_t place) {
  const std::uint8_t byte = key.bytes[place];
  const std::uint8_t folded = FoldCase(byte);
  const bool letter = key.foldsCase && folded >= 'a' && folded <= 'z';
  return letter ? FilterByte{folded, 0x20} : FilterByte{byte, 0};
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

// A bit for each lane that is zero.
HWY_INLINE std::uint64_t ZeroLanes(Vector lanes) {
  const Lanes d;
  std::uint8_t bytes[8] = {};
  hn::StoreMaskBits(d, hn::Eq(lanes, hn::Zero(d)), bytes);
  std::uint64_t bits = 0;
  for (int i = 0; i < 8; ++i)
    bits |= static_cast<std::uint64_t>(bytes[i]) << (8 * i);
  return bits;
}

// The first hit among the candidates of the places from `base` on; -1 when none is one.
HWY_INLINE std::int32_t FirstHit(const ByteKey& key, const std::uint8_t* buffer, std::int32_t base,
                                 std::uint64_t bits, std::int32_t& refused) {
  for (; bits != 0; bits &= bits - 1) {
    const std::int32_t place = base + static_cast<std::int32_t>(hwy::Num0BitsBelowLS1Bit_Nonzero64(bits));
    if (MatchesAt(key, buffer + place)) return place;
    ++refused;
  }
  return -1;
}

// The first offset from `from` on, in steps of four registers, at which one of the places that these cover
// passes the filter; or the first offset from which there are fewer than `places` for four registers. A
// function of its own so that the loop has all registers for itself.
template <bool kFolds>
HWY_NOINLINE std::int32_t SkipPlaces(const ByteKey& key, const std::uint8_t* buffer, std::int32_t from,
                                     std::int32_t places) {
  const Lanes d;
  const auto step = static_cast<std::int32_t>(hn::Lanes(d));
  const FilterByte first = MakeFilterByte(key, key.first);
  const FilterByte second = MakeFilterByte(key, key.second);
  const Vector firstValue = hn::Set(d, first.value);
  const Vector firstCase = hn::Set(d, first.caseBit);
  const Vector secondValue = hn::Set(d, second.value);
  const Vector secondCase = hn::Set(d, second.caseBit);
  const std::uint8_t* a = buffer + from + key.first;
  const std::uint8_t* b = buffer + from + key.second;

  std::int32_t i = from;
  for (; i <= places - 4 * step; i += 4 * step) {
    const Vector v0 =
        hn::Or(Difference<kFolds>(a, firstValue, firstCase), Difference<kFolds>(b, secondValue, secondCase));
    const Vector v1 = hn::Or(Difference<kFolds>(a + step, firstValue, firstCase),
                             Difference<kFolds>(b + step, secondValue, secondCase));
    const Vector v2 = hn::Or(Difference<kFolds>(a + 2 * step, firstValue, firstCase),
                             Difference<kFolds>(b + 2 * step, secondValue, secondCase));
    const Vector v3 = hn::Or(Difference<kFolds>(a + 3 * step, firstValue, firstCase),
                             Difference<kFolds>(b + 3 * step, secondValue, secondCase));
    const Vector least = hn::Min(hn::Min(v0, v1), hn::Min(v2, v3));
    if (!hn::AllFalse(d, hn::Eq(least, hn::Zero(d)))) break;
    a += 4 * step;
    b += 4 * step;
  }
  return i;
}

template <bool kFolds>
HWY_INLINE std::int32_t Scan(const ByteKey& key, const std::uint8_t* buffer, std::int32_t length,
                             std::int32_t from, std::int32_t& refused) {
  const Lanes d;
  const auto step = static_cast<std::int32_t>(hn::Lanes(d));
  const std::int32_t places = length - key.length + 1;  // offsets at which the key can stand
  if (places < step) return FindBytesPlain(key, buffer, length, from, refused);
  const FilterByte first = MakeFilterByte(key, key.first);
  const FilterByte second = MakeFilterByte(key, key.second);
  const Vector firstValue = hn::Set(d, first.value);
  const Vector firstCase = hn::Set(d, first.caseBit);
  const Vector secondValue = hn::Set(d, second.value);
  const Vector secondCase = hn::Set(d, second.caseBit);

  for (std::int32_t i = from; i < places;) {
    i = SkipPlaces<kFolds>(key, buffer, i, places);
    for (int k = 0; k < 4 && i < places; ++k, i += step) {
      // The last places are taken together with some before them, whose outcome is dropped.
      const std::int32_t base = i < places - step ? i : places - step;
      const Vector v = hn::Or(Difference<kFolds>(buffer + base + key.first, firstValue, firstCase),
                              Difference<kFolds>(buffer + base + key.second, secondValue, secondCase));
      const std::int32_t hit = FirstHit(key, buffer, i, ZeroLanes(v) >> (i - base), refused);
      if (hit >= 0) return hit;
    }
  }
  return -1;
}

std::int32_t Find(const ByteKey& key, const std::uint8_t* buffer, std::int32_t length, std::int32_t from,
                  std::int32_t& refused) {
  return key.foldsCase ? Scan<true>(key, buffer, length, from, refused)
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
