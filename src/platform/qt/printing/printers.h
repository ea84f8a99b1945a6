// The printers that the program may choose from, as the names of their device contexts: the queues of the
// print service, and the one that writes a PDF file.
#pragma once

#include <string>

namespace platform_qt {

inline constexpr const char* kQueueDriver = "cups";
inline constexpr const char* kFileDriver = "pdf";
inline constexpr const char* kFileDevice = "PDF file";
inline constexpr const char* kFileOutput = "disk";

// Asks the user for the name of the file that a document goes to. Empty: they gave none.
[[nodiscard]] std::string AskForFile(const std::string& document);

}  // namespace platform_qt
