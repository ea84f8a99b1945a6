// The one watch over long work: a job runs on the reader's thread, and the window lives meanwhile. It paints,
// moves, answers keys, tells how far the job is and what it waits for, and ends the job when the user wants
// so; what would begin a second job is held back until the first has ended. Work that ends soon is not
// noticed at all. The window's thread only.
#pragma once

#include "engine/reader.h"
#include "platform/win32.h"

enum class WatchEnd : std::uint8_t {
  finished,  // the work has ended by itself
  givenUp,   // the user gave the wait up, or wants to close the window: what the work owns may still be
             // written to
  refused,   // nothing was started: too many reads hang already, and the user was told
};

// Where a job tells how far it is, if it does not use its LongJob for that.
struct WatchProgress {
  const std::atomic<FilePos>* position = nullptr;
  const std::atomic<FilePos>* end = nullptr;
};

// Runs `work` and waits for it. `work` must own, alone or shared, all that it works on; what `progress`
// points to lives as long as this call.
[[nodiscard]] WatchEnd RunWatched(const ReadWork& work, const WatchProgress& progress = {});

// Starts work that nobody waits for, on the same thread. It is told to stop as soon as a user's work comes.
// Null: not started.
[[nodiscard]] std::shared_ptr<LongJob> StartUnwatched(ReadWork work);

// Whether a job is being waited for.
[[nodiscard]] bool WatchIsOn();

// Whether a message of the main window has to wait for the end of the job: then it is kept, and posted again
// behind that. Messages that ask for closing are taken note of.
[[nodiscard]] bool WatchTakes(UINT message, WPARAM wParam, LPARAM lParam);

// The user gives the wait up.
void GiveUpWatched();

// The caption of a window that is otherwise called `caption`, when a job has reached `position` of `end`.
[[nodiscard]] std::string ProgressCaption(const std::string& caption, FilePos position, FilePos end);

// Ends the reader's thread, at the end of the program.
void StopReader();
