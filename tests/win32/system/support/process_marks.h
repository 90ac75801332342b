#pragma once
#include <map>
#include <string>

namespace tovar::test {

/// What a process has of its own, and a guest in it must not change: name and value of each.
[[nodiscard]] std::map<std::string, std::wstring> processState();

/// How much of the system's resources the process uses. Some systems do not count what it has of windows and drawing,
/// so that is counted here, too.
struct ResourceMarks {
    long gdiObjects = 0, userObjects = 0;    ///< as the system counts them; 0 from a system that does not
    long gdiHandles = 0, kernelHandles = 0;  ///< in use, from any beginning: only differences say something
    long windows = 0, menus = 0, icons = 0;
    long threadSlots = 0;  ///< the first free slot for values of threads
    long kilobytes = 0;    ///< private memory
};
[[nodiscard]] ResourceMarks resourceMarks();

}  // namespace tovar::test
