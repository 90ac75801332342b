#pragma once
#include <string>
#include <vector>

#include "shell/file_system.h"
#include "shell/text_codec.h"
#include "shell/work_folder.h"

namespace tovar::host {

/// The members that were named, as a library is told them: "*.*" for none, a name that needs no care by itself, and
/// everything else in a list file, which goes with the object.
class MemberList {
public:
    /// @param codec  of the library's list files
    /// @throws SystemError when a list file cannot be made or its names have no form in its code
    MemberList(const std::vector<std::wstring>& members, const TextCodec& codec, WorkFolder& workFolder,
               FileSystem& files);
    ~MemberList();
    MemberList(const MemberList&) = delete;
    MemberList& operator=(const MemberList&) = delete;

    [[nodiscard]] const std::wstring& argument() const { return argument_; }
    [[nodiscard]] bool isFile() const { return !file_.empty(); }

private:
    FileSystem& files_;
    std::wstring argument_ = L"*.*";
    std::wstring file_;
};

}  // namespace tovar::host
