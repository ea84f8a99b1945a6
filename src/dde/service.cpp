#include "dde/service.h"

int DdeStart(HINSTANCE /*instance*/, HWND /*window*/) {
  return 0;
}

void DdeStop() {}
