// The message queue of the one thread: posted messages, input, paints and timers, in that order of
// precedence. Everything that waits (the program's loop, a modal dialog) waits in TakeMessage. It knows
// windows by their common record alone.
#pragma once

#include <atomic>
#include <chrono>

#include "platform/win32.h"

namespace platform_qt {

enum class Taken { message, quit, nothing };

// Takes the next message; `quit` carries the exit code in wParam. `nothing` when *stop has become true, or
// when the queue is empty and the call may not wait.
Taken TakeMessage(MSG& message, bool wait, const bool* stop = nullptr);

// Waits until a message can be taken: true then. False after `longest`, or when `stop` has become true; who
// sets it calls WakeFromAnyThread.
[[nodiscard]] bool WaitForMessage(std::chrono::milliseconds longest, const std::atomic<bool>& stop);
// Ends the wait of the window's thread for the toolkit. Any thread may call it.
void WakeFromAnyThread();

// An input that the window itself keeps, for its own DeliverHeld: its number in lParam. No procedure sees it.
inline constexpr UINT kHeldInput = 0xFFFF0001U;

// Posts the character that a key message types, if it is one that accelerators ask for.
bool PostCharacterOf(const MSG& message);
// Calls the window's procedure with a message that was taken.
LRESULT Deliver(const MSG& message);
// Both, as a message loop does.
void Serve(const MSG& message);

// False when there is no such window.
bool AppendPosted(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
void AppendQuit(int exitCode);

// Modifier keys of an input message, as GetKeyState reports them while it is handled.
inline constexpr int kShiftDown = 1;
inline constexpr int kControlDown = 2;
inline constexpr int kAltDown = 4;

// Appends an input message. Mouse moves and thumb moves that follow each other become one.
void AppendInput(HWND window, UINT message, WPARAM wParam, LPARAM lParam, int modifiers);
// The modifier keys of the input message that was taken last.
[[nodiscard]] int MessageModifiers();

// Drops messages and timers of a window that is gone.
void ForgetWindow(HWND window);
// Whether no posted message, input, quit or paint waits.
[[nodiscard]] bool QueueIsIdle();

// A timer that runs already begins anew.
void StartTimer(HWND window, UINT_PTR id, std::chrono::milliseconds interval);
bool StopTimer(HWND window, UINT_PTR id);  // false: there was none
[[nodiscard]] bool HasTimer(HWND window, UINT_PTR id);

// Drops everything, for the end of the toolkit.
void ClearQueue();

}  // namespace platform_qt
