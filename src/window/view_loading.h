// Loads of the view as jobs: what a load works on is made for it and is its own, so that the lines on the
// screen stay as they are until it has succeeded, and a load that hangs harms nothing. The window's thread
// only.
#pragma once

#include <memory>
#include <string>

#include "engine/view_moves.h"
#include "window/watch.h"

// What has become of a load.
struct LoadOutcome {
  WatchEnd end = WatchEnd::refused;
  MoveResult result;             // of a load that has finished, as the next two
  ViewFile file;                 // what the file is
  std::shared_ptr<ViewRun> run;  // the lines made, if any
};

// The request of a load in the present style and size of the view.
[[nodiscard]] MoveRequest RequestOf(MoveKind kind, std::int64_t delta, FilePos position);

// The option word of the format in use, in the code of the open file.
[[nodiscard]] ViewOptions PresentOptions();

// How the view makes its lines.
[[nodiscard]] LineStyle PresentStyle();

// Makes a move on `file` that needs to read, from the lines at hand. `onlyIfChanged` as in MoveWithLoads.
[[nodiscard]] LoadOutcome LoadFor(const MoveRequest& request, const ViewFile& file, bool onlyIfChanged);

// The run becomes the one of the view; the former one is kept for the next load, unless it is large.
void TakeRun(std::shared_ptr<ViewRun> run);

// Whether the lines at hand are those of the error page.
[[nodiscard]] bool ErrorPageShown();

// Reads the present length of the open file into its record. False when it cannot be told; the user was told
// why.
[[nodiscard]] bool AskFileLength();

// Tells the user why the open file, or that at `path`, could not be read.
void TellReadError(const char* path, FileError error);
