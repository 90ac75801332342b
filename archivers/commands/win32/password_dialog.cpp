#include "archivers/commands/win32/password_dialog.h"

#include <algorithm>

#include "archivers/commands/question_texts.h"
#include "archivers/commands/secret_text.h"
#include "archivers/commands/win32/dialog_rows.h"
#include "archivers/formats/utf8.h"

namespace archiver {

std::optional<std::string> PasswordDialog::ask(HWND owner) noexcept {
    const bool given = runModal(owner) == IDOK;
    if (!given || password_.empty()) return std::nullopt;
    return std::move(password_);
}

void PasswordDialog::build() {
    heading_ = addHeading(texts::kPasswordHeading);
    archiveLabel_ = addLabel(texts::kArchive);
    archiveName_ = addName(archive_);
    fileLabel_ = addLabel(texts::kFile);
    fileName_ = addName(member_);
    if (wrong_) wrongLabel_ = addLabel(texts::kPasswordWrong);
    passwordLabel_ = addLabel(texts::kPassword);
    edit_ = add(L"EDIT", {}, ES_PASSWORD | ES_AUTOHSCROLL | WS_TABSTOP, kEdit, WS_EX_CLIENTEDGE);
    show_ = addButton(texts::kShowPassword, kShow, BS_AUTOCHECKBOX);
    buttons_ = {addButton(texts::kOk, IDOK, BS_DEFPUSHBUTTON), addButton(texts::kCancel, IDCANCEL)};
    ::SendMessageW(window(), DM_SETDEFID, IDOK, 0);
    hidingCharacter_ = static_cast<WPARAM>(::SendMessageW(edit_, EM_GETPASSWORDCHAR, 0, 0));
    ::SendMessageW(edit_, EM_SETLIMITTEXT, kLongestPassword, 0);
    // Room for the longest text from the start: a control that grows leaves copies of the text where it was.
    ::SetWindowTextW(edit_, std::wstring(kLongestPassword, L' ').c_str());
    wipeEdit();
    ::EnableWindow(buttons_[0], FALSE);
    ::SetFocus(edit_);
}

SIZE PasswordDialog::arrange(const DialogUnits& units, int widest) {
    const int margin = units.x(distance::kMargin);
    const int width = std::min(units.x(260), widest);
    const int labels = widestText({archiveLabel_, fileLabel_, passwordLabel_});
    const int values = margin + labels + units.x(distance::kIndent);

    Rows rows(units, margin, width - margin);
    rows.row(&place, heading_);
    rows.skip(distance::kGap);
    rows.row(&place, archiveLabel_, labels, archiveName_);
    rows.row(&place, fileLabel_, labels, fileName_);
    rows.skip(distance::kGap);
    if (wrongLabel_ != nullptr) rows.row(&place, wrongLabel_);
    place(passwordLabel_, margin, rows.top() + units.y(2), labels, units.y(distance::kLine));
    place(edit_, values, rows.top(), width - margin - values, units.y(12));
    rows.next(12 + distance::kGap);
    place(show_, values, rows.top(), width - margin - values, units.y(10));
    rows.next(10 + distance::kMargin);
    return {width, placeButtons(units, buttons_, rows.top(), width) + units.y(distance::kMargin)};
}

bool PasswordDialog::onCommand(WORD control, WORD notification) {
    if (control == kEdit && notification == EN_CHANGE) {
        ::EnableWindow(buttons_[0], ::GetWindowTextLengthW(edit_) > 0);
        return true;
    }
    if (notification != BN_CLICKED) return false;
    if (control == kShow) {
        const bool shown = ::SendMessageW(show_, BM_GETCHECK, 0, 0) == BST_CHECKED;
        ::SendMessageW(edit_, EM_SETPASSWORDCHAR, shown ? 0 : hidingCharacter_, 0);
        ::InvalidateRect(edit_, nullptr, TRUE);
        return true;
    }
    if (control == IDOK) {
        if (::GetWindowTextLengthW(edit_) == 0) return true;
        takePassword();
    }
    wipeEdit();
    end(control);
    return true;
}

void PasswordDialog::takePassword() {
    wchar_t typed[kLongestPassword + 1];
    const int length = ::GetWindowTextW(edit_, typed, kLongestPassword + 1);
    password_.reserve(kLongestPassword * 3);
    appendUtf8(std::wstring_view(typed, static_cast<std::size_t>(std::max(length, 0))), password_);
    wipe(typed, sizeof typed);
}

/// Overwrites what the control holds, and what it would bring back on "undo".
void PasswordDialog::wipeEdit() noexcept {
    wchar_t blanks[kLongestPassword + 1];
    std::fill_n(blanks, kLongestPassword, L' ');
    blanks[kLongestPassword] = L'\0';
    ::SetWindowTextW(edit_, blanks);
    ::SetWindowTextW(edit_, L"");
    ::SendMessageW(edit_, EM_EMPTYUNDOBUFFER, 0, 0);
}

}  // namespace archiver
