// Text of the view, which is bytes of the Windows-1252 set, and text of dialogs, which is UTF-8, turned into
// each other. Operations of this layer's own; each system's folder implements them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

// Each byte becomes one character.
[[nodiscard]] std::string AnsiToUtf8(std::string_view bytes);

// Each character becomes one byte. Empty when a character is outside the set, or the text is no UTF-8.
[[nodiscard]] std::optional<std::string> Utf8ToAnsi(std::string_view text);
