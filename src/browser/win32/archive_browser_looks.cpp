#include "browser/win32/archive_browser_window.h"

#include <algorithm>
#include <utility>

#include "shell/scoped_flag.h"
#include "shell/win32/child_control.h"
#include "shell/win32/dpi.h"

// How the browser window looks: its fonts, its scale, and where its controls are.
namespace tovar {
namespace {

constexpr int kMargin = 4, kLeastWidth = 320, kLeastHeight = 200, kAddressRows = 12;  // at 96 dots per inch

}  // namespace

void fArcMain::applyFonts() {
    // The host's font lets messages run, and they may ask for other fonts.
    otherFontsWanted_ = true;
    if (givingFonts_) return;
    const ScopedFlag giving(givingFonts_);
    while (std::exchange(otherFontsWanted_, false) && hwnd() != nullptr) giveFonts();
}

void fArcMain::giveFonts() {
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
    // Only a window that is just coming up can wait for what pending messages do.
    (isLoaded_ ? ApplyFontQuietly : ApplyFont)(hwnd(), fontName_, fonts);
    isLoaded_ = true;
    std::swap(hostFonts_, fonts);
    menuBand_.fit(dpi_);
    toolbar_.fit(dpi_);
    list_.measureColumnsAnew();
    address_.fitList();
}

void fArcMain::setScale(int dpi) {
    dpi_ = dpi;
    tree_.setScale(dpi);
    list_.setScale(dpi);
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
    RECT client;
    if (status_ == nullptr || !::GetClientRect(hwnd(), &client)) return 0;
    followScale();
    // A window that comes up hears of the size that it has had all along.
    if (::EqualRect(&client, &laidOutIn_) == FALSE) layOut();
    return 0;
}

void fArcMain::layOut() {
    RECT client;
    if (status_ == nullptr || !::GetClientRect(hwnd(), &client)) return;
    laidOutIn_ = client;
    const int margin = scaled(kMargin, dpi_);
    ::SendMessageW(status_, WM_SIZE, 0, 0);
    ::InvalidateRect(status_, nullptr, TRUE);  // the size grip was elsewhere, and not every status bar takes it along
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
    const ControlPlace places[] = {
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
    placeControls(places);
}

std::optional<LRESULT> fArcMain::onMinimumSize(WPARAM, LPARAM lParam) {
    reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {scaled(kLeastWidth, dpi_), scaled(kLeastHeight, dpi_)};
    return 0;
}

HostSize fArcMain::sizeOfHost() const {
    RECT area{};
    ::GetClientRect(::GetAncestor(hwnd(), GA_PARENT), &area);
    return {static_cast<int>(area.right), static_cast<int>(area.bottom)};
}

HostedPlace fArcMain::placeInHost() const {
    RECT place{};
    ::GetWindowRect(hwnd(), &place);
    ::MapWindowPoints(HWND_DESKTOP, ::GetAncestor(hwnd(), GA_PARENT), reinterpret_cast<POINT*>(&place), 2);
    return {static_cast<int>(place.left), static_cast<int>(place.top), static_cast<int>(place.right - place.left),
            static_cast<int>(place.bottom - place.top)};
}

// Where the window follows its host from: every place that it was given by others, the user or the host itself. A host
// that lays it out on each of its own sizes thus has the last word.
std::optional<LRESULT> fArcMain::onMoving(WPARAM, LPARAM lParam) {
    constexpr UINT kStays = SWP_NOMOVE | SWP_NOSIZE;
    // A window that is put where it is already hears no more than this.
    return (reinterpret_cast<const WINDOWPOS*>(lParam)->flags & kStays) == kStays ? std::nullopt : onMoved(0, 0);
}

std::optional<LRESULT> fArcMain::onMoved(WPARAM, LPARAM) {
    if (!followingHost_ && !::IsIconic(hwnd())) {
        hostSize_ = sizeOfHost();
        hostedPlace_ = placeInHost();
    }
    return std::nullopt;
}

void fArcMain::onHostSized() {
    const HostSize now = sizeOfHost();
    if (now.width <= 0 || now.height <= 0 || ::IsIconic(hwnd())) return;
    HostedPlace place =
        followHost(hostedPlace_, hostSize_, now, {scaled(kLeastWidth, dpi_), scaled(kLeastHeight, dpi_)});
    if (::IsZoomed(hwnd())) {
        place = hostedPlace_;
        place.width += now.width - hostSize_.width;
        place.height += now.height - hostSize_.height;
    }
    const ScopedFlag following(followingHost_);
    ::SetWindowPos(hwnd(), nullptr, place.left, place.top, place.width, place.height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void fArcMain::onDesktopChanged(UINT message, WPARAM wParam, LPARAM lParam) {
    if (status_ == nullptr) return;
    for (HWND control = ::GetWindow(hwnd(), GW_CHILD); control != nullptr;
         control = ::GetWindow(control, GW_HWNDNEXT)) {
        ::SendMessageW(control, message, wParam, lParam);
    }
    switch (message) {
        case WM_SETTINGCHANGE: {
            const UniqueFont font(createMessageFont(dpi_));
            if (isSameFont(font.get(), systemFont_.get())) return;
            applyFonts();
            layOut();
            break;
        }
        case WM_DISPLAYCHANGE:
            followScale();
            break;
        default:
            list_.refreshColours();
            ::RedrawWindow(hwnd(), nullptr, nullptr, RDW_ERASE | RDW_FRAME | RDW_INVALIDATE | RDW_ALLCHILDREN);
    }
}

// Other styles have other borders and buttons.
std::optional<LRESULT> fArcMain::onStyleChanged(WPARAM, LPARAM) {
    layOut();
    return std::nullopt;
}

void fArcMain::onSplitterMoved() { layOut(); }

int fArcMain::onSplitterFit() { return tree_.widthOfTexts(); }

void fArcMain::onSplitterLeave(bool backwards) { moveFocus(backwards, FocusStops::Panes); }

}  // namespace tovar
