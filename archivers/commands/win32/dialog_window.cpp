#include "archivers/commands/win32/dialog_window.h"

#include <algorithm>

#include "archivers/commands/shown_names.h"
#include "archivers/commands/win32/wide_text.h"

namespace archiver {
namespace {

constexpr UINT kDpiChanged = 0x02E0;  // WM_DPICHANGED, which older headers lack

/// A dialog without controls, menu and class of its own.
struct EmptyTemplate {
    DLGTEMPLATE header;
    WORD menu, windowClass, title;
};
constexpr EmptyTemplate kTemplate{{.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_NOFAILCREATE,
                                   .dwExtendedStyle = 0,
                                   .cdit = 0,
                                   .x = 0,
                                   .y = 0,
                                   .cx = 0,
                                   .cy = 0},
                                  0,
                                  0,
                                  0};

SIZE extentOf(HDC context, const std::wstring& text) noexcept {
    SIZE size{};
    ::GetTextExtentPoint32W(context, text.c_str(), static_cast<int>(text.size()), &size);
    size.cx += size.cx / 24;  // hinted fonts are drawn a little wider on some systems than they are measured
    return size;
}

/// A device context with a control's font.
class MeasuringContext {
public:
    explicit MeasuringContext(HWND control) noexcept : control_(control), context_(::GetDC(control)) {
        const auto font = reinterpret_cast<HFONT>(::SendMessageW(control, WM_GETFONT, 0, 0));
        if (font != nullptr) before_ = ::SelectObject(context_, font);
    }
    ~MeasuringContext() {
        if (before_ != nullptr) ::SelectObject(context_, before_);
        ::ReleaseDC(control_, context_);
    }
    MeasuringContext(const MeasuringContext&) = delete;
    MeasuringContext& operator=(const MeasuringContext&) = delete;
    [[nodiscard]] HDC get() const noexcept { return context_; }

private:
    HWND control_;
    HDC context_;
    HGDIOBJ before_ = nullptr;
};

std::wstring textOf(HWND control) {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(control)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(::GetWindowTextW(control, text.data(), static_cast<int>(text.size()))));
    return text;
}

constexpr UINT_PTR kOwnerTimer = 1;
constexpr UINT kOwnerInterval = 200;  ///< milliseconds

LONG within(LONG place, LONG length, LONG low, LONG high) noexcept {
    return std::max(low, std::min(place, high - length));
}

}  // namespace

HINSTANCE ownModule() noexcept {
    static const char anchor = 0;
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<const wchar_t*>(&anchor), &module);
    return module;
}

DialogWindow::DialogWindow(std::string_view title) : title_(wideOf(shownName(title))) {}

INT_PTR DialogWindow::runModal(HWND owner) noexcept {
    owner_ = owner;
    result_ = 0;
    modal_ = true;
    ::DialogBoxIndirectParamW(ownModule(), &kTemplate.header, owner, &DialogWindow::procedure,
                              reinterpret_cast<LPARAM>(this));
    return result_;  // the system's own result says anything when the loop has ended otherwise
}

void DialogWindow::end(INT_PTR result) noexcept {
    result_ = result;
    ::EndDialog(window_, result);
}

bool DialogWindow::create(HWND owner) noexcept {
    owner_ = owner;
    return ::CreateDialogIndirectParamW(ownModule(), &kTemplate.header, owner, &DialogWindow::procedure,
                                        reinterpret_cast<LPARAM>(this)) != nullptr;
}

void DialogWindow::destroy() noexcept {
    if (window_ == nullptr) return;
    const HWND window = window_;
    window_ = nullptr;  // the object's own class may be gone already: no message reaches it any more
    ::SetWindowLongPtrW(window, DWLP_USER, 0);
    ::DestroyWindow(window);
}

INT_PTR CALLBACK DialogWindow::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        reinterpret_cast<DialogWindow*>(lParam)->window_ = window;
        ::SetWindowLongPtrW(window, DWLP_USER, lParam);
    }
    auto* const self = reinterpret_cast<DialogWindow*>(::GetWindowLongPtrW(window, DWLP_USER));
    if (self == nullptr) return FALSE;
    INT_PTR answer = FALSE;
    try {
        answer = self->answer(message, wParam, lParam);
    } catch (...) {
        // The dialog goes on as if the message had not been its own.
    }
    if (message == WM_NCDESTROY) {
        ::SetWindowLongPtrW(window, DWLP_USER, 0);
        self->window_ = nullptr;
    }
    return answer;
}

INT_PTR DialogWindow::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            load();
            return FALSE;  // `build` has set the focus
        case WM_COMMAND:
            return onCommand(LOWORD(wParam), HIWORD(wParam)) ? TRUE : FALSE;
        case kDpiChanged: {
            const auto* const suggested = reinterpret_cast<const RECT*>(lParam);
            const SIZE size = layOut();
            ::SetWindowPos(window_, nullptr, suggested->left, suggested->top, size.cx, size.cy,
                           SWP_NOZORDER | SWP_NOACTIVATE);
            return TRUE;
        }
        case WM_TIMER:
            // A child window owns no dialog: the one that stands for it goes on without it.
            if (wParam != kOwnerTimer || owner_ == nullptr || ::IsWindow(owner_)) return FALSE;
            if (modal_) {
                end(0);
            } else {
                destroy();
            }
            return TRUE;
        case WM_DESTROY:
            onDestroy();
            return FALSE;
        default:
            return FALSE;
    }
}

void DialogWindow::load() {
    ::SetTimer(window_, kOwnerTimer, kOwnerInterval, nullptr);
    ::SetWindowTextW(window_, title_.c_str());
    // On the owner's monitor first: the resolution is that of the monitor.
    const RECT area = workAreaOf(owner_);
    ::SetWindowPos(window_, nullptr, area.left, area.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    build();
    centre(layOut());
}

SIZE DialogWindow::layOut() {
    const int dpi = dpiOf(window_);
    UniqueFont font = messageFont(dpi, false);
    UniqueFont bold = messageFont(dpi, true);
    for (const HWND control : controls_) {
        const HFONT own = isHeading(control) ? bold.get() : font.get();
        ::SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(own), TRUE);
    }
    font_ = std::move(font);
    boldFont_ = std::move(bold);
    if (iconControl_ != nullptr) {
        UniqueIcon icon = systemIcon(iconName_, dpi);
        ::SendMessageW(iconControl_, STM_SETICON, reinterpret_cast<WPARAM>(icon.get()), 0);
        icon_ = std::move(icon);
    }

    RECT outer, inner;
    ::GetWindowRect(window_, &outer);
    ::GetClientRect(window_, &inner);
    const LONG frameWidth = (outer.right - outer.left) - inner.right;
    const LONG frameHeight = (outer.bottom - outer.top) - inner.bottom;
    const RECT area = workAreaOf(window_);
    const SIZE client = arrange(unitsOf(font_.get()), static_cast<int>(area.right - area.left - frameWidth));
    for (const Name& name : names_) shorten(name);
    return {client.cx + frameWidth, client.cy + frameHeight};
}

void DialogWindow::centre(SIZE size) noexcept {
    const RECT area = workAreaOf(owner_);
    RECT around = area;
    if (owner_ != nullptr && ::IsWindowVisible(owner_) && !::IsIconic(::GetAncestor(owner_, GA_ROOT))) {
        ::GetWindowRect(owner_, &around);
    }
    const LONG x = around.left + ((around.right - around.left) - size.cx) / 2;
    const LONG y = around.top + ((around.bottom - around.top) - size.cy) / 2;
    ::SetWindowPos(window_, nullptr, within(x, size.cx, area.left, area.right),
                   within(y, size.cy, area.top, area.bottom), size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

HWND DialogWindow::add(const wchar_t* className, std::string_view text, DWORD style, WORD id, DWORD extendedStyle) {
    const HWND control =
        ::CreateWindowExW(extendedStyle, className, wideOf(text).c_str(), style | WS_CHILD | WS_VISIBLE, 0, 0, 0, 0,
                          window_, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), ownModule(), nullptr);
    if (control != nullptr) controls_.push_back(control);
    return control;
}

HWND DialogWindow::addHeading(std::string_view text) {
    heading_ = add(L"STATIC", text, SS_LEFT | SS_NOPREFIX);
    return heading_;
}

HWND DialogWindow::addName(std::string_view text) {
    const HWND control = addData({});
    names_.push_back({control, std::string(text)});
    return control;
}

HWND DialogWindow::addButton(std::string_view text, WORD id, DWORD style) {
    return add(L"BUTTON", text, style | WS_TABSTOP, id);
}

HWND DialogWindow::addIcon(const wchar_t* name) {
    iconName_ = name;
    iconControl_ = add(L"STATIC", {}, SS_ICON);
    return iconControl_;
}

void DialogWindow::setText(HWND control, std::string_view text) {
    const std::wstring wide = wideOf(text);
    if (textOf(control) != wide) ::SetWindowTextW(control, wide.c_str());
}

void DialogWindow::setName(HWND control, std::string_view text) {
    for (Name& name : names_) {
        if (name.control != control || name.text == text) continue;
        name.text = text;
        shorten(name);
    }
}

void DialogWindow::shorten(const Name& name) {
    RECT room;
    ::GetClientRect(name.control, &room);
    const MeasuringContext context(name.control);
    const auto fits = [&](std::string_view text) { return extentOf(context.get(), wideOf(text)).cx <= room.right; };
    setText(name.control, shortenMiddle(name.text, fits));
}

void DialogWindow::place(HWND control, int x, int y, int width, int height) noexcept {
    ::SetWindowPos(control, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

SIZE DialogWindow::textSize(HWND control) const noexcept {
    try {
        const MeasuringContext context(control);
        return extentOf(context.get(), textOf(control));
    } catch (...) {
        return {};
    }
}

int DialogWindow::widestText(std::initializer_list<HWND> controls) const noexcept {
    LONG widest = 0;
    for (const HWND control : controls) widest = std::max(widest, textSize(control).cx);
    return static_cast<int>(widest);
}

namespace {
constexpr int kButtonWidth = 50, kButtonHeight = 14, kButtonGap = 4;  // dialog units, as the system's own dialogs
}

int DialogWindow::buttonsWidth(const DialogUnits& units, const std::vector<HWND>& buttons) const noexcept {
    int width = 0;
    for (const HWND button : buttons) {
        const int own = std::max(units.x(kButtonWidth), static_cast<int>(textSize(button).cx) + units.x(12));
        width += own + (width > 0 ? units.x(kButtonGap) : 0);
    }
    return width;
}

int DialogWindow::placeButtons(const DialogUnits& units, const std::vector<HWND>& buttons, int y,
                               int width) const noexcept {
    const int gap = units.x(kButtonGap);
    const int height = units.y(kButtonHeight);
    const int margin = units.x(7);
    for (std::size_t first = 0; first < buttons.size();) {
        std::size_t count = 1;
        int rowWidth = buttonsWidth(units, {buttons[first]});
        while (first + count < buttons.size()) {
            const int with = rowWidth + gap + buttonsWidth(units, {buttons[first + count]});
            if (with > width - 2 * margin) break;
            rowWidth = with;
            ++count;
        }
        int x = width - margin - rowWidth;
        for (std::size_t each = first; each < first + count; ++each) {
            const int own = buttonsWidth(units, {buttons[each]});
            place(buttons[each], x, y, own, height);
            x += own + gap;
        }
        first += count;
        y += height + (first < buttons.size() ? units.y(kButtonGap) : 0);
    }
    return y;
}

}  // namespace archiver
