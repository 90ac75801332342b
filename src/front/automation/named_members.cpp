#include "front/automation/named_members.h"

#include "drivers/extract_lines.h"
namespace tovar {
namespace {

/// Whether a name can stand in a command line: it is one word there, and none that means something else.
bool standsAlone(std::wstring_view name) {
    constexpr std::wstring_view kMarks = L"-@!/";  // of switches and list files
    return !name.empty() && kMarks.find(name.front()) == kMarks.npos && name.find_first_of(L" \t,;\"") == name.npos;
}

}  // namespace

NamedMembers::NamedMembers(const std::vector<std::wstring>& members, const TextCodec& codec, WorkFolder& workFolder,
                           FileSystem& files) {
    if (members.empty()) return;
    if (members.size() == 1 && standsAlone(members.front())) {
        argument_ = memberArgument(members.front());
        return;
    }
    file_.emplace(memberRows(members), codec, workFolder, files);
    argument_ = file_->argument();
}

std::wstring memberRows(const std::vector<std::wstring>& members) {
    std::wstring rows;
    for (const std::wstring& member : members) rows += memberArgument(member) + L"\r\n";
    return rows;
}

}  // namespace tovar
