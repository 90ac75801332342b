#include "archivers/commands/win32/disk_space_dialog.h"

#include <algorithm>

#include "archivers/commands/question_texts.h"
#include "archivers/commands/win32/dialog_rows.h"

namespace archiver {

void DiskSpaceDialog::build() {
    icon_ = addIcon(IDI_WARNING);
    heading_ = addHeading(texts::kDiskHeading);
    neededLabel_ = addLabel(texts::kDiskNeeded);
    needed_ = addData(neededText_);
    availableLabel_ = addLabel(texts::kDiskAvailable);
    available_ = addData(availableText_);
    question_ = addLabel(texts::kDiskQuestion);
    buttons_ = {addButton(texts::kContinue, IDOK), addButton(texts::kCancel, IDCANCEL, BS_DEFPUSHBUTTON)};
    ::SendMessageW(window(), DM_SETDEFID, IDCANCEL, 0);
    ::SetFocus(buttons_[1]);
}

SIZE DiskSpaceDialog::arrange(const DialogUnits& units, int widest) {
    const int margin = units.x(distance::kMargin);
    const int icon = ::MulDiv(32, dpiOf(window()), USER_DEFAULT_SCREEN_DPI);
    const int left = margin + icon + units.x(distance::kMargin);
    const int labels = widestText({neededLabel_, availableLabel_});
    const int values = left + labels + units.x(distance::kIndent) + widestText({needed_, available_}) + margin;
    const int wanted = std::max({values, left + widestText({heading_}) + margin, units.x(180)});
    const int width = std::min(wanted, widest);

    Rows rows(units, left, width - margin);
    place(icon_, margin, rows.top(), icon, icon);
    rows.row(&place, heading_);
    rows.skip(distance::kGap);
    rows.row(&place, neededLabel_, labels, needed_);
    rows.row(&place, availableLabel_, labels, available_);
    rows.skip(distance::kGap);
    rows.row(&place, question_);
    rows.skip(distance::kGap);
    return {width, placeButtons(units, buttons_, rows.top(), width) + units.y(distance::kMargin)};
}

bool DiskSpaceDialog::onCommand(WORD control, WORD notification) {
    if (notification != BN_CLICKED) return false;
    end(control);
    return true;
}

}  // namespace archiver
