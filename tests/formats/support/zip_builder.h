#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace archiver::test {

/// A member as its headers are to be written, byte by byte; what is not given is as in a plain stored member.
struct BuiltMember {
    std::string name = {};
    std::string content = {};  ///< the packed bytes, as they are
    std::uint16_t madeBy = 0x031E;
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    std::uint16_t dosTime = 0x8BDD;  ///< 17:30:58
    std::uint16_t dosDate = 0x2AB1;  ///< 2001-05-17
    std::uint32_t externalAttributes = 0;
    std::string extra = {};    ///< of the directory's header
    std::string comment = {};  ///< of the directory's header
    bool sizesInZip64 = false;
    bool offsetInZip64 = false;
    std::optional<std::uint64_t> originalSize = {};  ///< instead of the content's
    std::optional<std::uint32_t> crc = {};           ///< likewise
    /// Where the directory says that the member is; it has no local header and no content then.
    std::optional<std::uint64_t> offset = {};
    /// What the local header says otherwise than the directory.
    struct Local {
        std::optional<std::string> name = {};
        std::string extra = {};
        std::optional<std::uint16_t> flags = {}, method = {};
        std::optional<std::uint32_t> crc = {}, packedSize = {}, originalSize = {};
    } local = {};
};

/// Builds ZIP archives that other programs do not write.
class ZipBuilder {
public:
    ZipBuilder& add(BuiltMember member);
    ZipBuilder& prefix(std::string bytes, bool adjustOffsets);
    /// Adds to every offset, for an archive that is to stand there in a file.
    ZipBuilder& startAt(std::uint64_t offset);
    ZipBuilder& comment(std::string text);
    /// Writes Zip64 end records, and all ones into the fields of the classic one.
    ZipBuilder& zip64();
    /// What the end record claims instead of the truth.
    ZipBuilder& claimEntries(std::uint16_t entries);

    [[nodiscard]] std::string build() const;

    static std::string field(std::uint16_t id, std::string_view data);
    static std::string number16(std::uint64_t value) { return number(value, 2); }
    static std::string number32(std::uint64_t value) { return number(value, 4); }
    static std::string number64(std::uint64_t value) { return number(value, 8); }
    /// Deflate data that holds the bytes as they are: stored blocks. Source: RFC 1951, 3.2.4
    static std::string deflateStored(std::string_view bytes);
    /// CRC-32 of ZIP, one bit at a time.
    static std::uint32_t crcOf(std::string_view bytes);

private:
    static std::string number(std::uint64_t value, int bytes);

    std::vector<BuiltMember> members_;
    std::string prefix_, comment_;
    std::uint64_t start_ = 0;
    bool adjustOffsets_ = false;
    bool zip64_ = false;
    int claimedEntries_ = -1;
};

}  // namespace archiver::test
