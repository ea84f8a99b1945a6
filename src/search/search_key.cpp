#include "search/search_key.h"

#include <algorithm>
#include <cstring>

#include "engine/char_map.h"
#include "engine/text_bytes.h"
#include "platform/cells.h"
#include "platform/win32.h"

namespace {

constexpr const char* kTextName = "Search text";

// Half a byte; -1 for a character that is no hex digit.
int HexDigit(char character) {
  if (character >= '0' && character <= '9') return character - '0';
  if (character >= 'A' && character <= 'F') return character - 'A' + 10;
  if (character >= 'a' && character <= 'f') return character - 'a' + 10;
  return -1;
}

bool ContinuesCharacter(char byte) {
  return (static_cast<std::uint8_t>(byte) & 0xC0) == 0x80;
}

// The character of UTF-8 text that begins at byte `at`.
std::string_view CharacterAt(std::string_view text, std::size_t at) {
  std::size_t end = at + 1;
  while (end < text.size() && ContinuesCharacter(text[end]))
    ++end;
  return text.substr(at, end - at);
}

std::ptrdiff_t CountCharacters(std::string_view text) {
  return std::ranges::count_if(text, [](char byte) { return !ContinuesCharacter(byte); });
}

// The bytes of characters of the Windows-1252 set in the code of one byte that the option word names. A
// character without an EBCDIC code ends the key there; CheckTextKey refuses it.
std::string KeyToByteCode(const std::string& codes, ViewOptions formatFlags) {
  const std::uint8_t* bytes = nullptr;  // null: the same
  if ((formatFlags & VO_ASCII) != 0) {
    bytes = OemBytes();
  } else if ((formatFlags & VO_EBCDIC) != 0) {
    bytes = GetEbcdicInverse();
  }
  std::string coded;
  for (const char character : codes) {
    const auto code = static_cast<std::uint8_t>(character);
    const std::uint8_t byte = bytes != nullptr ? bytes[code] : code;
    if (byte == 0) break;
    coded += static_cast<char>(byte);
  }
  return coded;
}

}  // namespace

std::int32_t ParseHexText(std::uint8_t* destination, const char* text, std::int32_t length) {
  std::int32_t count = 0;
  bool low = false;  // the next digit is the low half
  for (std::int32_t i = 0; i < length; ++i) {
    const int digit = HexDigit(text[i]);
    if (text[i] == ' ') {
      if (low) ++count;
      low = false;
    } else if (digit < 0) {
      return -1 - i;
    } else if (low) {
      destination[count] = static_cast<std::uint8_t>(destination[count] | digit);
      ++count;
      low = false;
    } else {
      destination[count] = static_cast<std::uint8_t>(digit * 16);
      low = true;
    }
  }
  return low ? count + 1 : count;
}

std::string KeyDisplayText(const void* key, std::int32_t count, ViewOptions formatFlags) {
  const auto* const bytes = static_cast<const std::uint8_t*>(key);
  if ((formatFlags & VO_UNICODE) != 0)
    return TextOfBytes({bytes, static_cast<std::size_t>(count)}, formatFlags);
  const Cell* const map = GetCellMap(formatFlags);
  CellText shown;
  for (std::int32_t i = 0; i < count; ++i)
    shown += map[bytes[i]];
  return CellsToUtf8(shown);
}

std::string HistoryText(const char* entry, ViewOptions formatFlags) {
  if ((formatFlags & VO_UNICODE) != 0) {
    return BytesOfText(entry, VO_UTF8).value_or(CellsToUtf8(CellsOfBytes(entry)));
  }
  return KeyDisplayText(entry, static_cast<std::int32_t>(std::strlen(entry)), formatFlags);
}

FieldCheck CheckTextKey(std::string_view text, ViewOptions formatFlags) {
  const std::ptrdiff_t length = CountCharacters(text);
  if (length < 1 || length > kSearchKeyBytes) {
    return {false, std::string(kTextName) + " length must be a number between 1 and " +
                       std::to_string(kSearchKeyBytes) + "!"};
  }
  for (std::size_t at = 0; at < text.size(); at += CharacterAt(text, at).size()) {
    const std::string_view character = CharacterAt(text, at);
    if (TextKeyOf(character, formatFlags).empty()) {
      return {false, "Invalid character \"" + std::string(character) + "\" in " + kTextName + "."};
    }
  }
  // The history keeps the text as it is typed.
  if ((formatFlags & VO_UNICODE) != 0 &&
      std::max(text.size(), TextKeyOf(text, formatFlags).size()) > kSearchKeyBytes) {
    return {false, std::string(kTextName) + " length must be " + std::to_string(kSearchKeyBytes) +
                       " bytes at most, also in the code of the file!"};
  }
  return {};
}

std::string TextKeyOf(std::string_view text, ViewOptions formatFlags) {
  if ((formatFlags & VO_UNICODE) != 0) return BytesOfText(text, formatFlags).value_or("");
  return KeyToByteCode(Utf8ToCodes(text).value_or(""), formatFlags);
}

HexKey ReadHexKey(std::string_view text, std::int32_t least) {
  HexKey key;
  const std::ptrdiff_t length = CountCharacters(text);
  if (length < least || length > kHexDigits) {
    key.length = {false, "Number of hex digits must be between 1 and " + std::to_string(kHexDigits) + "!"};
    return key;
  }
  key.bytes.resize(text.size() / 2 + 1);
  const std::int32_t result =
      ParseHexText(key.bytes.data(), text.data(), static_cast<std::int32_t>(text.size()));
  if (result < 0) {
    // All characters in front of it are of one byte.
    key.badAt = -1 - result;
    key.error =
        "Invalid hex digit \"" + std::string(CharacterAt(text, static_cast<std::size_t>(key.badAt))) + "\"!";
    key.bytes.clear();
  } else if (result > kSearchKeyBytes) {
    key.length = {false, "Number of bytes must be between 1 and " + std::to_string(kSearchKeyBytes) + "!"};
    key.bytes.clear();
  } else {
    key.bytes.resize(static_cast<std::size_t>(result));
  }
  return key;
}

std::size_t TouchHistory(char* list, std::size_t width, std::int32_t& count, std::int32_t& touched,
                         std::int32_t index, char* text) {
  bool isNew = index < 0;
  for (std::int32_t i = 0; isNew && i < count; ++i)
    isNew = std::strcmp(list + static_cast<std::size_t>(i) * width, text) != 0;
  const std::size_t length = TouchRecentList(list, kRecentStrings, width, index, text, touched);
  if (isNew && count < kRecentStrings) ++count;
  return length;
}
