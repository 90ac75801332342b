#include "archivers/commands/win32/replace_dialog.h"

#include <algorithm>

#include "archivers/commands/win32/dialog_rows.h"

namespace archiver {

ReplaceAnswer ReplaceDialog::ask(HWND owner) noexcept {
    static constexpr struct {
        INT_PTR button;
        ReplaceAnswer answer;
    } kAnswers[] = {{IDYES, ReplaceAnswer::kYes},
                    {IDNO, ReplaceAnswer::kNo},
                    {kYesToAll, ReplaceAnswer::kAll},
                    {kNoToAll, ReplaceAnswer::kNone},
                    {kRename, ReplaceAnswer::kNumber}};
    const INT_PTR pressed = runModal(owner);
    for (const auto& each : kAnswers) {
        if (each.button == pressed) return each.answer;
    }
    return ReplaceAnswer::kCancel;
}

void ReplaceDialog::build() {
    icon_ = addIcon(IDI_QUESTION);
    heading_ = addHeading(texts::kReplaceHeading);
    path_ = addName(facts_.path);
    existingLabel_ = addLabel(texts::kExistingFile);
    existing_ = addData(facts_.existing);
    archivedLabel_ = addLabel(texts::kArchivedFile);
    archived_ = addData(facts_.archived);
    hint_ = addLabel(texts::kRenameHint);
    // Return presses the button that has the focus: at first the one that destroys nothing.
    buttons_ = {addButton(texts::kYes, IDYES),          addButton(texts::kNo, IDNO, BS_DEFPUSHBUTTON),
                addButton(texts::kYesToAll, kYesToAll), addButton(texts::kNoToAll, kNoToAll),
                addButton(texts::kRename, kRename),     addButton(texts::kCancel, IDCANCEL)};
    ::SendMessageW(window(), DM_SETDEFID, IDNO, 0);
    ::SetFocus(buttons_[1]);
}

SIZE ReplaceDialog::arrange(const DialogUnits& units, int widest) {
    const int margin = units.x(distance::kMargin);
    const int icon = ::MulDiv(32, dpiOf(window()), USER_DEFAULT_SCREEN_DPI);
    const int left = margin + icon + units.x(distance::kMargin);
    const int labels = widestText({existingLabel_, archivedLabel_});
    const int values = left + labels + units.x(distance::kIndent) + widestText({existing_, archived_}) + margin;
    const int wanted = std::max({values, buttonsWidth(units, buttons_) + 2 * margin, units.x(280)});
    const int width = std::min(wanted, widest);

    Rows rows(units, left, width - margin);
    place(icon_, margin, rows.top(), icon, icon);
    rows.row(&place, heading_);
    rows.row(&place, path_);
    rows.skip(distance::kGap);
    rows.row(&place, existingLabel_, labels, existing_);
    rows.row(&place, archivedLabel_, labels, archived_);
    rows.skip(distance::kGap);
    rows.row(&place, hint_);
    rows.skip(distance::kGap);
    return {width, placeButtons(units, buttons_, rows.top(), width) + units.y(distance::kMargin)};
}

bool ReplaceDialog::onCommand(WORD control, WORD notification) {
    if (notification != BN_CLICKED) return false;
    end(control);
    return true;
}

}  // namespace archiver
