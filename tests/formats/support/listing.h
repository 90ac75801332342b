#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "archivers/formats/archive_reader.h"

namespace archiver::test {

/// What a walk over an archive gave.
struct Listing {
    std::vector<Member> members;
    ReturnCode end = kOk;  ///< what ended the walk, or kept the archive from being opened

    [[nodiscard]] std::vector<std::string> names() const;
};

/// Walks a reader to the end of its members.
Listing walk(ArchiveReader& reader);

/// Opens nothing when the result holds no reader.
Listing walk(OpenResult result);

/// The current member's bytes and what `read` answered.
struct Unpacked {
    std::string bytes;
    ReturnCode code = kOk;
};
Unpacked unpack(ArchiveReader& reader);

/// Goes to the first member of that name and unpacks it; code kNotExist when there is none.
Unpacked unpack(ArchiveReader& reader, std::string_view name);

/// What all members that can be detached hold, read by as many threads at once.
struct DetachedMember {
    std::string name;
    Unpacked unpacked;
};
std::vector<DetachedMember> unpackDetached(ArchiveReader& reader);

/// The lines of a text file, without their ends.
std::vector<std::string> lines(std::string_view text);

/// A member in the form of the listings in tests/data/zip.
std::string zipLine(const Member& member);

/// A member in the form of the listings in tests/data/tar, without the permissions that the reader does not give: kind
/// and owner's right to write. Times are UTC.
std::string tarLine(const Member& member);
/// A line of such a listing, brought down to the same.
std::string tarLine(std::string_view listed);

}  // namespace archiver::test
