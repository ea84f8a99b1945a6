// Brings the toolkit up and takes it down, for the program's entry and for the testing library.
#pragma once

namespace platform_qt {

// Makes the application object. Without a display the process ends here with one line on stderr.
void StartToolkit(const char* programName);
void StopToolkit();
[[nodiscard]] bool ToolkitRuns();

}  // namespace platform_qt
