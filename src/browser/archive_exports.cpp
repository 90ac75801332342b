#include "browser/archive_exports.h"

#include <memory>
#include <optional>

#include "browser/member_list.h"

namespace tovar {
namespace {

constexpr std::wstring_view kClipboardInUse = L"Another program uses the clipboard. Try it again.";

}  // namespace

ArchiveExports::ArchiveExports(const Ports& ports) : ports_(ports), drag_(ports.drag) {
    ports_.drag.copies.items.removeLeftOver();
}

ArchiveExports::~ArchiveExports() {
    drag_.cancel();
    ports_.drag.copies.items.removeLeftOver();
}

// What is pasted is what was selected, under its own name: members have the folders above them in the work folder only.
void ArchiveExports::copy(const ArchiveScene& scene, const std::vector<ArchiveMember>& members) {
    const auto copies = MemberCopies::unpack(ports_.drag.copies, scene, members);
    if (!copies) return;
    std::vector<std::wstring> paths;
    for (const ArchiveMember& member : members) {
        const std::wstring path = memberPath(scene, member);
        if (auto copy = member.folder ? copies->folderOf(path) : copies->fileOf(path)) {
            paths.push_back(std::move(*copy));
        }
    }
    if (paths.empty() || ports_.clipboard.put(copies, paths)) return;
    ports_.drag.copies.messages.show(scene.owner, kClipboardInUse, kExtractionTitle, MessageIcon::Exclamation);
}

}  // namespace tovar
