// WM_PAINT: rows of text from the formatted lines and the frozen titles. Never formats or reads; what looks
// different in a row comes from the flags of its line, from the colors and from the selection. Each row is
// opaque, so that nothing needs to be erased before.
#pragma once

// Paints the update region of the main window and brings the scroll bars up to date.
void PaintWindow();
