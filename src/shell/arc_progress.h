#pragma once
#include <memory>
#include <string_view>

#include "shell/window_handle.h"

namespace tovar {

/// The progress dialog `fArcProgress`, as a running operation sees it. Its texts may be set at any time; what is set
/// after the dialog has closed is not shown any more.
class ArcProgress {
public:
    virtual ~ArcProgress() = default;

    virtual void SetCaption(std::wstring_view title) = 0;
    /// One line about the whole operation, shown in lower case. An empty text leaves what is there.
    virtual void Summary(std::wstring_view text) = 0;
    /// Shows how far the operation is and lets pending window messages run, so that the user can cancel.
    /// @param processed  bytes; one that is negative or no number leaves the amount as it was
    /// @param total      bytes; likewise. Nothing is shown while it is 0.
    virtual void SetPrg1(float processed, float total) = 0;
    /// Whether the user gave up, or the window that the dialog belongs to is gone.
    [[nodiscard]] virtual bool Canceled() const = 0;

    /// The folder and the file that the operation is at; too long ones are shortened in the middle.
    virtual void showFolder(std::wstring_view path) = 0;
    virtual void showFile(std::wstring_view name) = 0;
};

/// Makes progress dialogs.
class ProgressDialogs {
public:
    virtual ~ProgressDialogs() = default;
    /// Shows a dialog. Its owner takes no input until the dialog is closed, which its destruction does at the latest.
    /// @return never null; a dialog that could not be created is never cancelled
    [[nodiscard]] virtual std::unique_ptr<ArcProgress> show(WindowHandle owner) = 0;
};

}  // namespace tovar
