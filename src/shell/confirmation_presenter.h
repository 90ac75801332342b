#pragma once
#include <exception>

#include "shell/confirmation.h"

namespace tovar {

struct ConfirmationView {
    virtual ~ConfirmationView() = default;
    virtual void setCaption(std::wstring_view text) = 0;
    /// The texts that the user reads before he answers.
    virtual void show(const Confirmation& confirmation) = 0;
    /// The question is answered: from now on the dialog shows that work runs, and can be neither answered nor closed.
    virtual void showWorking() = 0;
    [[nodiscard]] virtual WindowHandle window() const = 0;
    virtual void close() = 0;
};

/// The rules of the dialog that asks before work and stays until it is done.
class ConfirmationPresenter {
public:
    /// All outlive the presenter.
    ConfirmationPresenter(ConfirmationView& view, const Confirmation& confirmation, const Confirmations::Work& work)
        : view_(view), confirmation_(confirmation), work_(work) {}

    void onLoad();
    void onYes();
    /// Escape and the close box are No too.
    void onNo();

    /// @return whether the user has agreed
    [[nodiscard]] bool agreed() const noexcept { return agreed_; }
    /// Throws what the work has thrown.
    void rethrow() const;

private:
    ConfirmationView& view_;
    const Confirmation& confirmation_;
    const Confirmations::Work& work_;
    bool answered_ = false, agreed_ = false;
    std::exception_ptr failure_;
};

}  // namespace tovar
