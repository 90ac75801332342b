#include "archivers/commands/win32/progress_window.h"

#include <commctrl.h>

#include <algorithm>

#include "archivers/commands/question_texts.h"

namespace archiver {

bool ProgressWindow::open(HWND owner) noexcept {
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_PROGRESS_CLASS};
    ::InitCommonControlsEx(&controls);
    const bool active = ::GetActiveWindow() != nullptr && ::GetActiveWindow() == ::GetAncestor(owner, GA_ROOT);
    if (!create(owner)) return false;
    ::ShowWindow(window(), active ? SW_SHOW : SW_SHOWNOACTIVATE);
    if (active) ::SetFocus(cancel_);
    return true;
}

void ProgressWindow::build() {
    archiveLabel_ = addLabel(texts::kArchive);
    archiveName_ = addName(archive_);
    fileLabel_ = addLabel(texts::kFile);
    fileName_ = addName({});
    bar_ = add(PROGRESS_CLASSW, {}, 0);
    ::SendMessageW(bar_, PBM_SETRANGE32, 0, 1000);
    amount_ = addData({});
    rate_ = add(L"STATIC", {}, SS_RIGHT | SS_NOPREFIX);
    remaining_ = addData({});
    cancel_ = addButton(texts::kCancel, IDCANCEL);
}

SIZE ProgressWindow::arrange(const DialogUnits& units, int widest) {
    const int width = std::min(units.x(280), widest);
    const int margin = units.x(7), line = units.y(8), gap = units.x(6);
    const int labels = widestText({archiveLabel_, fileLabel_});
    const int inner = width - 2 * margin;
    int y = units.y(7);
    const auto named = [&](HWND label, HWND name) {
        place(label, margin, y, labels, line);
        place(name, margin + labels + gap, y, inner - labels - gap, line);
        y += line + units.y(4);
    };
    named(archiveLabel_, archiveName_);
    named(fileLabel_, fileName_);
    y += units.y(2);
    place(bar_, margin, y, inner, units.y(10));
    y += units.y(10 + 6);
    place(amount_, margin, y, inner * 2 / 3, line);
    place(rate_, margin + inner * 2 / 3, y, inner - inner * 2 / 3, line);
    y += line + units.y(4);
    // Beside the button, whose text is in the middle of it.
    const int bottom = placeButtons(units, {cancel_}, y + units.y(3), width);
    place(remaining_, margin, y, inner - units.x(60), line);
    return {width, bottom + units.y(7)};
}

bool ProgressWindow::onCommand(WORD control, WORD notification) {
    if (control != IDCANCEL || notification != BN_CLICKED) return false;
    cancelled_ = true;
    setText(cancel_, texts::kCancelling);
    ::EnableWindow(cancel_, FALSE);
    return true;
}

void ProgressWindow::show(const ProgressPicture& picture, const std::string& member) {
    if (window() == nullptr) return;
    setText(window(), picture.title);
    setName(fileName_, member);
    ::SendMessageW(bar_, PBM_SETPOS, picture.perMille, 0);
    setText(amount_, picture.amount);
    setText(rate_, picture.rate);
    setText(remaining_, picture.remaining);
}

}  // namespace archiver
