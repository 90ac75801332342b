#pragma once
#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

#include "browser/archive_actions.h"
#include "browser/unpack_presenter.h"
#include "shell/win32/dialog.h"
#include "shell/win32/folder_tree_view.h"
#include "shell/win32/form_anchors.h"
#include "shell/win32/side_thread.h"

namespace tovar {

/// Asks where to extract members to, and how, and does it.
class fArcUnPack final : public Dialog, private UnpackView {
public:
    /// @param fontName  face name that the host wants; empty = the dialog's own
    fArcUnPack(const UnpackJob& job, std::wstring_view fontName) : job_(job), fontName_(fontName) {}

    /// Shows a folder selected in the folder tree.
    void SetFolder(std::wstring_view path);
    /// @param list  the selected members, one a line; empty when there are none. Before the dialog is shown.
    void SetFiles(std::wstring_view list) { presenter_.SetFiles(list); }
    /// @return the target folder that was chosen
    [[nodiscard]] const std::wstring& GetFolder() const noexcept { return presenter_.GetFolder(); }

    /// Shows the dialog over the job's owner and returns when it is closed, its work included.
    void ask();
    /// Closes the dialog, and what it has opened, as Cancel does.
    void cancel() noexcept;

private:
    void onLoad() override;
    bool onCommand(WPARAM wParam) override;
    std::optional<INT_PTR> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void onTree();
    void onTimer();
    void onSelected() { presenter_.onScope(MemberScope::Selected); }
    void onAll() { presenter_.onScope(MemberScope::All); }
    void onMatching() { presenter_.onScope(MemberScope::Matching); }
    void onPattern();
    void onOverwrite() { presenter_.onOverwrite(isChecked(0)); }
    void onKeepFolders() { presenter_.onKeepFolders(isChecked(1)); }
    void onNewFolder() { presenter_.onNewFolder(); }
    void onOk() { presenter_.onOk(); }
    void onCancel() { presenter_.onCancel(); }
    [[nodiscard]] bool isChecked(int option) const;

    [[nodiscard]] WindowHandle hWnd() const override { return hwnd(); }
    void setCaption(std::wstring_view caption) override;
    void check(bool overwrite, bool keepFolders) override;
    void enableOverwrite(bool enabled) override;
    void choose(MemberScope scope) override;
    void enableSelected(bool enabled) override;
    void setPattern(std::wstring_view pattern) override;
    void enablePattern(bool enabled) override;
    void showInTree(const std::wstring& folder) override;
    void showFolder(std::wstring_view folder) override;
    void enableOk(bool enabled) override;
    void enableNewFolder(bool enabled) override;
    [[nodiscard]] std::optional<bool> askForFolder(const std::wstring& folder) override;
    [[nodiscard]] std::wstring promptNewFolder(std::wstring& parent) override;
    void hide() override;
    void close() override;

    void enable(int id, bool enabled);

    const UnpackJob& job_;
    std::wstring fontName_;
    WenFolderTreeView tree_;
    FormAnchors anchors_;
    SideWork<bool> lateAnswers_{[] { return false; }};
    UnpackPresenter presenter_{*this, job_};
};

/// Shows real dialogs.
class WindowsUnpackDialogs final : public UnpackDialogs {
public:
    std::wstring show(const UnpackJob& job, const std::wstring& folder, const std::wstring& files,
                      const std::wstring& fontName) override;
    void closeAll() noexcept override;

private:
    fArcUnPack* shown_ = nullptr;
};

}  // namespace tovar
