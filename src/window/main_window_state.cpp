#include "window/main_window_state.h"

MainWindowState MainState;
