// A line of words over the foot of the view, for what the user must know and need not answer: what the
// program waits for, and why a move has failed. It stays until the next move, or until another takes its
// place.
#pragma once

#include <string>

#include "platform/win32.h"

// Shows `text` (UTF-8); an empty one takes the notice away.
void ShowNotice(const std::string& text);

// Draws the notice, if there is one, over what the window shows. The view's font must be selected.
void DrawNotice(HDC dc);
