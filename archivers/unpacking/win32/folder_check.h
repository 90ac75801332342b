#pragma once
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_set>

#include "archivers/convention/return_codes.h"

namespace archiver {

/// The folders below the target. Each is looked at once, or made by us, before anything is done in it: none is a link.
class FolderCheck {
public:
    /// @param root  the target, as longPathOf gives it
    explicit FolderCheck(std::wstring root) : root_(std::move(root)) {}

    /// @param name  below the target, parts joined with "\"; empty for the target itself
    /// @return kOk when the folder is there; else kMakeDirectory, kLongFileName
    ReturnCode check(std::wstring_view name) {
        bool made = false;
        return enter(name, false, made);
    }
    /// Makes it, and what is missing above it. @param made  set when it was not there
    ReturnCode make(std::wstring_view name, bool& made) { return enter(name, true, made); }

    [[nodiscard]] const std::wstring& root() const noexcept { return root_; }
    /// @param name  below the target, parts joined with "\"; empty for the target itself
    [[nodiscard]] std::wstring pathOf(std::wstring_view name) const;

private:
    ReturnCode enter(std::wstring_view name, bool make, bool& made);

    std::wstring root_;
    std::mutex mutex_;
    std::unordered_set<std::wstring> known_;
    std::wstring last_;
};

}  // namespace archiver
