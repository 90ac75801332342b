#pragma once
#include <string>
#include <vector>

#include "browser/file_types.h"

namespace tovar::test {

/// A desktop that knows text files (icon 3) and folders (icons 1 and 2); everything else is a "File" with icon 4.
class FakeFileTypes final : public FileTypes {
public:
    std::vector<std::wstring> asked;  ///< file names, in order
    int askedForFolder = 0;

    [[nodiscard]] FileType ofFile(std::wstring_view fileName) override {
        asked.emplace_back(fileName);
        return fileName.ends_with(L".txt") ? FileType{3, L"Text Document"} : FileType{4, L"File"};
    }
    [[nodiscard]] FileType ofFolder() override {
        ++askedForFolder;
        return {1, L"File Folder"};
    }
    [[nodiscard]] int openFolderIcon() override { return 2; }
};

}  // namespace tovar::test
