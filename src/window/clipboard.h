// The clipboard commands of the Edit menu: copy, select all, unselect.
#pragma once

#include <optional>

#include "engine/selection_text.h"
#include "platform/win32.h"

// The text of the selection, as a copy has it. Nothing when the user gave the wait up.
[[nodiscard]] std::optional<SelectionText> TextOfSelection();

LRESULT CopyCommand(UINT id);
LRESULT SelectAllCommand(UINT id);
LRESULT UnselectCommand(UINT id);
