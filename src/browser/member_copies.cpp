#include "browser/member_copies.h"

#include "browser/member_list.h"
#include "browser/member_places.h"
#include "drivers/extract_lines.h"
#include "shell/list_file.h"
#include "shell/paths.h"

namespace tovar {

std::shared_ptr<const MemberCopies> MemberCopies::unpack(const Ports& ports, const ArchiveScene& scene,
                                                         const std::vector<ArchiveMember>& members) {
    if (members.empty() || ports.extraction.running()) return nullptr;
    try {
        auto copies = std::make_shared<const MemberCopies>(ports, ports.items.makeFolder());
        const ListFile list(memberListOf(scene, members), scene.driver.listCodec(), ports.workFolder, ports.files);
        ports.extraction.RunExtract(scene.driver,
                                    {.owner = scene.owner,
                                     .command = extractCommand(scene.driver.description().extract, {.listed = true}),
                                     .archive = scene.archiveFile,
                                     .folder = copies->folder(),
                                     .members = list.argument()});
        return ports.extraction.cancelled() ? nullptr : copies;
    } catch (const SystemError& error) {
        ports.messages.show(scene.owner, ports.paths.SystemErrorText(error.code()), kExtractionTitle,
                            MessageIcon::Exclamation);
        return nullptr;
    }
}

std::optional<std::wstring> MemberCopies::fileOf(std::wstring_view member) const {
    for (const std::wstring& place : placesOf(member, folder().back())) {
        std::wstring path = folder() + place;
        if (ports_.paths.IsPlainFile(path)) return path;
    }
    return std::nullopt;
}

std::optional<std::wstring> MemberCopies::folderOf(std::wstring_view key) const {
    if (key.size() < 3) return std::nullopt;
    for (const std::wstring& place : placesOf(key.substr(1, key.size() - 2), folder().back())) {
        std::wstring path = folder() + place;
        if (ports_.paths.IsFolder(path)) return path;
    }
    return std::nullopt;
}

}  // namespace tovar
