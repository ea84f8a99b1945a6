// The print commands: what each of them prints, and the printing itself, from the question for a printer to
// the box about how it ended. The view and its lines are left alone.
#pragma once

#include "platform/win32.h"
#include "print/print_range.h"

// Prints a part of the open file as the view shows it. Nothing happens while a job is under way, and where
// the part begins at or behind the file's end.
void PrintFile(const PrintRequest& request);

LRESULT PrintCommand(UINT id);
