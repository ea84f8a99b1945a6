// Commands from other programs, by the names of DDEML: the part of Win32 that has a header of its own. What
// is said at win32.h holds here. A service takes command strings (execute transactions) for one topic, and
// answers whether it took them. They come by the session bus, one at a time, each behind the input that waits
// when it comes: a dialog's loop serves them too, but none comes while the callback runs.
#pragma once

#include "platform/win32.h"

#ifdef _WIN32

#include <ddeml.h>

#else

struct HCONV__;
struct HSZ__;
struct HDDEDATA__;
using HCONV = HCONV__*;
using HSZ = HSZ__*;
using HDDEDATA = HDDEDATA__*;
using PFNCALLBACK = HDDEDATA(CALLBACK*)(UINT type, UINT format, HCONV conversation, HSZ one, HSZ other,
                                        HDDEDATA data, ULONG_PTR data1, ULONG_PTR data2);
inline constexpr DWORD CBF_FAIL_SELFCONNECTIONS = 0x00001000;
inline constexpr DWORD CBF_FAIL_ADVISES = 0x00004000;
inline constexpr DWORD CBF_FAIL_POKES = 0x00010000;
inline constexpr DWORD CBF_FAIL_REQUESTS = 0x00020000;
inline constexpr DWORD CBF_SKIP_ALLNOTIFICATIONS = 0x003C0000;
inline constexpr UINT XTYP_CONNECT = 0x1062;  // `one` the topic, `other` the service; result 1 accepts
inline constexpr UINT XTYP_EXECUTE = 0x4050;  // `one` the topic, `data` the string; result a DDE_ number
inline constexpr ULONG_PTR DDE_FACK = 0x8000;
inline constexpr ULONG_PTR DDE_FBUSY = 0x4000;
inline constexpr ULONG_PTR DDE_FNOTPROCESSED = 0;
inline constexpr UINT DMLERR_NO_ERROR = 0;
inline constexpr UINT DMLERR_SYS_ERROR = 0x400F;
inline constexpr int CP_WINANSI = 1004;
inline constexpr UINT DNS_REGISTER = 1;

// An instance, of which there is one; *instance is 0 before. Not DMLERR_NO_ERROR: there is no bus. The flags
// are those that the program gives, and what they refuse never comes.
UINT DdeInitializeA(DWORD* instance, PFNCALLBACK callback, DWORD flags, DWORD reserved);
BOOL DdeUninitialize(DWORD instance);  // takes the names off the bus
HSZ DdeCreateStringHandleA(DWORD instance, LPCSTR text, int codePage);
BOOL DdeFreeStringHandle(DWORD instance, HSZ text);
int DdeCmpStringHandles(HSZ one, HSZ other);  // 0: equal, without regard to ASCII case
// Puts the service on the bus; null when that fails.
HDDEDATA DdeNameService(DWORD instance, HSZ service, HSZ reserved, UINT command);
// Copies at most `size` bytes from `offset`; the length copied, or without a buffer that of the data.
DWORD DdeGetData(HDDEDATA data, BYTE* buffer, DWORD size, DWORD offset);

#endif
