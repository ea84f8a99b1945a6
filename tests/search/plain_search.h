// What a search must give, by the standard library's search over the whole content.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

inline bool PlainEqual(char a, char b, bool folds) {
  const auto small = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return folds ? small(a) == small(b) : a == b;
}

// The first place at or behind `from`, or -1.
inline std::int64_t PlainFind(const std::string& content, const std::string& key, bool folds,
                              std::int64_t from) {
  if (from > static_cast<std::int64_t>(content.size())) return -1;
  const auto hit = std::search(content.begin() + from, content.end(), key.begin(), key.end(),
                               [folds](char a, char b) { return PlainEqual(a, b, folds); });
  return hit == content.end() ? -1 : hit - content.begin();
}

inline std::vector<std::int64_t> PlainFindAll(const std::string& content, const std::string& key,
                                              bool folds) {
  std::vector<std::int64_t> hits;
  for (std::int64_t hit = PlainFind(content, key, folds, 0); hit >= 0;
       hit = PlainFind(content, key, folds, hit + 1)) {
    hits.push_back(hit);
  }
  return hits;
}

inline const std::uint8_t* Bytes(const std::string& text) {
  return reinterpret_cast<const std::uint8_t*>(text.data());
}
