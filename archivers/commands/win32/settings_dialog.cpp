#include "archivers/commands/win32/settings_dialog.h"

#include <algorithm>

#include "archivers/commands/question_texts.h"
#include "archivers/commands/win32/dialog_rows.h"
#include "archivers/commands/win32/wide_text.h"

namespace archiver {

std::optional<LibrarySettings> SettingsDialog::ask(HWND owner) noexcept {
    if (runModal(owner) != IDOK) return std::nullopt;
    return settings_;
}

void SettingsDialog::build() {
    choices_ = processorChoices(processorsOfMachine_, settings_.processors);
    progress_ = addButton(texts::kShowProgress, kProgress, BS_AUTOCHECKBOX);
    ::SendMessageW(progress_, BM_SETCHECK, settings_.showProgress ? BST_CHECKED : BST_UNCHECKED, 0);
    processorsLabel_ = addLabel(texts::kProcessors);
    processors_ = add(L"COMBOBOX", {}, CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP, kProcessors);
    for (std::size_t index = 0; index < choices_.size(); ++index) {
        ::SendMessageW(processors_, CB_ADDSTRING, 0,
                       reinterpret_cast<LPARAM>(wideOf(processorText(choices_[index])).c_str()));
        if (choices_[index] == settings_.processors) ::SendMessageW(processors_, CB_SETCURSEL, index, 0);
    }
    buttons_ = {addButton(texts::kOk, IDOK, BS_DEFPUSHBUTTON), addButton(texts::kCancel, IDCANCEL)};
    ::SendMessageW(window(), DM_SETDEFID, IDOK, 0);
    ::SetFocus(progress_);
}

SIZE SettingsDialog::arrange(const DialogUnits& units, int widest) {
    const int margin = units.x(distance::kMargin);
    const int labels = widestText({processorsLabel_});
    const int list = units.x(50);
    const int wanted = std::max({2 * margin + labels + units.x(distance::kIndent) + list,
                                 2 * margin + widestText({progress_}) + units.x(16), units.x(180)});
    const int width = std::min(wanted, widest);
    const int values = margin + labels + units.x(distance::kIndent);

    Rows rows(units, margin, width - margin);
    place(progress_, margin, rows.top(), width - 2 * margin, units.y(10));
    rows.next(10 + distance::kMargin);
    place(processorsLabel_, margin, rows.top() + units.y(2), labels, units.y(distance::kLine));
    // A drop-down list's height is that of its open form.
    place(processors_, values, rows.top(), std::min(list, width - margin - values), units.y(100));
    rows.next(14 + 2 * distance::kMargin);
    return {width, placeButtons(units, buttons_, rows.top(), width) + units.y(distance::kMargin)};
}

bool SettingsDialog::onCommand(WORD control, WORD notification) {
    if (notification != BN_CLICKED || (control != IDOK && control != IDCANCEL)) return false;
    if (control == IDOK) {
        settings_.showProgress = ::SendMessageW(progress_, BM_GETCHECK, 0, 0) == BST_CHECKED;
        const LRESULT chosen = ::SendMessageW(processors_, CB_GETCURSEL, 0, 0);
        if (chosen >= 0 && static_cast<std::size_t>(chosen) < choices_.size()) {
            settings_.processors = choices_[static_cast<std::size_t>(chosen)];
        }
    }
    end(control);
    return true;
}

}  // namespace archiver
