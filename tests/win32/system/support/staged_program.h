#pragma once
#include <filesystem>

namespace tovar::test {

/// A program that runs in a folder of its own: the component lies beside it, and of the archiver libraries only those
/// that a test puts there. It is a copy of the one that was started.
namespace staged {

/// Whether the running program is the copy.
[[nodiscard]] bool isStaged();

/// The folder of the program that was started: all that was built lies there.
[[nodiscard]] std::filesystem::path productsFolder();

/// Makes the folder, runs the copy with the same command line, waits for it and removes the folder.
/// @return the copy's exit code
[[nodiscard]] int runCopy();

}  // namespace staged

}  // namespace tovar::test
