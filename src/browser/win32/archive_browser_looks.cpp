#include "browser/win32/archive_browser_window.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "shell/win32/dpi.h"

// How the browser window looks: its fonts, its scale, and where its controls are.
namespace tovar {
namespace {

constexpr int kMargin = 4, kLeastWidth = 320, kLeastHeight = 200, kAddressRows = 12;  // at 96 dots per inch

}  // namespace

void fArcMain::applyFonts() {
    UniqueFont font(createMessageFont(dpi_));
    if (font != nullptr) {
        for (const HWND control : {menuBand_.hwnd(), toolbar_.hwnd(), address_.label(), address_.hwnd(), tree_.hwnd(),
                                   list_.hwnd(), status_}) {
            ::SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
        }
        for (const HWND control : find_.controls()) {
            ::SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
        }
        std::swap(systemFont_, font);
    }
    FormFonts fonts;
    ApplyFont(hwnd(), fontName_, fonts);
    std::swap(hostFonts_, fonts);
}

void fArcMain::setScale(int dpi) {
    dpi_ = dpi;
    toolbar_.setScale(dpi);
    applyFonts();
    find_.setScale(dpi);
    layOut();
}

// As a child the window may come to a screen of another scale, or into a host of another, without a message.
void fArcMain::followScale() {
    const int now = dpiOf(hwnd());
    if (now == systemDpi_) return;
    systemDpi_ = now;
    setScale(now);
}

std::optional<LRESULT> fArcMain::onScaleChanged(WPARAM wParam, LPARAM lParam) {
    systemDpi_ = dpiOf(hwnd());
    setScale(LOWORD(wParam));
    const auto* const place = reinterpret_cast<const RECT*>(lParam);
    if (place != nullptr) {
        ::SetWindowPos(hwnd(), nullptr, place->left, place->top, place->right - place->left, place->bottom - place->top,
                       SWP_NOZORDER | SWP_NOACTIVATE);
    }
    return 0;
}

std::optional<LRESULT> fArcMain::onScaleOfHostChanged(WPARAM, LPARAM) {
    followScale();
    return 0;
}

std::optional<LRESULT> fArcMain::onSize(WPARAM, LPARAM) {
    if (status_ == nullptr) return 0;
    followScale();
    layOut();
    return 0;
}

void fArcMain::layOut() {
    RECT client;
    if (status_ == nullptr || !::GetClientRect(hwnd(), &client)) return;
    const int margin = scaled(kMargin, dpi_);
    ::SendMessageW(status_, WM_SIZE, 0, 0);
    RECT status, box;
    ::GetWindowRect(status_, &status);
    ::GetWindowRect(address_.hwnd(), &box);
    const SIZE menus = menuBand_.size(), buttons = toolbar_.size();
    const int boxHeight = box.bottom - box.top;
    const int rowHeight = std::max<int>(buttons.cy, boxHeight);
    const int labelLeft = margin + buttons.cx + 2 * margin, labelWidth = address_.labelWidth();
    const int boxLeft = labelLeft + labelWidth + 2 * margin;
    const int rowTop = static_cast<int>(menus.cy) + margin;
    const int panesTop = rowTop + rowHeight + margin;
    const int findHeight = find_.height();
    const int paneHeight = std::max<int>(client.bottom - (status.bottom - status.top) - findHeight - panesTop, 0);
    splitter_.layOut(client.right, dpi_);
    const int barLeft = splitter_.left(), barRight = splitter_.right();
    struct Place {
        HWND control;
        int x, y, width, height;
    };
    const Place places[] = {
        {menuBand_.hwnd(), 0, 0, menus.cx, menus.cy},
        {toolbar_.hwnd(), margin, rowTop + (rowHeight - static_cast<int>(buttons.cy)) / 2, buttons.cx, buttons.cy},
        {address_.label(), labelLeft, rowTop + (rowHeight - boxHeight) / 2, labelWidth, boxHeight},
        {address_.hwnd(), boxLeft, rowTop + (rowHeight - boxHeight) / 2,
         std::max<int>(client.right - boxLeft - margin, 0), boxHeight * kAddressRows},
        {tree_.hwnd(), 0, panesTop, barLeft, paneHeight},
        {splitter_.hwnd(), barLeft, panesTop, barRight - barLeft, paneHeight},
        {list_.hwnd(), barRight, panesTop, std::max<int>(client.right - barRight, 0), paneHeight},
        {find_.hwnd(), 0, panesTop + paneHeight, client.right, findHeight},
    };
    HDWP positions = ::BeginDeferWindowPos(static_cast<int>(std::size(places)));
    for (const Place& place : places) {
        if (positions == nullptr) return;
        positions = ::DeferWindowPos(positions, place.control, nullptr, place.x, place.y, place.width, place.height,
                                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
    if (positions != nullptr) ::EndDeferWindowPos(positions);
}

std::optional<LRESULT> fArcMain::onMinimumSize(WPARAM, LPARAM lParam) {
    reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {scaled(kLeastWidth, dpi_), scaled(kLeastHeight, dpi_)};
    return 0;
}

void fArcMain::onSplitterMoved() { layOut(); }

int fArcMain::onSplitterFit() { return tree_.widthOfTexts(); }

void fArcMain::onSplitterLeave(bool backwards) { moveFocus(backwards); }

}  // namespace tovar
