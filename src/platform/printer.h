// What a printer's device context tells beyond Win32. An operation of the layer's own. On the window's
// thread.
#pragma once

#include <string>

#include "platform/win32.h"

// Why the document of a printer's device context has failed, in the words of the system or of the print
// service, without a full stop, UTF-8; empty when it has not, or nobody knows.
[[nodiscard]] std::string PrinterErrorText(HDC dc);
