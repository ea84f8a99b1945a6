// A text that is looked for in a code of several bytes a character: at places where characters begin, and,
// without case, in each form that Unicode's simple case folding (CaseFolding.txt, C and S) makes equal. The
// one idea: the byte scan looks for the longest part of the key whose forms all have the same length, without
// the bits in which they differ; where that part stands, the characters around it are compared one by one.
// Knows no file.
#pragma once

#include <array>
#include <vector>

#include "engine/view_records.h"
#include "search/byte_scan.h"

class TextKey {
 public:
  // `code`: the bit of VO_UNICODE. A form that would make a hit longer than `mostBytes` does not count.
  TextKey(const std::uint8_t* bytes, std::int32_t length, ViewOptions code, bool foldsCase,
          std::int32_t mostBytes);
  TextKey(const TextKey&) = delete;
  TextKey& operator=(const TextKey&) = delete;

  // What the scan looks for, by the place of its first byte. Null: any place at which MayBeginAt.
  [[nodiscard]] const ByteKey* Anchor() const { return anchorBytes_.empty() ? nullptr : &anchor_; }
  [[nodiscard]] bool MayBeginAt(std::uint8_t byte) const { return begins_[byte]; }

  // The most bytes of a hit in front of the anchor, and behind its first byte.
  [[nodiscard]] std::int32_t MostBefore() const { return before_; }
  [[nodiscard]] std::int32_t MostBehind() const { return behind_; }

  struct Hit {
    std::int32_t start, end;  // indexes
  };
  // Whether the whole key stands in the bytes with its anchor at index `place`.
  [[nodiscard]] bool StandsAt(const std::uint8_t* bytes, std::int32_t size, std::int32_t place,
                              Hit& hit) const;

 private:
  struct Form {
    std::array<std::uint8_t, 4> bytes;
    std::int32_t length;
  };
  using Character = std::vector<Form>;  // its forms; the one typed is the first

  template <typename Code>
  void TakeCharacters(const std::uint8_t* bytes, std::int32_t length, bool foldsCase);
  void ChooseAnchor();

  std::vector<Character> characters_;
  std::size_t anchorFrom_ = 0;  // the first character of the anchor
  std::vector<std::uint8_t> anchorBytes_, loose_;
  ByteKey anchor_;
  std::array<bool, 256> begins_{};
  std::int32_t before_ = 0;
  std::int32_t behind_ = 0;
};
