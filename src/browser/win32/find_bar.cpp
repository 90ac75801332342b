#include "browser/win32/find_bar.h"

// windows.h first
#include <commctrl.h>

#include <algorithm>
#include <iterator>

#include "browser/win32/browser_controls.h"
#include "browser/win32/text_extent.h"
#include "shell/win32/child_control.h"
#include "shell/win32/dpi.h"
#include "shell/win32/message_map.h"

namespace tovar {
namespace {

constexpr wchar_t kLabelText[] = L"Find:", kNextText[] = L"&Next", kPreviousText[] = L"&Previous",
                  kCloseText[] = L"Close";
constexpr std::size_t kLongestText = 260;  // no name is longer
constexpr UINT_PTR kSliceTimer = 1;

// At 96 dots per inch.
constexpr int kMargin = 4, kGap = 6, kButtonMargin = 12, kFieldMargin = 4, kFieldWidth = 240, kLeastFieldWidth = 60,
              kStateWidth = 90, kLeastStateWidth = 40;

// Black on a light red, whatever the desktop's colours are; those of a high contrast stay.
constexpr COLORREF kFailedText = RGB(0, 0, 0), kFailedField = RGB(255, 204, 204);

bool isHighContrast() noexcept {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    return ::SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

// A host that treats its window as a dialog would take Enter and Escape for its own buttons.
bool isDialogKey(LPARAM lParam) noexcept {
    const auto* const message = reinterpret_cast<const MSG*>(lParam);
    return message != nullptr && message->message == WM_KEYDOWN &&
           (message->wParam == VK_RETURN || message->wParam == VK_ESCAPE);
}

// Keys that were commands come once more, as characters that a text field of one line answers with a beep.
bool isKeyOfCommand(WPARAM character) noexcept {
    constexpr wchar_t kKeys[] = {L'\r', L'\n', L'\t', L'\x1B', L'F' - L'@'};
    return std::ranges::find(kKeys, static_cast<wchar_t>(character)) != std::end(kKeys);
}

}  // namespace

bool FindBar::create(HWND parent) {
    Description description;
    description.className = L"fArcMainFind";
    description.style = WS_CHILD | WS_CLIPCHILDREN;
    description.extendedStyle = WS_EX_CONTROLPARENT;
    description.parent = parent;
    if (!Window::create(description)) return false;
    ::SetWindowLongPtrW(hwnd(), GWLP_ID, kFindBar);
    ::SetWindowTextW(hwnd(), L"Find in the archive");  // for screen readers
    return true;
}

std::optional<LRESULT> FindBar::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    static constexpr MessageRoute<FindBar> routes[] = {
        {WM_CREATE, &FindBar::onCreate}, {WM_SIZE, &FindBar::onSize},       {WM_SETFOCUS, &FindBar::onFocus},
        {WM_TIMER, &FindBar::onTimer},   {WM_COMMAND, &FindBar::onCommand}, {WM_CTLCOLOREDIT, &FindBar::onFieldColour},
    };
    return dispatchMessage(*this, routes, message, wParam, lParam);
}

std::optional<LRESULT> FindBar::onCreate(WPARAM, LPARAM) {
    constexpr DWORD kButton = WS_TABSTOP | BS_PUSHBUTTON;
    label_ = createControl(hwnd(), L"STATIC", kLabelText, SS_CENTERIMAGE, 0, kFindLabel);
    edit_ = createControl(hwnd(), L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, kFindText);
    next_ = createControl(hwnd(), L"BUTTON", kNextText, kButton, 0, kFindNext);
    previous_ = createControl(hwnd(), L"BUTTON", kPreviousText, kButton, 0, kFindPrevious);
    state_ = createControl(hwnd(), L"STATIC", L"", SS_CENTERIMAGE | SS_ENDELLIPSIS | SS_NOPREFIX, 0, kFindState);
    close_ = createControl(hwnd(), L"BUTTON", kCloseText, kButton, 0, kFindClose);
    for (const HWND control : controls()) {
        if (control == nullptr) return -1;
    }
    for (const HWND control : {edit_, next_, previous_, close_}) {
        if (!::SetWindowSubclass(control, &keyProcedure, 1, reinterpret_cast<DWORD_PTR>(this))) return -1;
    }
    ::SendMessageW(edit_, EM_SETLIMITTEXT, kLongestText, 0);
    return 0;
}

std::vector<HWND> FindBar::tabStops() const {
    std::vector<HWND> stops;
    if (!isShown()) return stops;
    for (const HWND control : {edit_, next_, previous_, close_}) {
        if (::IsWindowEnabled(control)) stops.push_back(control);
    }
    return stops;
}

bool FindBar::contains(HWND window) const noexcept {
    return hwnd() != nullptr && (window == hwnd() || ::IsChild(hwnd(), window));
}

void FindBar::setScale(int dpi) {
    dpi_ = dpi;
    if (isShown()) layOut();
}

int FindBar::fieldHeight() const {
    RECT frame{};
    ::AdjustWindowRectEx(&frame, static_cast<DWORD>(::GetWindowLongPtrW(edit_, GWL_STYLE)), FALSE,
                         static_cast<DWORD>(::GetWindowLongPtrW(edit_, GWL_EXSTYLE)));
    return TextExtent(edit_).height() + frame.bottom - frame.top + scaled(kFieldMargin, dpi_);
}

int FindBar::height() const { return isShown() ? fieldHeight() + 2 * scaled(kMargin, dpi_) : 0; }

std::optional<LRESULT> FindBar::onSize(WPARAM, LPARAM) {
    if (isShown()) layOut();
    return 0;
}

// The field and the state share what the buttons leave: the field first has its least width, then the state as much as
// its shorter texts need, then the field its full width; the rest is the state's.
void FindBar::layOut() {
    RECT client;
    if (close_ == nullptr || !::GetClientRect(hwnd(), &client)) return;
    const int margin = scaled(kMargin, dpi_), gap = scaled(kGap, dpi_), fieldTop = margin, rowHeight = fieldHeight();
    const auto widthOf = [](HWND control, const wchar_t* text) { return TextExtent(control).widthOf(text); };
    const auto widthOfButton = [&](HWND button, const wchar_t* text) {
        return widthOf(button, text) + 2 * scaled(kButtonMargin, dpi_);
    };
    const int label = widthOf(label_, kLabelText), next = widthOfButton(next_, kNextText),
              previous = widthOfButton(previous_, kPreviousText), close = widthOfButton(close_, kCloseText);
    const int rest = static_cast<int>(client.right) - 2 * margin - 5 * gap - label - next - previous - close;
    const int field =
        std::clamp(rest - scaled(kStateWidth, dpi_), scaled(kLeastFieldWidth, dpi_), scaled(kFieldWidth, dpi_));
    const int state = std::max(rest - field, 0);
    const std::pair<HWND, int> row[] = {{label_, label},       {edit_, field},  {next_, next},
                                        {previous_, previous}, {state_, state}, {close_, close}};
    std::vector<ControlPlace> places;
    int left = margin;
    for (const auto& [control, width] : row) {
        // The first letters of a state say nothing; the colour of the field still does.
        const bool hasRoom = control != state_ || width >= scaled(kLeastStateWidth, dpi_);
        places.push_back({control, left, fieldTop, hasRoom ? width : 0, rowHeight});
        left += width + gap;
    }
    placeControls(places);
}

std::optional<LRESULT> FindBar::onFocus(WPARAM, LPARAM) {
    ::SetFocus(edit_);
    return 0;
}

std::optional<LRESULT> FindBar::onTimer(WPARAM, LPARAM) {
    presenter_.onSlice();
    return 0;
}

std::optional<LRESULT> FindBar::onCommand(WPARAM wParam, LPARAM) {
    static constexpr CommandRoute<FindBar> routes[] = {
        {kFindText, EN_CHANGE, &FindBar::onTextChanged},
        {kFindNext, BN_CLICKED, &FindBar::onNext},
        {kFindPrevious, BN_CLICKED, &FindBar::onPrevious},
        {kFindClose, BN_CLICKED, &FindBar::close},
    };
    return dispatchCommand(*this, routes, wParam) ? std::optional<LRESULT>(0) : std::nullopt;
}

std::optional<LRESULT> FindBar::onFieldColour(WPARAM context, LPARAM) {
    if (!failed_ || isHighContrast()) return std::nullopt;
    const auto device = reinterpret_cast<HDC>(context);
    ::SetTextColor(device, kFailedText);
    ::SetBkColor(device, kFailedField);
    ::SetDCBrushColor(device, kFailedField);
    return reinterpret_cast<LRESULT>(::GetStockObject(DC_BRUSH));
}

void FindBar::onListingGone() {
    if (hwnd() != nullptr) presenter_.onListingGone();
}

void FindBar::setShown(bool shown) {
    const HWND focus = ::GetFocus();
    const bool hasFocus = contains(focus);
    if (!hasFocus) formerFocus_ = focus;
    if (shown) layOut();
    ::ShowWindow(hwnd(), shown ? SW_SHOWNA : SW_HIDE);
    owner_.onFindBarShown();
    if (shown || !hasFocus) return;
    // The window gives it to the control that it thinks best when the former one is no more.
    const HWND parent = ::GetParent(hwnd());
    ::SetFocus(::IsChild(parent, formerFocus_) && !contains(formerFocus_) ? formerFocus_ : parent);
}

void FindBar::enterText() {
    if (const HWND focus = ::GetFocus(); !contains(focus)) formerFocus_ = focus;
    ::SetFocus(edit_);
    ::SendMessageW(edit_, EM_SETSEL, 0, -1);
}

void FindBar::enableMoves(bool enabled) {
    // A disabled button that has the keyboard keeps it from everybody.
    if (const HWND focus = ::GetFocus(); !enabled && (focus == next_ || focus == previous_)) ::SetFocus(edit_);
    ::EnableWindow(next_, enabled);
    ::EnableWindow(previous_, enabled);
}

void FindBar::showState(std::wstring_view text, bool failed) {
    if (hwnd() == nullptr) return;
    if (textOf(state_) != text) {
        ::SetWindowTextW(state_, std::wstring(text).c_str());
        if (!text.empty()) ::NotifyWinEvent(EVENT_SYSTEM_ALERT, state_, OBJID_CLIENT, CHILDID_SELF);
    }
    if (failed == failed_) return;
    failed_ = failed;
    ::InvalidateRect(edit_, nullptr, TRUE);
}

void FindBar::runSlices(bool running) {
    if (hwnd() == nullptr) return;  // a timer without a window is the host's
    if (running) {
        ::SetTimer(hwnd(), kSliceTimer, USER_TIMER_MINIMUM, nullptr);
    } else {
        ::KillTimer(hwnd(), kSliceTimer);
    }
}

LRESULT CALLBACK FindBar::keyProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                       DWORD_PTR data) noexcept {
    auto& bar = *reinterpret_cast<FindBar*>(data);
    try {
        switch (message) {
            case WM_KEYDOWN:
            case WM_SYSKEYDOWN:
                if (bar.onKey(control, strokeOf(wParam))) return 0;
                break;
            case WM_CHAR:
                if (isKeyOfCommand(wParam)) return 0;
                break;
            case WM_SYSCHAR:
                if (bar.onAltLetter(static_cast<wchar_t>(wParam))) return 0;
                break;
            case WM_SETFOCUS:
            case WM_KILLFOCUS:
                bar.owner_.onFindBarFocus();
                break;
            default:
                break;
        }
    } catch (...) {
        return 0;
    }
    if (message == WM_NCDESTROY) ::RemoveWindowSubclass(control, &keyProcedure, id);
    const LRESULT answer = ::DefSubclassProc(control, message, wParam, lParam);
    return message == WM_GETDLGCODE && isDialogKey(lParam) ? answer | DLGC_WANTMESSAGE : answer;
}

bool FindBar::onKey(HWND control, const KeyStroke& key) {
    if (key.alt) return keys_.onPaneKey(control, key);
    switch (static_cast<int>(key.key)) {
        case VK_ESCAPE:
            presenter_.onClose();
            return true;
        case VK_TAB:
            if (key.control) return false;
            owner_.onFindBarTab(key.shift);
            return true;
        case VK_RETURN:
            if (control == close_) {
                presenter_.onClose();
            } else if (key.shift || control == previous_) {
                presenter_.onPrevious();
            } else {
                presenter_.onNext();
            }
            return true;
        default:
            return keys_.onPaneKey(control, key);
    }
}

bool FindBar::onAltLetter(wchar_t letter) {
    switch (letter) {
        case L'n':
        case L'N':
            if (::IsWindowEnabled(next_)) presenter_.onNext();
            return true;
        case L'p':
        case L'P':
            if (::IsWindowEnabled(previous_)) presenter_.onPrevious();
            return true;
        default:
            return keys_.onPaneAltLetter(letter);
    }
}

}  // namespace tovar
