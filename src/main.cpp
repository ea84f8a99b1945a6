// The program. On Windows the system calls WinMain itself.
#include "window/start_up.h"

#ifndef _WIN32

#include <string_view>
#include <vector>

#include "platform/program.h"
#include "window/service/client.h"

int main(int argc, char** argv) {
  const std::vector<std::string_view> words(argv + (argc > 0 ? 1 : 0), argv + argc);
  if (IsClientCommand(words)) {
    return RunWithoutDisplay(argc, argv, [&words] { return RunClientCommand(words); });
  }
  return RunProgram(argc, argv, WinMain);
}

#endif
