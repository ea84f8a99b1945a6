#include "platform/unicode.h"

#include <utf8proc.h>

namespace {

constexpr char32_t kSoftHyphen = 0xAD;

bool IsNoncharacter(char32_t character) {
  return (character & 0xFFFE) == 0xFFFE || (character >= 0xFDD0 && character <= 0xFDEF);
}

}  // namespace

CharacterKind KindOfCharacter(char32_t character) {
  const auto code = static_cast<utf8proc_int32_t>(character);
  switch (utf8proc_category(code)) {
    case UTF8PROC_CATEGORY_CC:
      return CharacterKind::control;
    case UTF8PROC_CATEGORY_CF:
      return character == kSoftHyphen ? CharacterKind::narrow : CharacterKind::format;
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP:
    case UTF8PROC_CATEGORY_CS:
      return CharacterKind::format;
    case UTF8PROC_CATEGORY_MN:
    case UTF8PROC_CATEGORY_MC:
    case UTF8PROC_CATEGORY_ME:
      return CharacterKind::mark;
    default:
      if (IsNoncharacter(character)) return CharacterKind::format;
      return utf8proc_charwidth(code) == 2 ? CharacterKind::wide : CharacterKind::narrow;
  }
}

bool IsEmoji(char32_t character) {
  const utf8proc_category_t category = utf8proc_category(static_cast<utf8proc_int32_t>(character));
  return (category == UTF8PROC_CATEGORY_SO || category == UTF8PROC_CATEGORY_SK) &&
         KindOfCharacter(character) == CharacterKind::wide;
}

char32_t SimpleFold(char32_t character) {
  constexpr char32_t kDottedCapitalI = 0x130;  // folds in one language only
  if (character == kDottedCapitalI) return character;
  utf8proc_int32_t folded[8] = {};
  int boundary = 0;
  const utf8proc_ssize_t length =
      utf8proc_decompose_char(static_cast<utf8proc_int32_t>(character), folded, 8,
                              static_cast<utf8proc_option_t>(UTF8PROC_CASEFOLD), &boundary);
  if (length == 1) return static_cast<char32_t>(folded[0]);
  // What folds to several characters may have a small letter of its own.
  return static_cast<char32_t>(utf8proc_tolower(static_cast<utf8proc_int32_t>(character)));
}

const char* UnicodeVersion() {
  return utf8proc_unicode_version();
}
