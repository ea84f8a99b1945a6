#include "search/text_key.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <unordered_map>

#include "codes/decoders.h"
#include "engine/text_bytes.h"
#include "platform/unicode.h"

namespace {

// Cased characters stand in the first two planes only.
constexpr char32_t kBehindCased = 0x20000;

// The characters that equal each other without case, by the one that they fold to.
const std::unordered_map<char32_t, std::u32string>& FoldedForms() {
  static const auto forms = [] {
    std::unordered_map<char32_t, std::u32string> made;
    for (char32_t character = 0; character < kBehindCased; ++character) {
      const char32_t folded = SimpleFold(character);
      if (folded == character) continue;
      std::u32string& all = made[folded];
      if (all.empty()) all = folded;
      all += character;
    }
    return made;
  }();
  return forms;
}

std::u32string FormsOf(char32_t character, bool foldsCase) {
  std::u32string forms(1, character);
  if (!foldsCase) return forms;
  const auto all = FoldedForms().find(SimpleFold(character));
  if (all == FoldedForms().end()) return forms;
  for (const char32_t form : all->second)
    if (form != character) forms += form;
  return forms;
}

}  // namespace

template <typename Code>
void TextKey::TakeCharacters(const std::uint8_t* bytes, std::int32_t length, bool foldsCase) {
  for (std::int32_t at = 0; at < length;) {
    const Decoded next = Code::Decode(bytes + at, bytes + length);
    const std::int32_t taken = std::max(next.length, 1);
    Form typed{{}, taken};
    std::copy_n(bytes + at, taken, typed.bytes.begin());
    Character character{typed};
    if (next.character != kNoCharacter) {
      for (const char32_t form : FormsOf(next.character, foldsCase).substr(1)) {
        const std::string coded = Code::Encode(form);
        Form other{{}, static_cast<std::int32_t>(coded.size())};
        coded.copy(reinterpret_cast<char*>(other.bytes.data()), other.bytes.size());
        character.push_back(other);
      }
    }
    characters_.push_back(std::move(character));
    at += taken;
  }
}

TextKey::TextKey(const std::uint8_t* bytes, std::int32_t length, ViewOptions code, bool foldsCase,
                 std::int32_t mostBytes) {
  if ((code & VO_UTF8) != 0) TakeCharacters<Utf8>(bytes, length, foldsCase);
  if ((code & VO_UTF16LE) != 0) TakeCharacters<Utf16Le>(bytes, length, foldsCase);
  if ((code & VO_UTF16BE) != 0) TakeCharacters<Utf16Be>(bytes, length, foldsCase);
  std::int32_t most = length;
  for (Character& character : characters_) {
    const std::int32_t own = character.front().length;
    std::int32_t longest = std::ranges::max(character, {}, &Form::length).length;
    if (most + longest - own > mostBytes) {
      std::erase_if(character, [own](const Form& form) { return form.length > own; });
      longest = own;
    }
    most += longest - own;
  }
  for (const Form& form : characters_.front())
    begins_[form.bytes[0]] = true;
  ChooseAnchor();
}

void TextKey::ChooseAnchor() {
  const auto isSteady = [](const Character& character) {
    return std::ranges::all_of(character,
                               [&](const Form& form) { return form.length == character[0].length; });
  };
  std::size_t end = 0;
  std::int32_t longest = 0;
  for (std::size_t from = 0; from < characters_.size();) {
    std::size_t behind = from;
    std::int32_t bytes = 0;
    for (; behind < characters_.size() && isSteady(characters_[behind]); ++behind)
      bytes += characters_[behind][0].length;
    if (bytes > longest) longest = bytes, anchorFrom_ = from, end = behind;
    from = behind + 1;
  }
  for (std::size_t i = anchorFrom_; i < end; ++i) {
    const Character& character = characters_[i];
    for (std::size_t k = 0; k < static_cast<std::size_t>(character[0].length); ++k) {
      std::uint8_t differs = 0;
      for (const Form& form : character)
        differs |= static_cast<std::uint8_t>(form.bytes[k] ^ character[0].bytes[k]);
      anchorBytes_.push_back(character[0].bytes[k] | differs);
      loose_.push_back(differs);
    }
  }
  for (std::size_t i = 0; i < characters_.size(); ++i) {
    const std::int32_t most = std::ranges::max(characters_[i], {}, &Form::length).length;
    (i < anchorFrom_ ? before_ : behind_) += most;
  }
  --behind_;
  if (anchorBytes_.empty()) return;
  anchor_ = MakeByteKey(anchorBytes_.data(), longest, false);
  anchor_.loose = loose_.data();
}

bool TextKey::StandsAt(const std::uint8_t* bytes, std::int32_t size, std::int32_t place, Hit& hit) const {
  // No form is the end of another, nor its beginning, so that one at most stands.
  hit = {place, place};
  for (std::size_t i = anchorFrom_; i > 0; --i) {
    const Character& character = characters_[i - 1];
    const auto form = std::ranges::find_if(character, [&](const Form& one) {
      const std::int32_t from = hit.start - one.length;
      return from >= 0 &&
             std::memcmp(bytes + from, one.bytes.data(), static_cast<std::size_t>(one.length)) == 0;
    });
    if (form == character.end()) return false;
    hit.start -= form->length;
  }
  for (std::size_t i = anchorFrom_; i < characters_.size(); ++i) {
    const Character& character = characters_[i];
    const auto form = std::ranges::find_if(character, [&](const Form& one) {
      return one.length <= size - hit.end &&
             std::memcmp(bytes + hit.end, one.bytes.data(), static_cast<std::size_t>(one.length)) == 0;
    });
    if (form == character.end()) return false;
    hit.end += form->length;
  }
  return true;
}
