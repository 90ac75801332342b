#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "shell/arc_progress.h"
#include "shell/message_pump.h"
#include "shell/regional.h"

namespace tovar {

/// The progress dialog's window. Without a window nothing happens.
struct ProgressView {
    virtual ~ProgressView() = default;
    virtual void setCaption(std::wstring_view text) = 0;
    virtual void setSummary(std::wstring_view text) = 0;
    virtual void setFolder(std::wstring_view text) = 0;
    virtual void setFile(std::wstring_view text) = 0;
    virtual void setSize(std::wstring_view text) = 0;
    /// @param percentage  0 to 100
    virtual void setBar(int percentage) = 0;
    virtual void close() = 0;
};

/// What the progress dialog knows and decides.
class ProgressPresenter final : public ArcProgress {
public:
    /// @param regional  how digits are grouped; both others outlive the presenter
    ProgressPresenter(ProgressView& view, MessagePump& pump, RegionalSettings regional)
        : view_(view), pump_(pump), regional_(std::move(regional)) {}

    /// The window is there: everything begins anew but for the title.
    void onLoad();
    void onCancel();
    /// The window is gone. Unless onClose() came before, that is a cancel too: the operation must not go on unseen.
    void onGone();
    /// The operation is over.
    void onClose();

    void SetCaption(std::wstring_view title) override;
    void Summary(std::wstring_view text) override;
    void SetPrg1(float processed, float total) override;
    [[nodiscard]] bool Canceled() const override { return canceled_; }
    void showFolder(std::wstring_view path) override;
    void showFile(std::wstring_view name) override;

private:
    void refresh();

    ProgressView& view_;
    MessagePump& pump_;
    RegionalSettings regional_;
    std::wstring title_;
    float value_ = 0, maximum_ = 0;  ///< bytes
    std::optional<int> shownPercentage_;
    bool open_ = false;
    bool canceled_ = false;
};

}  // namespace tovar
