// The code of a file that is open, found out from its first bytes.
#pragma once

#include "engine/byte_source.h"
#include "engine/view_records.h"

// A code of VO_UNICODE, or 0 where the bytes are of no such code. VO_AUTOCODE, undecided, of a file that is
// empty or cannot be read.
[[nodiscard]] ViewOptions FindFileCode(ByteSource& source);
