#pragma once
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "archivers/unpacking/target_system.h"

namespace archiver::test {

/// A folder of this test's own; goes with everything in it. Looks at files by the system's own calls, also where their
/// paths are long. Implemented in win32/ and posix/.
class Scratch {
public:
    Scratch();
    ~Scratch();
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }

    void write(std::string_view name, std::string_view bytes) const;
    void makeFolder(std::string_view name) const;
    void protect(std::string_view name) const;
    [[nodiscard]] std::string read(std::string_view name) const;
    [[nodiscard]] bool isProtected(std::string_view name) const;
    /// When it was changed last: seconds since 1970, and what is beyond them in nanoseconds.
    [[nodiscard]] std::int64_t seconds(std::string_view name) const;
    [[nodiscard]] std::uint32_t nanoseconds(std::string_view name) const;
    /// All that is in it, sorted; folders end with "/".
    [[nodiscard]] std::vector<std::string> names() const;

private:
    std::filesystem::path path_;
};

/// The target in a scratch folder.
std::unique_ptr<TargetFolder> openTarget(const std::filesystem::path& folder);

/// Creates, writes and commits. @return the first code that is not kOk
ReturnCode writeFile(TargetFolder& target, const std::filesystem::path& name, std::string_view bytes,
                     bool replace = false, const ItemProperties& properties = {});

/// Creates and writes, and leaves it at that.
std::unique_ptr<OutputFile> beginFile(TargetFolder& target, const std::filesystem::path& name, std::string_view bytes,
                                      bool replace = false);

}  // namespace archiver::test
