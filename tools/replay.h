// Drives the viewer's own window without a display, by keys that are given as text, and tells as text what a
// user sees in it. For the picture tool and the recorded sessions.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace replay {

struct KeyStroke {
  int modifiers = 0;
  int virtualKey = 0;  // 0: `character` is typed
  char character = 0;
  int count = 1;
};

// Adds the keys of a comma-separated list, each with modifiers in front and a count behind if wanted, as in
// PageDown*3,Ctrl+W,Ctrl+Shift+Z,End. False when the list names what is no key.
bool ParseKeys(std::string_view list, std::vector<KeyStroke>& keys);

// Works the program's queue off. False when the program has ended, as in what follows.
bool Pump();
bool Press(const std::vector<KeyStroke>& keys);

// Makes the client area hold so many columns and rows, however much room the bars take.
bool SettleSize(int columns, int rows);

// A row of the screen. A frozen column ends in a bar, and text whose row goes on in the background color in a
// double angle.
struct ScreenRow {
  bool selected = false;
  char kind = ' ';   // of its colors: t tagged, = title, ! message, i information; ~ below the last line
  char rule = ' ';   // - a page begins here, _ the titles end here
  std::string text;  // UTF-8, without blanks at its end
};

// Paints the whole window and tells what was drawn.
[[nodiscard]] std::vector<ScreenRow> ReadScreen();

}  // namespace replay
