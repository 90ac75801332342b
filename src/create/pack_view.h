#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "create/pack_lines.h"
#include "shell/window_handle.h"

namespace tovar {

/// What a file dialog is to show.
struct ArchiveQuestion {
    std::wstring_view title, filter;  ///< the filter's texts and patterns stand between "|"
    std::wstring_view extension;      ///< of a name without one
    std::wstring archive;             ///< what it begins with; may be empty
};

/// An entry of the list of levels.
struct PackLevel {
    std::wstring_view text;
    int level = 0;
};

/// The pack dialog as its presenter sees it.
class PackView {
public:
    virtual ~PackView() = default;

    [[nodiscard]] virtual WindowHandle hWnd() const = 0;
    virtual void fillPackers(const std::vector<std::wstring_view>& texts) = 0;
    virtual void fillActions(const std::vector<std::wstring_view>& texts) = 0;
    virtual void fillLevels(const std::vector<PackLevel>& levels) = 0;
    virtual void selectPacker(int index) = 0;
    virtual void selectAction(int index) = 0;
    virtual void selectLevel(int index) = 0;
    virtual void enableAction(bool enabled) = 0;
    virtual void enableLevel(bool enabled) = 0;
    virtual void enableOption(PackOption option, bool enabled) = 0;
    virtual void checkOption(PackOption option, bool checked) = 0;
    virtual void setArchive(std::wstring_view path) = 0;
    virtual void setNames(const std::vector<std::wstring>& names) = 0;

    /// @return the file that was chosen; empty when there is none
    [[nodiscard]] virtual std::wstring askArchive(const ArchiveQuestion& question) = 0;
    /// @return full paths of the files that were chosen
    [[nodiscard]] virtual std::vector<std::wstring> askNames(const std::wstring& folder) = 0;
    /// Shows what the library wrote, for reading and copying; returns when it is closed.
    virtual void showMessages(WindowHandle owner, std::wstring_view text) = 0;
    virtual void hide() = 0;
    virtual void close() = 0;
};

}  // namespace tovar
