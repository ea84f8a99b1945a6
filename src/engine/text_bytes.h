// Whole texts to and from the codes of several bytes a character: keys of a search, not runs of the view.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "engine/view_records.h"

// The bytes of UTF-8 text in the code of VO_UNICODE that the options name. Empty when the text is no UTF-8.
[[nodiscard]] std::optional<std::string> BytesOfText(std::string_view text, ViewOptions options);

// The text that the bytes are in that code, as UTF-8; U+FFFD for what is no character.
[[nodiscard]] std::string TextOfBytes(std::span<const std::uint8_t> bytes, ViewOptions options);
