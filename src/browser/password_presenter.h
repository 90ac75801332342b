#pragma once
#include <cstddef>
#include <string>

namespace tovar {

/// The password dialog's window.
struct PasswordView {
    virtual ~PasswordView() = default;
    virtual void enableOk(bool enabled) = 0;
    /// Whether the characters can be read; hidden ones stand as dots.
    virtual void showCharacters(bool shown) = 0;
    virtual void focusText() = 0;
    /// Writes what is entered into the text, which has room for the longest entry: no copy stays elsewhere.
    virtual void readText(std::wstring& text) = 0;
    virtual void close() = 0;
};

/// What the password dialog knows and decides. The password is overwritten in memory when the presenter goes.
class PasswordPresenter {
public:
    static constexpr std::size_t kLongestPassword = 255;  ///< characters

    explicit PasswordPresenter(PasswordView& view);
    ~PasswordPresenter();
    PasswordPresenter(const PasswordPresenter&) = delete;
    PasswordPresenter& operator=(const PasswordPresenter&) = delete;

    void onLoad();
    void onActivate() { view_.focusText(); }
    /// @param length  characters that are entered now
    void onTextChanged(std::size_t length);
    void onShowCharacters(bool shown) { view_.showCharacters(shown); }
    void onOk();
    void onCancel();
    /// The dialog has ended without OK in another way, or could not be shown.
    void onGone() noexcept { cancelled_ = true; }

    /// The last confirmed entry.
    [[nodiscard]] const std::wstring& Password() const noexcept { return password_; }
    [[nodiscard]] bool Cancelled() const noexcept { return cancelled_; }

private:
    PasswordView& view_;
    std::wstring password_;
    bool hasText_ = false;
    bool cancelled_ = false;
};

}  // namespace tovar
