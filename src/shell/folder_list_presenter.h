#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/folder_contents.h"

namespace tovar {

/// The control that shows what is inside a folder, a row each.
class FolderListDisplay {
public:
    virtual ~FolderListDisplay() = default;

    /// Other rows are to be shown; the control asks for them. What was selected is not any more. While the folder is
    /// being read, a row tells so.
    virtual void showRows(std::uint32_t count) = 0;
    virtual void selectRows(const std::vector<std::uint32_t>& rows) = 0;
    /// @return in ascending order
    [[nodiscard]] virtual std::vector<std::uint32_t> selectedRows() const = 0;

    /// @param names  relative to the folder, CR LF between them; empty when nothing is selected
    virtual void namesSelected(const std::wstring& names) = 0;
    /// The user wants to see another folder.
    virtual void folderOpened(const std::wstring& path) = 0;
};

/// The list of what is inside a folder.
class FolderListPresenter {
public:
    /// Both must outlive the object.
    FolderListPresenter(FolderContents& contents, FolderListDisplay& display)
        : contents_(contents), display_(display) {}

    /// @param path  nullopt: nothing is shown
    void showFolder(std::optional<std::wstring> path);

    /// @return empty when none is shown
    [[nodiscard]] const std::wstring& folder() const noexcept { return folder_; }
    [[nodiscard]] const std::vector<FolderFile>& files() const noexcept { return files_; }
    /// @return whether what is inside is not known yet: there are no files then, and one row that tells so
    [[nodiscard]] bool isReading() const noexcept { return reading_ && files_.empty(); }
    /// @param start  the first row that is looked at; the search goes on at the top
    /// @return the row whose name begins with a text, whatever its case; nullopt when there is none
    [[nodiscard]] std::optional<std::uint32_t> findName(std::wstring_view beginning, std::uint32_t start) const;

    // What the control tells.
    void onSelectionChanged();
    void onOpened(std::uint32_t row);
    /// Time to look whether something has changed on the disk, or an answer has come in.
    void onTick();
    /// Looks at the folder anew; what is selected remains so as far as it is still there.
    void refresh();

private:
    void show(FolderContents::Files files);
    void ask();

    FolderContents& contents_;
    FolderListDisplay& display_;
    std::wstring folder_, selected_;  ///< the names that were told last
    std::vector<FolderFile> files_;
    bool reading_ = false;
    bool changed_ = false;  ///< since it was asked for
};

}  // namespace tovar
