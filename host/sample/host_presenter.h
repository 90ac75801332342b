#pragma once
#include <filesystem>
#include <string>
#include <vector>

#include "host/sample/archive_component.h"

namespace tovar::host {

/// One row of the folder list.
struct FolderItem {
    std::wstring name;
    bool isFolder = false;
    std::uintmax_t size = 0;  ///< bytes; 0 for a folder
};

/// What the window shows; it decides nothing.
class HostView {
public:
    virtual ~HostView() = default;
    virtual void showFolder(const std::wstring& path, const std::vector<FolderItem>& items) = 0;
    virtual void showStatus(const std::wstring& text) = 0;
};

/// Reads a folder's items.
class FolderReader {
public:
    virtual ~FolderReader() = default;
    /// @return false when the folder cannot be read
    virtual bool read(const std::filesystem::path& folder, std::vector<FolderItem>& items) = 0;
};

/// What the sample host knows and decides: which folder is shown, what a double-click does, what the component is
/// asked.
class HostPresenter {
public:
    HostPresenter(HostView& view, ArchiveComponent& component, FolderReader& reader)
        : view_(view), component_(component), reader_(reader) {}

    /// Shows a folder: folders first, each group by name. A folder that cannot be read leaves the old one shown.
    /// @return whether it could be read
    bool showFolder(const std::filesystem::path& folder);

    /// Opens an item of the shown folder: a folder is entered, a file is offered to the component.
    void open(std::size_t index);
    void goUp();

    /// Hands a file to the component.
    /// @return whether the archive browser came up
    bool openFile(const std::filesystem::path& file);

    /// Asks for a new archive of the items; it is proposed beside them, named after the first.
    void compress(const std::vector<std::size_t>& indexes);
    void configure() { component_.configure(); }

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }
    [[nodiscard]] const std::vector<FolderItem>& items() const { return items_; }

private:
    HostView& view_;
    ArchiveComponent& component_;
    FolderReader& reader_;
    std::filesystem::path folder_;
    std::vector<FolderItem> items_;
};

}  // namespace tovar::host
