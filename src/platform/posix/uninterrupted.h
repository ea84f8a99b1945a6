// A call of the system that a signal may interrupt, done again until it was not.
#pragma once

#include <cerrno>

template <typename Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR)
    result = call();
  return result;
}
