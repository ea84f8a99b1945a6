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

}  // namespace platform_qt
