#pragma once
#include <windows.h>
// windows.h first
#include <commctrl.h>
#include <shellapi.h>
#include <shlobj.h>

#include <string>
#include <string_view>

#include "shell/file_type_name.h"

namespace tovar {

/// An item of the desktop shell: a path, or the number that stands for it (its identifier list).
class ShellItem {
public:
    ShellItem(std::wstring_view path) : path_(path) {}
    ShellItem(const std::wstring& path) : path_(path) {}
    ShellItem(const wchar_t* path) : path_(path) {}
    ShellItem(PCIDLIST_ABSOLUTE list) : list_(list) {}

    /// The item as SHGetFileInfo takes it.
    [[nodiscard]] const wchar_t* argument() const noexcept {
        return list_ != nullptr ? reinterpret_cast<const wchar_t*>(list_) : path_.c_str();
    }
    [[nodiscard]] UINT flags() const noexcept { return list_ != nullptr ? SHGFI_PIDL : 0; }

private:
    std::wstring path_;
    PCIDLIST_ABSOLUTE list_ = nullptr;
};

/// SHGetFileInfo, with SHGFI_PIDL for an identifier list.
/// @return the call's result; 0 on failure
DWORD_PTR ShellFileInfo(const ShellItem& item, UINT flags, SHFILEINFOW& info);

/// @param sizeFlag  SHGFI_SMALLICON or SHGFI_LARGEICON
/// @return the shell's own image list of that size, never to be destroyed; null on failure
[[nodiscard]] HIMAGELIST SystemImageList(UINT sizeFlag);

/// @param pixels  how large an icon is to be
/// @return the shell's own image list of the largest icons that are not larger; that of the smallest ones when all are.
///         An icon has the same place in all of them. Never to be destroyed; null on failure
[[nodiscard]] HIMAGELIST SystemImageListOfSize(int pixels);

/// @return the item's place in the system image lists; 0 on failure
[[nodiscard]] int SystemIconIndex(const ShellItem& item, UINT flags);

/// @return the shell's name for the type of an existing item; empty on failure
[[nodiscard]] std::wstring ShellTypeName(const ShellItem& item);

/// FileTypeName with the desktop's own words.
[[nodiscard]] std::wstring FileTypeName(std::wstring_view name);

/// A name for which the shell answers as for the given one, short enough for its calls: the extension alone decides.
[[nodiscard]] std::wstring shortFileName(std::wstring_view name);

/// The words of the running desktop.
class SystemTypeNames final : public ShellTypeNames {
public:
    [[nodiscard]] std::wstring ofName(std::wstring_view name) const override;
    [[nodiscard]] std::wstring ofTempFolder() const override;
};

}  // namespace tovar
