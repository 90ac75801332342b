#pragma once
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drivers/interned_texts.h"

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

/// Asks the desktop once for each extension, letters of either case alike: an answer takes it a tenth of a millisecond
/// and more. Every answer has a number, from 0.
class KnownFileTypes {
public:
    explicit KnownFileTypes(FileTypes& desktop) : desktop_(desktop) {}

    /// @param fileName  without a path. The answer stays valid as long as the object lives.
    [[nodiscard]] const FileType& ofFile(std::wstring_view fileName) { return at(numberOf(fileName)); }
    [[nodiscard]] const FileType& ofFolder();

    /// @return the number of the file's type
    [[nodiscard]] std::uint32_t numberOf(std::wstring_view fileName);
    [[nodiscard]] std::uint32_t count() const noexcept { return static_cast<std::uint32_t>(types_.size()); }
    /// @param number  below count()
    [[nodiscard]] const FileType& at(std::uint32_t number) const { return types_[number].type; }

private:
    struct Answer {
        FileType type;
        bool given = false;
    };

    FileTypes& desktop_;
    InternedTexts written_;  ///< extensions as names have them
    std::vector<std::uint32_t> typeOfWritten_;
    InternedTexts folded_;      ///< extensions in lower case
    std::deque<Answer> types_;  ///< of each extension in lower case
    std::optional<FileType> folder_;
};

}  // namespace tovar
