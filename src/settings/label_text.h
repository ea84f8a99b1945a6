// Names of files and printers as labels: short enough for their place, and shown as they are.
#pragma once

#include <cstddef>
#include <string>

// UTF-8 `text`, with dots for what it has in its middle beyond `most` characters, at least 8.
[[nodiscard]] std::string ShortenInMiddle(const std::string& text, std::size_t most);

// `text` with each & doubled, which would mark an access key.
[[nodiscard]] std::string LiteralLabel(const std::string& text);
