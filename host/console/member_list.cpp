#include "host/console/member_list.h"

#include "drivers/extract_lines.h"
#include "shell/paths.h"

namespace tovar::host {
namespace {

constexpr SystemErrorCode kNotFound = 2;  ///< in Windows and elsewhere

/// Whether a name can stand in a command line: it is one word there, and none that means something else.
bool standsAlone(std::wstring_view name) {
    constexpr std::wstring_view kMarks = L"-@!/";  // of switches and list files
    return !name.empty() && kMarks.find(name.front()) == kMarks.npos && name.find_first_of(L" \t,;\"") == name.npos;
}

}  // namespace

MemberList::MemberList(const std::vector<std::wstring>& members, const TextCodec& codec, WorkFolder& workFolder,
                       FileSystem& files)
    : files_(files) {
    if (members.empty()) return;
    if (members.size() == 1 && standsAlone(members.front())) {
        argument_ = memberArgument(members.front());
        return;
    }
    std::wstring rows;
    for (const std::wstring& member : members) rows += memberArgument(member) + L"\r\n";
    file_ = workFolder.WriteTempListFile(rows, codec);
    if (file_.empty()) throw SystemError(kNotFound);
    argument_ = L'@' + QuoteIfNeeded(file_);
}

MemberList::~MemberList() {
    if (!file_.empty()) files_.deleteFile(file_);
}

}  // namespace tovar::host
