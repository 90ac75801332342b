#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "shell/window_handle.h"

namespace tovar {

/// Which members are extracted; the numbers are those of `optExtract`.
enum class MemberScope { Selected = 0, All = 1, Matching = 2 };

/// The extraction dialog as its presenter sees it.
class UnpackView {
public:
    virtual ~UnpackView() = default;

    [[nodiscard]] virtual WindowHandle hWnd() const = 0;
    virtual void setCaption(std::wstring_view caption) = 0;
    virtual void check(bool overwrite, bool keepFolders) = 0;
    virtual void enableOverwrite(bool enabled) = 0;
    virtual void choose(MemberScope scope) = 0;
    virtual void enableSelected(bool enabled) = 0;
    virtual void setPattern(std::wstring_view pattern) = 0;
    virtual void enablePattern(bool enabled) = 0;
    /// Selects a folder in the tree, which reports its selection.
    virtual void showInTree(const std::wstring& folder) = 0;
    /// Writes the target folder above the tree.
    virtual void showFolder(std::wstring_view folder) = 0;
    virtual void enableOk(bool enabled) = 0;
    virtual void enableNewFolder(bool enabled) = 0;

    /// Asks whether there is such a folder.
    /// @return nullopt where that takes long, as on another computer: the presenter's onFolderAnswer gets the answer
    ///         then, unless something else was asked before
    [[nodiscard]] virtual std::optional<bool> askForFolder(const std::wstring& folder) = 0;

    /// Lets the user make a folder.
    /// @param parent  where; gets a separator at its end
    /// @return its name; empty when there is none
    [[nodiscard]] virtual std::wstring promptNewFolder(std::wstring& parent) = 0;
    virtual void hide() = 0;
    virtual void close() = 0;
};

}  // namespace tovar
