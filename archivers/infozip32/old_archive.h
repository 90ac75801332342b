#pragma once
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "archivers/formats/input_file.h"

namespace archiver::infozip {

/// A member of the archive that is changed, with all that is needed to copy it as it is.
struct OldMember {
    std::string header;       ///< of the directory, whole
    std::string name;         ///< UTF-8, "/" between its parts
    std::uint64_t start = 0;  ///< in the file, of the local header
    std::uint64_t end = 0;    ///< behind the data and what follows it
    std::optional<Moment> written;
    bool exactTime = false;  ///< `written` has seconds, not steps of two
    bool folder = false;
};

/// The archive that is changed: its members as stored, where they lie, what stands in front of them, and its comment.
class OldArchive {
public:
    /// @param repair  looks for members by their local headers where the directory is missing or does not hold; members
    ///                that are not whole are left out
    /// @return kOk; kNotFindArcFile; kArcFileOpen; kFileStyle, kHeaderBroken, kNotSupport for what is no archive, is a
    ///         damaged one or one of several volumes; kCannotRead
    ReturnCode open(const std::filesystem::path& archive, bool repair);
    void close() noexcept { file_.reset(); }

    [[nodiscard]] const InputFile& file() const noexcept { return *file_; }
    [[nodiscard]] std::vector<OldMember>& members() noexcept { return members_; }
    /// Bytes in front of the first member: a program that unpacks it, or nothing.
    [[nodiscard]] std::uint64_t prefix() const noexcept { return prefix_; }
    [[nodiscard]] const std::string& comment() const noexcept { return comment_; }

private:
    ReturnCode readDirectory();
    ReturnCode findEnds(std::uint64_t directory);
    void scan();
    [[nodiscard]] bool fits(OldMember& member, std::uint64_t limit) const;

    std::unique_ptr<InputFile> file_;
    std::vector<OldMember> members_;
    std::uint64_t prefix_ = 0;
    std::string comment_;
};

}  // namespace archiver::infozip
