#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tovar {

/// How the desktop shows files of one type.
struct FileType {
    int icon = 0;  ///< index in the system's image lists
    std::wstring name;
};

/// What the desktop knows of files by their names alone; none of them needs to exist.
class FileTypes {
public:
    virtual ~FileTypes() = default;
    [[nodiscard]] virtual FileType ofFile(std::wstring_view fileName) = 0;
    [[nodiscard]] virtual FileType ofFolder() = 0;
    [[nodiscard]] virtual int openFolderIcon() = 0;
};

/// Asks the desktop once for each extension: an answer takes it a tenth of a millisecond and more.
class KnownFileTypes {
public:
    explicit KnownFileTypes(FileTypes& desktop) : desktop_(desktop) {}

    /// @param fileName  without a path. The answer stays valid as long as the object lives.
    [[nodiscard]] const FileType& ofFile(std::wstring_view fileName);
    [[nodiscard]] const FileType& ofFolder();

private:
    FileTypes& desktop_;
    std::unordered_map<std::wstring, FileType> byExtension_;
    std::optional<FileType> folder_;
};

}  // namespace tovar
