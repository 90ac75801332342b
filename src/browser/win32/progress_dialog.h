#pragma once
#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "browser/progress_presenter.h"
#include "shell/win32/dialog.h"
#include "shell/win32/owner_pause.h"

namespace tovar {

/// The progress dialog `fArcProgress`. It stands over its owner while work runs in the same thread; meanwhile the owner
/// takes no input. Escape and the close box are Cancel, Enter is not. The object outlives each of its calls, whatever
/// messages run in it.
class fArcProgress final : public ArcProgress, private Dialog, private ProgressView, private MessagePump {
public:
    explicit fArcProgress(RegionalSettings regional);
    ~fArcProgress() override;

    /// Creates the dialog, hidden, in the middle of its owner.
    /// @param owner     null = none
    /// @param fontName  face name that the host wants; empty = that of the template
    /// @return false on failure
    bool load(HWND owner, std::wstring_view fontName);
    /// Shows the dialog. One that was put inside another window meanwhile stands in front of that one from now on, in
    /// the same place: as part of a window that takes no input it could not be cancelled.
    void show();
    /// Takes the dialog away without a cancel; the owner takes input again.
    void unload() { presenter_.onClose(); }

    /// @return null before load and once the dialog is closed
    [[nodiscard]] HWND hWnd() const noexcept { return hwnd(); }

    void SetCaption(std::wstring_view title) override { presenter_.SetCaption(title); }
    void Summary(std::wstring_view text) override { presenter_.Summary(text); }
    void SetPrg1(float processed, float total) override { presenter_.SetPrg1(processed, total); }
    [[nodiscard]] bool Canceled() const override { return presenter_.Canceled(); }
    void showFolder(std::wstring_view path) override { presenter_.showFolder(path); }
    void showFile(std::wstring_view name) override { presenter_.showFile(name); }

private:
    // Dialog
    void onLoad() override;
    bool onCommand(WPARAM wParam) override;
    std::optional<INT_PTR> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    // ProgressView
    void setCaption(std::wstring_view text) override;
    void setSummary(std::wstring_view text) override;
    void setFolder(std::wstring_view text) override;
    void setFile(std::wstring_view text) override;
    void setSize(std::wstring_view text) override;
    void setBar(int percentage) override;
    void close() override;

    // MessagePump
    void processPending() override;

    void onCancel() { presenter_.onCancel(); }
    /// The text of a label that may change faster than it can be read: in between it waits for a timer.
    struct HurriedLabel {
        int id;
        std::wstring text;
        bool waiting = false;  ///< the timer runs
        bool stale = false;    ///< the label shows an earlier text
    };

    void setLabel(int id, std::wstring_view text);
    void setLabel(HurriedLabel& label, std::wstring_view text);
    void onTimer(HurriedLabel& label);
    void standAlone();

    HWND owner_ = nullptr;
    std::unique_ptr<OwnerPause> pause_;  ///< while the dialog is shown
    HurriedLabel folder_, file_;
    ProgressPresenter presenter_;
};

}  // namespace tovar
