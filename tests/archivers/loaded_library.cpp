#include "archivers/loaded_library.h"

namespace archiver::testing {

std::vector<ListedMember> list(const LoadedLibrary& library, const std::string& file, std::int32_t& ended) {
    std::vector<ListedMember> members;
    const ArchiveHandle handle = library.call<fn::OpenArchive>("OpenArchive", nullptr, file.c_str(), 0U);
    ended = 0;
    if (handle == nullptr) {
        return members;
    }
    ListedMember member{};
    for (ended = library.call<fn::FindFirst>("FindFirst", handle, "*.*", &member.info); ended == 0;
         ended = library.call<fn::FindNext>("FindNext", handle, &member.info)) {
        member.writeTime = library.call<fn::GetHandleDword>("GetWriteTime", handle);
        member.attribute = library.call<fn::GetHandleInt>("GetAttribute", handle);
        members.push_back(member);
    }
    library.call<fn::CloseArchive>("CloseArchive", handle);
    return members;
}

std::string sample(const char* name) { return (programFolder() / "data" / "archivers" / name).string(); }

}  // namespace archiver::testing
