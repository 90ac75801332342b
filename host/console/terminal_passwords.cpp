#include "host/console/terminal_passwords.h"

#include "host/console/json_text.h"

namespace tovar::host {

std::optional<std::wstring> TerminalPasswords::ask(WindowHandle owner, std::wstring_view archive) {
    if (owner == nullptr || !input_) return std::nullopt;
    std::string question;
    appendPrintable(question, archive);
    question += ": password: ";
    return input_->ask(question);
}

}  // namespace tovar::host
