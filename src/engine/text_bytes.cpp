#include "engine/text_bytes.h"

#include "codes/decoders.h"
#include "platform/unicode.h"

namespace {

// The characters of the bytes, kNoCharacter for what is none.
template <typename Code>
std::u32string Characters(std::span<const std::uint8_t> bytes) {
  std::u32string characters;
  const std::uint8_t* const end = bytes.data() + bytes.size();
  for (const std::uint8_t* at = bytes.data(); at < end;) {
    Decoded next = Code::Decode(at, end);
    if (next.length == 0)
      next = {kNoCharacter, std::min<std::int32_t>(Code::kUnit, static_cast<std::int32_t>(end - at))};
    characters += next.character;
    at += next.length;
  }
  return characters;
}

}  // namespace

std::optional<std::string> BytesOfText(std::string_view text, ViewOptions options) {
  const auto characters = Characters<Utf8>({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
  if (characters.find(kNoCharacter) != std::u32string::npos) return std::nullopt;
  if ((options & VO_UTF8) != 0) return std::string(text);
  std::string bytes;
  for (const char32_t character : characters)
    bytes += (options & VO_UTF16LE) != 0 ? Utf16Le::Encode(character) : Utf16Be::Encode(character);
  return bytes;
}

std::string TextOfBytes(std::span<const std::uint8_t> bytes, ViewOptions options) {
  std::u32string characters = (options & VO_UTF16LE) != 0   ? Characters<Utf16Le>(bytes)
                              : (options & VO_UTF16BE) != 0 ? Characters<Utf16Be>(bytes)
                                                            : Characters<Utf8>(bytes);
  for (char32_t& character : characters)
    if (character == kNoCharacter) character = kReplacementCharacter;
  return CellsToUtf8(characters);
}
