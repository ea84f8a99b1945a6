// The program. On Windows the system calls WinMain itself.
#include "window/start_up.h"

#ifndef _WIN32

#include "platform/program.h"

int main(int argc, char** argv) {
  return RunProgram(argc, argv, WinMain);
}

#endif
