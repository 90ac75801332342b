#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace archiver::test {

/// A member of one of the archives in tests/data/ace.
struct ExpectedMember {
    std::string name;
    std::uint64_t size = 0, packedSize = 0;
    unsigned method = 0;
    std::uint32_t checksum = 0;  ///< as stored
    std::string sha256;          ///< of the content
};

struct ExpectedArchive {
    std::string file;
    std::vector<ExpectedMember> members;
};

/// The archives in tests/data/ace and what is in them. Those named tiny- come from the original archiver, the others
/// from an encoder of our own; the hashes are those of the files that were packed, or, in modes.ace but for its first
/// member, of their beginnings, behind which the packed data was cut off.
const std::vector<ExpectedArchive>& expectedArchives();

/// One of them.
const ExpectedArchive& expectedArchive(const std::string& file);

}  // namespace archiver::test
