#include "platform/printing/libraries.h"

#include <QtGlobal>

#include "platform/program.h"
#include "platform/unicode.h"

std::string ProgramLibraries() {
  return std::string("Qt ") + qVersion() + ", " + platform_printing::PageLibrary() + ", Unicode " +
         UnicodeVersion();
}
