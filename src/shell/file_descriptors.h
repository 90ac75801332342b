#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tovar {

/// What one program tells another of a file that it will hand over as a stream, or of a folder for such files.
struct FileDescriptor {
    std::wstring path;  ///< relative, "\" between folders
    bool folder = false;
    std::uint64_t size = 0;       ///< bytes; of a file
    std::uint64_t writeTime = 0;  ///< in steps of 100 nanoseconds since 1601, UTC; 0 = not known

    bool operator==(const FileDescriptor&) const = default;
};

/// More of them are not described: the block would grow past 60 MB.
inline constexpr std::size_t kMostDescriptors = 100'000;

/// The block of the format "FileGroupDescriptorW": their number, and 592 bytes for each.
/// Source: Windows SDK documentation, FILEGROUPDESCRIPTORW and FILEDESCRIPTORW
/// @return nullopt where one cannot be described: a path of more than 259 characters, or too many files. A block
///         without it would promise all and leave some out.
[[nodiscard]] std::optional<std::string> buildFileDescriptors(const std::vector<FileDescriptor>& files);

}  // namespace tovar
