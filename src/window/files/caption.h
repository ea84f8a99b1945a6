// What the window says of the open file: in the caption its name, and the code that it is read in where that
// is one of Unicode; in a notice the code that was chosen.
#pragma once

#include <string>

// What the file at `path` is called in captions.
[[nodiscard]] std::string FileTitle(const char* path);

// Shows the caption of the open file.
void ShowFileCaption();

// The same, when the code has changed.
void UpdateFileCaption();

// Tells the user in a notice which code was chosen.
void TellCode();
