#include "platform/qt/drawing/tile_cache.h"

#include <algorithm>

namespace platform_qt {

TileCache::Set& TileCache::SetFor(std::size_t pixelsOfTile, Pixel text, Pixel ground) {
  ++uses_;
  const auto fits = [&](const Set& set) {
    return set.text == text && set.ground == ground && !set.pixels.empty();
  };
  if (!fits(sets_[last_])) {
    auto found = std::find_if(sets_.begin(), sets_.end(), fits);
    if (found == sets_.end()) {
      found = std::min_element(sets_.begin(), sets_.end(),
                               [](const Set& a, const Set& b) { return a.lastUse < b.lastUse; });
      found->text = text;
      found->ground = ground;
      found->drawn.reset();
      found->pixels.resize(256 * pixelsOfTile);
    }
    last_ = static_cast<std::size_t>(found - sets_.begin());
  }
  sets_[last_].lastUse = uses_;
  return sets_[last_];
}

std::size_t OtherTiles::Hash::operator()(const Key& key) const {
  std::uint64_t hash = key.content.base;
  const auto mix = [&hash](std::uint64_t value) { hash = (hash ^ value) * 0x9E3779B97F4A7C15U; };
  for (const char32_t mark : key.content.marks)
    mix(mark);
  mix(std::uint64_t{key.text} << 32 | key.ground);
  mix(static_cast<std::uint64_t>(key.columns));
  return static_cast<std::size_t>(hash ^ hash >> 32);
}

const OtherTiles::Tile* OtherTiles::Find(const Key& key) {
  const auto place = places_.find(key);
  if (place == places_.end()) {
    return nullptr;
  }
  tiles_.splice(tiles_.begin(), tiles_, place->second);
  return &tiles_.front();
}

const OtherTiles::Tile& OtherTiles::Keep(Tile tile) {
  const auto size = [](const Tile& one) { return sizeof one + one.pixels.size() * sizeof(Pixel); };
  bytes_ += size(tile);
  tiles_.push_front(std::move(tile));
  places_[tiles_.front().key] = tiles_.begin();
  while (bytes_ > kMostBytes && tiles_.size() > 1) {
    bytes_ -= size(tiles_.back());
    places_.erase(tiles_.back().key);
    tiles_.pop_back();
  }
  return tiles_.front();
}

}  // namespace platform_qt
