#include "platform/printing/cups_library.h"

#include <dlfcn.h>

#include <optional>

namespace platform_printing {

namespace {

constexpr char kLibrary[] = "libcups.so.2";

template <typename Function>
bool Find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  return function != nullptr;
}

// The library stays loaded: threads of its own may be at work in it.
std::optional<CupsLibrary> Load() {
  void* const library = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return std::nullopt;
  CupsLibrary cups;
  const bool whole =
      Find(library, "cupsGetDests2", cups.cupsGetDests2) &&
      Find(library, "cupsFreeDests", cups.cupsFreeDests) &&
      Find(library, "cupsGetNamedDest", cups.cupsGetNamedDest) &&
      Find(library, "cupsGetOption", cups.cupsGetOption) &&
      Find(library, "cupsCopyDestInfo", cups.cupsCopyDestInfo) &&
      Find(library, "cupsFreeDestInfo", cups.cupsFreeDestInfo) &&
      Find(library, "cupsCheckDestSupported", cups.cupsCheckDestSupported) &&
      Find(library, "cupsAddOption", cups.cupsAddOption) &&
      Find(library, "cupsFreeOptions", cups.cupsFreeOptions) &&
      Find(library, "cupsCreateDestJob", cups.cupsCreateDestJob) &&
      Find(library, "cupsStartDestDocument", cups.cupsStartDestDocument) &&
      Find(library, "cupsWriteRequestData", cups.cupsWriteRequestData) &&
      Find(library, "cupsFinishDestDocument", cups.cupsFinishDestDocument) &&
      Find(library, "cupsCancelJob2", cups.cupsCancelJob2) &&
      Find(library, "cupsDoRequest", cups.cupsDoRequest) &&
      Find(library, "cupsLastError", cups.cupsLastError) &&
      Find(library, "cupsLastErrorString", cups.cupsLastErrorString) &&
      Find(library, "cupsServer", cups.cupsServer) && Find(library, "cupsUser", cups.cupsUser) &&
      Find(library, "cupsEncryption", cups.cupsEncryption) &&
      Find(library, "cupsSetPasswordCB2", cups.cupsSetPasswordCB2) &&
      Find(library, "httpConnect2", cups.httpConnect2) && Find(library, "httpClose", cups.httpClose) &&
      Find(library, "httpError", cups.httpError) && Find(library, "httpSetTimeout", cups.httpSetTimeout) &&
      Find(library, "ippAddString", cups.ippAddString) && Find(library, "ippDelete", cups.ippDelete) &&
      Find(library, "ippFindAttribute", cups.ippFindAttribute) &&
      Find(library, "ippGetCount", cups.ippGetCount) && Find(library, "ippGetInteger", cups.ippGetInteger) &&
      Find(library, "ippGetString", cups.ippGetString) &&
      Find(library, "ippNewRequest", cups.ippNewRequest) && Find(library, "ippPort", cups.ippPort);
  return whole ? std::optional(cups) : std::nullopt;
}

}  // namespace

const CupsLibrary* TheCupsLibrary() {
  static const std::optional<CupsLibrary> library = Load();
  return library ? &*library : nullptr;
}

}  // namespace platform_printing
