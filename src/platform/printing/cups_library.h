// The functions of the print service's library, looked up when they are first wanted. They mean what the
// library's own header says.
#pragma once

#include <cups/cups.h>

namespace platform_printing {

struct CupsLibrary {
  decltype(&::cupsGetDests2) cupsGetDests2 = nullptr;
  decltype(&::cupsFreeDests) cupsFreeDests = nullptr;
  decltype(&::cupsGetNamedDest) cupsGetNamedDest = nullptr;
  decltype(&::cupsGetOption) cupsGetOption = nullptr;
  decltype(&::cupsCopyDestInfo) cupsCopyDestInfo = nullptr;
  decltype(&::cupsFreeDestInfo) cupsFreeDestInfo = nullptr;
  decltype(&::cupsCheckDestSupported) cupsCheckDestSupported = nullptr;
  decltype(&::cupsAddOption) cupsAddOption = nullptr;
  decltype(&::cupsFreeOptions) cupsFreeOptions = nullptr;
  decltype(&::cupsCreateDestJob) cupsCreateDestJob = nullptr;
  decltype(&::cupsStartDestDocument) cupsStartDestDocument = nullptr;
  decltype(&::cupsWriteRequestData) cupsWriteRequestData = nullptr;
  decltype(&::cupsFinishDestDocument) cupsFinishDestDocument = nullptr;
  decltype(&::cupsCancelJob2) cupsCancelJob2 = nullptr;
  decltype(&::cupsDoRequest) cupsDoRequest = nullptr;
  decltype(&::cupsLastError) cupsLastError = nullptr;
  decltype(&::cupsLastErrorString) cupsLastErrorString = nullptr;
  decltype(&::cupsServer) cupsServer = nullptr;
  decltype(&::cupsUser) cupsUser = nullptr;
  decltype(&::cupsEncryption) cupsEncryption = nullptr;
  decltype(&::cupsSetPasswordCB2) cupsSetPasswordCB2 = nullptr;
  decltype(&::httpConnect2) httpConnect2 = nullptr;
  decltype(&::httpClose) httpClose = nullptr;
  decltype(&::httpError) httpError = nullptr;
  decltype(&::httpSetTimeout) httpSetTimeout = nullptr;
  decltype(&::ippAddString) ippAddString = nullptr;
  decltype(&::ippDelete) ippDelete = nullptr;
  decltype(&::ippFindAttribute) ippFindAttribute = nullptr;
  decltype(&::ippGetCount) ippGetCount = nullptr;
  decltype(&::ippGetInteger) ippGetInteger = nullptr;
  decltype(&::ippGetString) ippGetString = nullptr;
  decltype(&::ippNewRequest) ippNewRequest = nullptr;
  decltype(&::ippPort) ippPort = nullptr;
};

// Null when the system has no such library, or one that lacks a function. May be called on any thread.
[[nodiscard]] const CupsLibrary* TheCupsLibrary();

}  // namespace platform_printing
