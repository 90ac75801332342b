#pragma once
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "archivers/loaded_library.h"
#include "commands/scratch_folder.h"

namespace archiver::testing {

/// Files below a folder with their bytes, by their paths with "/"; folders are in it only when they are empty, with "/"
/// at their end.
using Files = std::map<std::string, std::string>;
Files filesBelow(const std::filesystem::path& folder);

/// A text that names a fixture of tests/data, such as "rar/rar.rar".
std::string fixture(const char* name);

/// Makes a file as old as 1990, or a year younger than now.
void makeOld(const std::filesystem::path& file);
void makeNew(const std::filesystem::path& file);

/// A bundled library that runs command lines, with a target folder. Without an owner window no question is asked.
class LibraryRun {
public:
    /// @param folder  part of the scratch folder's name: programs that run at once have different ones
    LibraryRun(const char* module, const char* prefix, const char* folder = "languages");

    /// Runs a line in which "ARC" stands for the archive, "OUT" for the target folder with its separator, both quoted.
    std::int32_t operator()(std::string line);

    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] Files unpacked() const { return filesBelow(target()); }
    [[nodiscard]] std::filesystem::path target() const { return scratch.path() / "out"; }
    [[nodiscard]] const LoadedLibrary& library() const { return library_; }

    const ScratchFolder scratch;
    std::string archive;  ///< what "ARC" is

private:
    LoadedLibrary library_;
    std::string text_;
};

}  // namespace archiver::testing
