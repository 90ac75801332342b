#pragma once
#include <string>
#include <vector>

#include "archivers/unpacking/unpacker.h"
#include "formats/support/files.h"
#include "formats/support/tar_builder.h"
#include "formats/support/zip_builder.h"
#include "unpacking/fakes/recording_events.h"

namespace archiver::test {

using Lines = std::vector<std::string>;

#ifdef _WIN32
inline constexpr bool kOnWindows = true;
#else
inline constexpr bool kOnWindows = false;
#endif

/// A ZIP archive of such members; where nothing else is said, their checksums and sizes are right.
std::string zipOf(const std::vector<BuiltMember>& members);

/// An archive that the real readers open and that the real file system takes, in a folder of this test's own, beside
/// which there is a file and a folder that are none of its business.
class RealScene {
public:
    /// @param archive  a ZIP or a tar
    explicit RealScene(const std::string& archive);

    ReturnCode unpack();
    /// A file in the target; "(none)" when there is none.
    [[nodiscard]] std::string read(const std::string& name) const;
    /// All names in the target, sorted, folders with "/".
    [[nodiscard]] Lines names() const;
    void write(const std::string& name, std::string_view bytes) const;
    /// @param to  the folder "outside"
    /// @return whether the system makes it
    [[nodiscard]] bool linkTo(const std::string& name, const std::string& to) const;
    [[nodiscard]] bool isOutsideUntouched() const;
    [[nodiscard]] const std::filesystem::path& target() const noexcept { return options.target; }

private:
    TemporaryFolder folder_;
    std::filesystem::path archive_;

public:
    UnpackOptions options;
    RecordingEvents events;
};

}  // namespace archiver::test
