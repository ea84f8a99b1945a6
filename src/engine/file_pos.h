// The one type of a place in a file: a byte offset, as wide as the LPARAM that carries it through the
// messages, so that a file may have any size the system can hold. Counts within a line and indices of
// lines have narrower types of their own; `int` never holds a file quantity.
//
// A place is no count. Only constants become places by themselves; whatever was counted or read becomes
// one by `FilePos::At`, and gives its number by `Offset`. A place and a count make a place, two places
// are a count apart, and two places are never added.
#pragma once

#include <concepts>
#include <cstdint>

// Bytes between two places of a file. Negative: backward.
using ByteCount = std::intptr_t;

class FilePos {
 public:
  constexpr FilePos() = default;

  template <std::integral Constant>
  consteval FilePos(Constant offset) : offset_(offset) {}

  // The place `offset` bytes behind the start of the file.
  template <std::integral Number>
  static constexpr FilePos At(Number offset) {
    FilePos place;
    place.offset_ = static_cast<ByteCount>(offset);
    return place;
  }

  [[nodiscard]] constexpr ByteCount Offset() const { return offset_; }

  friend constexpr bool operator==(FilePos, FilePos) = default;
  friend constexpr bool operator<(FilePos a, FilePos b) { return a.offset_ < b.offset_; }
  friend constexpr bool operator>(FilePos a, FilePos b) { return b < a; }
  friend constexpr bool operator<=(FilePos a, FilePos b) { return !(b < a); }
  friend constexpr bool operator>=(FilePos a, FilePos b) { return !(a < b); }

  constexpr FilePos& operator+=(ByteCount count) {
    offset_ += count;
    return *this;
  }
  constexpr FilePos& operator-=(ByteCount count) {
    offset_ -= count;
    return *this;
  }
  constexpr FilePos& operator++() { return *this += 1; }
  constexpr FilePos& operator--() { return *this -= 1; }
  template <std::integral Count>
  friend constexpr FilePos operator+(FilePos place, Count count) {
    return At(place.offset_ + static_cast<ByteCount>(count));
  }
  template <std::integral Count>
  friend constexpr FilePos operator-(FilePos place, Count count) {
    return At(place.offset_ - static_cast<ByteCount>(count));
  }
  friend constexpr ByteCount operator-(FilePos place, FilePos from) { return place.offset_ - from.offset_; }

 private:
  ByteCount offset_ = 0;
};

// No place. Arguments and fields that name a position hold it for "none".
inline constexpr FilePos kNoPosition = -1;

// Behind every place of every file: what the sentinel of a tag list holds.
inline constexpr FilePos kBehindEveryPosition = INTPTR_MAX;
