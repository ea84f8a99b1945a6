// The view's one font. Its description is in points, and the zoom is a number of steps away from that size,
// so that zooming never loses the size the user chose.
#pragma once

#include <string>

#include "platform/win32.h"

// Pixel height of a font of `points` on a screen of `pixelsPerInch`, as LOGFONTA wants it: below 0, without
// internal leading.
[[nodiscard]] int FontHeight(int points, int pixelsPerInch);

// Pixel height at a zoom level: the base height `height`, in equal steps of a fifth of it, at least 1 pixel,
// with the sign of `height`.
[[nodiscard]] int ZoomedHeight(int height, int zoomLevel);

// Builds ViewFont and measures it. The sender repaints and lays out anew.
void BuildViewFont();

// The screen has another resolution now: the font keeps its size in points, and the view is laid out anew.
void FollowScale(int pixelsPerInch);

// Shows the font dialog. Result 1 if the user chose a font, which is then in ViewLogFont, FontFace and
// FontPoints; else 0.
int ChooseViewFont(HWND owner);

// The font in use, in words: the face and size that were asked for and, where it is another one or has no
// fixed pitch, the face that stands for it.
[[nodiscard]] std::string FontInUse();

// The commands of the font dialog and the zoom.
LRESULT FontCommand(UINT id);
LRESULT ZoomCommand(UINT id);
