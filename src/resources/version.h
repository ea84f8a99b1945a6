// The program's version. The build files read it from here.
#pragma once

inline constexpr const char* kVersion = "0.1.0";
