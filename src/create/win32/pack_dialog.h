#pragma once
#include <windows.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "create/pack_presenter.h"
#include "shell/win32/dialog.h"
#include "shell/win32/form_anchors.h"

namespace tovar {

/// Asks which archive to create of which files, by which packer and how, and does it.
class fArcPack final : public Dialog, private PackView {
public:
    /// @param fontName  face name that the host wants; empty = the dialog's own
    fArcPack(const PackJob& job, std::wstring_view fontName) : job_(job), fontName_(fontName) {}

    /// Shows the dialog over the job's owner and returns when it is closed, its work included.
    void ask();
    /// Closes the dialog, and what it has opened, as Cancel does.
    void cancel() noexcept;
    /// Nothing happens while it is at work and hidden.
    void bringToFront() noexcept;

private:
    void onLoad() override;
    bool onCommand(WPARAM wParam) override;
    std::optional<INT_PTR> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void onPacker();
    void onAction();
    void onLevel();
    void onRecurse() { onOption(PackOption::Recurse); }
    void onFolderInfo() { onOption(PackOption::FolderInfo); }
    void onPassword() { onOption(PackOption::Password); }
    void onSystem() { onOption(PackOption::SystemAndHidden); }
    void onFullMessage() { onOption(PackOption::FullMessage); }
    void onOption(PackOption option);
    void onArchive();
    void onBrowse() { presenter_.onBrowse(); }
    void onPickNames() { presenter_.onPickNames(); }
    void onRemoveNames();
    void onOk() { presenter_.onOk(); }
    void onCancel() { presenter_.onCancel(); }

    [[nodiscard]] WindowHandle hWnd() const override { return hwnd(); }
    void fillPackers(const std::vector<std::wstring_view>& texts) override;
    void fillActions(const std::vector<std::wstring_view>& texts) override;
    void fillLevels(const std::vector<PackLevel>& levels) override;
    void selectPacker(int index) override;
    void selectAction(int index) override;
    void selectLevel(int index) override;
    void enableAction(bool enabled) override;
    void enableLevel(bool enabled) override;
    void enableOption(PackOption option, bool enabled) override;
    void checkOption(PackOption option, bool checked) override;
    void setArchive(std::wstring_view path) override;
    void setNames(const std::vector<std::wstring>& names) override;
    [[nodiscard]] std::wstring askArchive(const ArchiveQuestion& question) override;
    [[nodiscard]] std::vector<std::wstring> askNames(const std::wstring& folder) override;
    void showMessages(WindowHandle owner, std::wstring_view text) override;
    void hide() override;
    void close() override;

    void fill(int list, const std::vector<std::wstring_view>& texts);
    void select(int list, int index);
    [[nodiscard]] int selected(int list) const;
    void enable(int id, bool enabled);

    const PackJob& job_;
    std::wstring fontName_;
    FormAnchors anchors_;
    PackPresenter presenter_{*this, job_};
};

}  // namespace tovar
