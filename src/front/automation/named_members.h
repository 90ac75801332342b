#pragma once
#include <optional>
#include <string>
#include <vector>

#include "shell/file_system.h"
#include "shell/list_file.h"
#include "shell/text_codec.h"
#include "shell/work_folder.h"

namespace tovar {

/// The members that were named, as a library is told them: "*.*" for none, a name that needs no care by itself, and
/// everything else in a list file, which goes with the object.
class NamedMembers {
public:
    /// @param codec  of the library's list files
    /// @throws SystemError when a list file cannot be made or its names have no form in its code
    NamedMembers(const std::vector<std::wstring>& members, const TextCodec& codec, WorkFolder& workFolder,
                 FileSystem& files);

    [[nodiscard]] const std::wstring& argument() const { return argument_; }
    [[nodiscard]] bool isFile() const { return file_.has_value(); }

private:
    std::wstring argument_ = L"*.*";
    std::optional<ListFile> file_;
};

/// Members as rows of a list file.
[[nodiscard]] std::wstring memberRows(const std::vector<std::wstring>& members);

}  // namespace tovar
