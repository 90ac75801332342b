#include "archivers/formats/lzh/stored_members.h"

#include "archivers/formats/lzh/header.h"
#include "archivers/formats/lzh/header_search.h"
#include "archivers/formats/lzh/member_fields.h"

namespace archiver::lzh {

ReturnCode readStoredMembers(const InputFile& file, std::uint64_t& start, std::vector<StoredMember>& members) {
    start = 0;
    char mark = 1;
    if (file.size() == 1 && file.readAll(0, {&mark, 1}) && mark == '\0') return kOk;
    ReturnCode code = findFirstHeader(file, start);
    if (code != kOk) return code;
    std::uint64_t position = start;
    Header header;
    while ((code = readHeader(file, position, header)) == kOk) {
        if (header.dataOffset > file.size() || header.packedSize > file.size() - header.dataOffset)
            return kHeaderBroken;
        StoredMember& stored = members.emplace_back();
        if (header.hasName()) fillMember(header, stored.member);
        stored.offset = position;
        position = stored.end = header.dataOffset + header.packedSize;
    }
    return code == kNoMoreEntries ? kOk : code;
}

}  // namespace archiver::lzh
