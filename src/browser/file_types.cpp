#include "browser/file_types.h"

#include "shell/letter_case.h"
#include "shell/paths.h"

namespace tovar {

const FileType& KnownFileTypes::ofFile(std::wstring_view fileName) {
    std::wstring extension = foldCase(ExtensionPart(fileName));
    const auto known = byExtension_.find(extension);
    if (known != byExtension_.end()) return known->second;
    FileType type = desktop_.ofFile(fileName);
    return byExtension_.emplace(std::move(extension), std::move(type)).first->second;
}

const FileType& KnownFileTypes::ofFolder() {
    if (!folder_) folder_ = desktop_.ofFolder();
    return *folder_;
}

}  // namespace tovar
