#include "browser/member_opener.h"

#include "browser/member_list.h"
#include "browser/member_places.h"
#include "drivers/extract_lines.h"
#include "shell/list_file.h"
#include "shell/paths.h"

namespace tovar {
namespace {

constexpr std::wstring_view kTitle = L"Extraction Message";

/// A library would take the name for a switch or a list file.
bool needsList(std::wstring_view member) {
    constexpr std::wstring_view kMarks = L"-@!/";
    return kMarks.find(member.front()) != kMarks.npos || member.find(L'"') != member.npos;
}

}  // namespace

bool MemberOpener::open(const ArchiveScene& scene, std::uint32_t entry) {
    const std::wstring workFolder = ports_.workFolder.path();  // messages that run meanwhile may move it
    const std::wstring member = memberPath(scene, {.folder = {}, .entry = entry});
    if (workFolder.empty() || member.empty() || ports_.extraction.running()) return false;
    struct Place {
        std::wstring path;
        std::size_t missingFolders;
    };
    std::vector<Place> places;
    for (std::wstring& path : placesOf(member, workFolder.back())) {
        // What lay there before must not be taken for the member.
        const std::wstring file = workFolder + path;
        const auto attributes = ports_.files.attributes(file);
        if (attributes && (*attributes & attribute::kReadOnly) != 0) {
            ports_.files.setAttributes(file, attribute::kNormal);
        }
        if (attributes) ports_.files.deleteFile(file);
        const std::size_t missing = missingFolders(workFolder + path);
        places.push_back({std::move(path), missing});
    }
    if (places.empty() || !unpack(scene, member)) return false;
    for (const Place& place : places) {
        const std::wstring file = workFolder + place.path;
        if (!ports_.paths.IsPlainFile(file)) continue;
        ports_.copies.add(workFolder, place.path, place.missingFolders);
        return !ports_.extraction.cancelled() && ports_.launcher.OpenWithShell(file, false);
    }
    return false;
}

/// @return false when the member could not be told to the library
bool MemberOpener::unpack(const ArchiveScene& scene, const std::wstring& member) {
    const auto run = [&](const std::wstring& members, bool listed) {
        ports_.extraction.RunExtract(scene.driver,
                                     {.owner = scene.owner,
                                      .command = extractCommand(scene.driver.description().extract, {.listed = listed}),
                                      .archive = scene.archiveFile,
                                      .folder = ports_.workFolder.path(),
                                      .members = members});
    };
    const std::wstring argument = memberArgument(member);
    if (!needsList(member)) {
        run(argument, false);
        return true;
    }
    try {
        const ListFile list(argument, scene.driver.listCodec(), ports_.workFolder, ports_.files);
        run(list.argument(), true);
        return true;
    } catch (const SystemError& error) {
        ports_.messages.show(scene.owner, ports_.paths.SystemErrorText(error.code()), kTitle, MessageIcon::Exclamation);
        return false;
    }
}

std::size_t MemberOpener::missingFolders(const std::wstring& path) const {
    std::size_t missing = 0;
    for (std::wstring folder = ParentPath(path); !folder.empty();) {
        folder.pop_back();
        if (folder.size() < ports_.workFolder.path().size() || ports_.paths.IsFolder(folder)) break;
        ++missing;
        folder = ParentPath(folder);
    }
    return missing;
}

}  // namespace tovar
