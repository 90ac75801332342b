#include "shell/confirmation_presenter.h"

#include "shell/component_name.h"

namespace tovar {

void ConfirmationPresenter::onLoad() {
    view_.setCaption(kComponentName);
    view_.show(confirmation_);
}

void ConfirmationPresenter::onYes() {
    // Messages run in the work: a second click may have been on its way.
    if (answered_) return;
    answered_ = agreed_ = true;
    view_.setCaption(confirmation_.progress);
    view_.showWorking();
    try {
        if (work_) work_(view_.window());
    } catch (...) {
        // The dialog has to go before anybody hears of it.
        failure_ = std::current_exception();
    }
    view_.close();
}

void ConfirmationPresenter::onNo() {
    if (answered_) return;
    answered_ = true;
    view_.close();
}

void ConfirmationPresenter::rethrow() const {
    if (failure_) std::rethrow_exception(failure_);
}

}  // namespace tovar
