#include "engine/byte_columns.h"

Cell ColumnCell(char32_t character, ViewOptions options) {
  if (KnownKind(character) != CharacterKind::control) return character;
  if (character == kPageCharacter) return (options & VO_KEEPFF) != 0 ? kPageCharacter : kPageSign;
  return character == U'\t' ? kTabSign : kControlSign;
}
