#include "browser/password_presenter.h"

#include "shell/secret_text.h"

namespace tovar {

PasswordPresenter::PasswordPresenter(PasswordView& view) : view_(view) { password_.reserve(kLongestPassword + 1); }

PasswordPresenter::~PasswordPresenter() { wipe(password_); }

void PasswordPresenter::onLoad() {
    hasText_ = cancelled_ = false;
    view_.enableOk(false);
    view_.showCharacters(false);
}

void PasswordPresenter::onTextChanged(std::size_t length) {
    hasText_ = length > 0;
    view_.enableOk(hasText_);
}

void PasswordPresenter::onOk() {
    if (!hasText_) return;
    view_.readText(password_);
    cancelled_ = false;
    view_.close();
}

void PasswordPresenter::onCancel() {
    cancelled_ = true;
    view_.close();
}

}  // namespace tovar
