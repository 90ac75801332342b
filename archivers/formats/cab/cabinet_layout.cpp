#include "archivers/formats/cab/cabinet_layout.h"

namespace archiver::cab {

namespace {

constexpr std::size_t kMemberRowSize = 16;    // without the name
constexpr std::size_t kMostFolders = 0xFFFC;  // numbers from 0xFFFD on stand for members of two cabinets

}  // namespace

ReturnCode checkMember(const CabinetMember& member) noexcept {
    if (member.name.empty() || member.name.find('\0') != std::string::npos) return kNotFilename;
    if (member.name.size() > kMostNameBytes) return kLongFileName;
    return member.size > kMostFolderBytes ? kTooBig : kOk;
}

ReturnCode layOut(const std::vector<CabinetMember>& members, CabinetLayout& layout) {
    layout = {};
    if (members.size() > kMostMembers) return kTooManyFiles;
    layout.frontBytes = kHeaderSize;
    layout.folders.reserve(members.size());
    std::uint64_t used = 0;
    std::size_t folder = 0;
    for (const CabinetMember& member : members) {
        if (const ReturnCode code = checkMember(member); code != kOk) return code;
        if (member.size > kMostFolderBytes - used) {
            used = 0;
            if (++folder == kMostFolders) return kTooBig;
        }
        used += member.size;
        layout.folders.push_back(static_cast<std::uint16_t>(folder));
        layout.frontBytes += kMemberRowSize + member.name.size() + 1;
    }
    layout.folderCount = static_cast<std::uint16_t>(members.empty() ? 0 : folder + 1);
    layout.frontBytes += layout.folderCount * kFolderRowSize;
    return kOk;
}

}  // namespace archiver::cab
