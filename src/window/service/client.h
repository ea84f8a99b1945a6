// What the program does on the command line alone, without a window: it tells about itself, and speaks to
// viewers that run.
#pragma once

#include <optional>
#include <span>
#include <string_view>

// Whether one of the words asks for something of that kind.
[[nodiscard]] bool IsClientCommand(std::span<const std::string_view> words);

// Does it, and gives the exit status: 0; 1 when a viewer did not accept what was sent; 2 when there is no
// viewer, or the words are wrong.
[[nodiscard]] int RunClientCommand(std::span<const std::string_view> words);
