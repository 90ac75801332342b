#include "host/console/terminal_passwords.h"

#include "host/console/json_text.h"
#include "shell/secret_text.h"

namespace tovar::host {

std::optional<std::wstring> TerminalPasswords::ask(WindowHandle owner, std::wstring_view archive) {
    if (owner == nullptr || !input_) return std::nullopt;
    std::string question;
    appendPrintable(question, archive);
    question += ": password: ";
    return input_->ask(question);
}

std::optional<std::wstring> TerminalPasswords::askNew(std::wstring_view archive) {
    if (!input_) return std::nullopt;
    std::string question;
    appendPrintable(question, archive);
    auto password = input_->ask(question + ": new password: ");
    if (!password || password->empty()) return std::nullopt;
    auto again = input_->ask(question + ": once more: ");
    const bool same = again == password;
    if (again) wipe(*again);
    if (same) return password;
    wipe(*password);
    return std::nullopt;
}

}  // namespace tovar::host
