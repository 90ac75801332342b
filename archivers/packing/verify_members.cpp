#include "archivers/packing/verify_members.h"

#include <zlib.h>

#include <string_view>
#include <unordered_map>
#include <vector>

#include "archivers/unpacking/name_hash.h"

namespace archiver {
namespace {

struct Expected {
    const ExpectedMember* member = nullptr;
    bool found = false;
};

struct Hash {
    NameHash hash;
    std::size_t operator()(std::string_view text) const noexcept { return static_cast<std::size_t>(hash(text)); }
};

ReturnCode compare(ArchiveReader& reader, const ExpectedMember& expected, const std::function<bool()>& goOn) {
    std::uint64_t size = 0;
    uLong crc = 0;
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    const ReturnCode code = reader.read([&](const char* bytes, std::size_t count) {
        while (count > 0) {
            if (!goOn()) return false;
            const std::size_t piece = count < kPiece ? count : kPiece;
            crc = ::crc32_z(crc, reinterpret_cast<const Bytef*>(bytes), piece);
            size += piece;
            bytes += piece;
            count -= piece;
        }
        return true;
    });
    if (code != kOk) return code;
    return size == expected.size && (!expected.crc || *expected.crc == crc) ? kOk : kFileCrc;
}

}  // namespace

ReturnCode verifyMembers(OpenFunction open, const std::filesystem::path& archive,
                         std::span<const ExpectedMember> members, std::string_view password,
                         const std::function<bool()>& goOn) {
    if (members.empty()) return kOk;
    const OpenResult opened = open(archive);
    if (!opened.reader) return opened.code;
    ArchiveReader& reader = *opened.reader;
    reader.setPassword(password);

    std::unordered_map<std::string_view, Expected, Hash> wanted;
    wanted.reserve(members.size());
    for (const ExpectedMember& each : members) wanted[each.name] = {&each, false};
    Member member;
    ReturnCode code = kOk;
    while ((code = reader.next(member)) == kOk) {
        if (!goOn()) return kUserCancel;
        const auto at = wanted.find(member.name);
        if (at == wanted.end()) continue;
        at->second.found = true;
        if (member.kind == MemberKind::kFolder) continue;
        const ReturnCode compared = compare(reader, *at->second.member, goOn);
        if (compared != kOk) return compared;
    }
    if (code != kNoMoreEntries) return code;
    for (const auto& [name, expected] : wanted) {
        if (!expected.found) return kNotExist;
    }
    return kOk;
}

}  // namespace archiver
