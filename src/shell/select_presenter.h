#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "shell/folder_tree_presenter.h"
#include "shell/path_operations.h"

namespace tovar {

/// A rectangle in a window, in pixels.
struct SelectBox {
    int left = 0, top = 0, width = 0, height = 0;
    bool operator==(const SelectBox&) const = default;
};

/// Where the controls of the folder selection are.
struct SelectLayout {
    SelectBox browser, ok, cancel;
};

class SelectView {
public:
    virtual ~SelectView() = default;
    virtual void enableOk(bool enabled) = 0;
    /// Shows a folder in the browser.
    virtual void showFolder(const std::wstring& folder) = 0;
    virtual void close() = 0;
};

/// The rules of the dialog that lets the user pick a folder.
class SelectPresenter {
public:
    /// Both must outlive the object.
    SelectPresenter(SelectView& view, PathOperations& paths) : view_(view), paths_(paths) {}

    /// True unless the dialog was closed with OK.
    [[nodiscard]] bool Canceled() const noexcept { return canceled_; }
    /// The folder to begin with before the dialog is shown, the chosen one afterwards.
    [[nodiscard]] const std::wstring& Folder() const noexcept { return folder_; }
    void setFolder(std::wstring_view folder) { folder_ = folder; }
    /// The chosen names, relative to the folder, CR LF between them.
    [[nodiscard]] const std::wstring& FileList() const noexcept { return fileList_; }

    void onLoad();
    /// The browser shows another folder.
    /// @param folder  nullopt: no folder of the file system
    /// @param state   only of one that is there it is asked once more; of others the answer could take long
    void onFolderChanged(std::optional<std::wstring> folder, FolderState state = FolderState::There);
    /// @param names  relative to the current folder, CR LF between them
    void onNamesSelected(const std::wstring& names) { names_ = names; }
    void onOk();
    void onCancel();

    /// The browser fills what is above the buttons; these keep their size and go with the lower right corner.
    /// @param width, height  of the client area
    /// @param button         size of each button
    /// @param margin         around all and between browser and buttons
    /// @param gap            between the buttons
    [[nodiscard]] static SelectLayout layOut(int width, int height, const SelectBox& button, int margin, int gap);

private:
    [[nodiscard]] std::wstring existingNames() const;

    SelectView& view_;
    PathOperations& paths_;
    bool canceled_ = true;  // also when the dialog goes with its owner
    std::wstring folder_, fileList_, names_;
};

}  // namespace tovar
