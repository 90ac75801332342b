#include "browser/member_list.h"

#include "drivers/extract_lines.h"

namespace tovar {

std::wstring memberPath(const ArchiveScene& scene, const ArchiveMember& member) {
    if (member.folder) return scene.folders.key(*member.folder);
    const EntryTable& entries = scene.driver.entries();
    std::wstring path(entries.path(member.entry));
    if (path == L"\\") path.clear();
    return path.append(std::wstring(entries.name(member.entry)));
}

std::wstring memberListOf(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) {
    std::wstring list;
    for (const ArchiveMember& member : members) list.append(memberArgument(memberPath(scene, member))).append(L"\r\n");
    return list;
}

}  // namespace tovar
