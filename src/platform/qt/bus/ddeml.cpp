// The operations of DDEML, over the session bus.
#include <strings.h>
#include <QDBusConnection>
#include <algorithm>
#include <cstring>

#include "platform/qt/bus/bus_object.h"

using namespace platform_qt;

namespace {

constexpr DWORD kInstance = 1;
PFNCALLBACK theCallback = nullptr;
HDDEDATA__ registered;

}  // namespace

UINT DdeInitializeA(DWORD* instance, PFNCALLBACK callback, DWORD /*flags*/, DWORD /*reserved*/) {
  if (!QDBusConnection::sessionBus().isConnected()) {
    return DMLERR_SYS_ERROR;
  }
  theCallback = callback;
  *instance = kInstance;
  return DMLERR_NO_ERROR;
}

BOOL DdeUninitialize(DWORD /*instance*/) {
  BusObject::Get().Unregister();
  return TRUE;
}

HSZ DdeCreateStringHandleA(DWORD /*instance*/, LPCSTR text, int /*codePage*/) {
  return new HSZ__{text};
}

BOOL DdeFreeStringHandle(DWORD /*instance*/, HSZ text) {
  delete text;
  return TRUE;
}

int DdeCmpStringHandles(HSZ one, HSZ other) {
  return strcasecmp(one->text.c_str(), other->text.c_str());
}

HDDEDATA DdeNameService(DWORD /*instance*/, HSZ service, HSZ /*reserved*/, UINT /*command*/) {
  return BusObject::Get().Register(service, theCallback) ? &registered : nullptr;
}

DWORD DdeGetData(HDDEDATA data, BYTE* buffer, DWORD size, DWORD offset) {
  const auto length = static_cast<DWORD>(data->bytes.size());
  if (buffer == nullptr) {
    return length;
  }
  const DWORD count = std::min(size, length - std::min(offset, length));
  std::memcpy(buffer, data->bytes.data() + offset, count);
  return count;
}
