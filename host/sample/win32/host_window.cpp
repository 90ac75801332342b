#include "host/sample/win32/host_window.h"

#include <commctrl.h>
#include <shellapi.h>

#include <cstdio>
#include <cwchar>

namespace tovar::host {
namespace {

constexpr wchar_t kClassName[] = L"TovarExSampleHost";
enum Control { kUp = 100, kOpen, kCompress, kConfigure, kPath, kList, kStatus };

struct Button {
    Control id;
    const wchar_t* text;
    int width;
};
constexpr Button kButtons[] = {
    {kUp, L"&Up", 60}, {kOpen, L"&Open", 80}, {kCompress, L"&Compress", 100}, {kConfigure, L"Con&figure", 100}};
constexpr int kMargin = 6, kButtonHeight = 26, kFirstColumn = 420, kSecondColumn = 120;

/// The system's small icon of an item, by its name alone.
/// @param images  receives the image list that the number is for
int iconOf(const FolderItem& item, HIMAGELIST* images = nullptr) {
    SHFILEINFOW info{};
    const auto list = ::SHGetFileInfoW(item.name.c_str(), item.isFolder ? FILE_ATTRIBUTE_DIRECTORY : 0, &info,
                                       sizeof info, SHGFI_SYSICONINDEX | SHGFI_SMALLICON | SHGFI_USEFILEATTRIBUTES);
    if (images != nullptr) *images = reinterpret_cast<HIMAGELIST>(list);
    return info.iIcon;
}

std::wstring textSize(const FolderItem& item) { return item.isFolder ? std::wstring() : std::to_wstring(item.size); }

}  // namespace

int HostWindow::scaled(int pixels) const {
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSX);
    ::ReleaseDC(nullptr, screen);
    return ::MulDiv(pixels, dpi, 96);
}

HostWindow::~HostWindow() {
    if (window_ != nullptr) onClose();
    ::DeleteObject(font_);
}

bool HostWindow::create(HINSTANCE instance) {
    instance_ = instance;
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = &HostWindow::windowProcedure;
    windowClass.hInstance = instance;
    windowClass.hIcon = ::LoadIconW(nullptr, MAKEINTRESOURCEW(32512));      // IDI_APPLICATION
    windowClass.hCursor = ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // IDC_ARROW
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    windowClass.lpszClassName = kClassName;
    if (::RegisterClassExW(&windowClass) == 0) return false;
    ::CreateWindowExW(0, kClassName, L"TovarEx sample host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                      CW_USEDEFAULT, scaled(1100), scaled(760), nullptr, nullptr, instance, this);
    return window_ != nullptr;
}

LRESULT CALLBACK HostWindow::windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        auto* self = static_cast<HostWindow*>(create->lpCreateParams);
        self->window_ = window;
        ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<HostWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr) return ::DefWindowProcW(window, message, wParam, lParam);
    try {
        return self->onMessage(message, wParam, lParam);
    } catch (...) {  // nothing may leave a window procedure
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
}

LRESULT HostWindow::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            return onCreate() ? 0 : -1;
        case WM_SIZE:
            onSize();
            return 0;
        case WM_COMMAND:
            onCommand(LOWORD(wParam));
            return 0;
        case WM_NOTIFY:
            return onNotify(*reinterpret_cast<const NMHDR*>(lParam));
        case WM_SETFOCUS:
            ::SetFocus(list_);
            return 0;
        case WM_CLOSE:
            onClose();
            return 0;
        case WM_NCDESTROY:
            ::SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
            window_ = nullptr;
            ::PostQuitMessage(0);
            return 0;
        default:
            return ::DefWindowProcW(window_, message, wParam, lParam);
    }
}

HWND HostWindow::makeChild(const wchar_t* className, const wchar_t* text, DWORD style, int id) {
    const HWND child = ::CreateWindowExW(0, className, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, window_,
                                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance_, nullptr);
    ::SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
    return child;
}

bool HostWindow::onCreate() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    font_ = ::CreateFontIndirectW(&metrics.lfMessageFont);
    for (const auto& button : kButtons) makeChild(WC_BUTTONW, button.text, WS_TABSTOP, button.id);
    path_ = makeChild(WC_STATICW, L"", SS_PATHELLIPSIS | SS_NOPREFIX | SS_CENTERIMAGE, kPath);
    list_ = makeChild(WC_LISTVIEWW, L"Files",
                      WS_TABSTOP | WS_BORDER | WS_CLIPSIBLINGS | LVS_REPORT | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS,
                      kList);
    status_ = makeChild(STATUSCLASSNAMEW, L"", SBARS_SIZEGRIP, kStatus);
    ListView_SetExtendedListViewStyle(list_, LVS_EX_FULLROWSELECT);
    HIMAGELIST images = nullptr;
    iconOf({L"folder", true, 0}, &images);
    ListView_SetImageList(list_, images, LVSIL_SMALL);
    const struct {
        const wchar_t* text;
        int width, format;
    } columns[] = {{L"Name", kFirstColumn, LVCFMT_LEFT}, {L"Size", kSecondColumn, LVCFMT_RIGHT}};
    int index = 0;
    for (const auto& each : columns) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        column.pszText = const_cast<wchar_t*>(each.text);
        column.cx = scaled(each.width);
        column.fmt = each.format;
        ::SendMessageW(list_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index++), reinterpret_cast<LPARAM>(&column));
    }

    object_ = std::make_unique<HostObject>(window_);
    HRESULT error = S_OK;
    component_ = ComComponent::create(object_.get(), error);
    if (!component_) {
        std::fprintf(stderr, "The archive component could not be created: 0x%08lX\n",
                     static_cast<unsigned long>(error));
        return false;
    }
    component_->setFont(metrics.lfMessageFont.lfFaceName, font_);
    HostView& view = *this;
    presenter_ = std::make_unique<HostPresenter>(view, *component_, reader_);
    return true;
}

void HostWindow::onSize() {
    RECT area{};
    ::GetClientRect(window_, &area);
    ::SendMessageW(status_, WM_SIZE, 0, 0);
    RECT status{};
    ::GetWindowRect(status_, &status);
    const int margin = scaled(kMargin), height = scaled(kButtonHeight);
    int x = margin;
    for (const auto& button : kButtons) {
        ::MoveWindow(::GetDlgItem(window_, button.id), x, margin, scaled(button.width), height, TRUE);
        x += scaled(button.width) + margin;
    }
    ::MoveWindow(path_, x + margin, margin, std::max<int>(area.right - x - 2 * margin, 0), height, TRUE);
    const int top = height + 2 * margin;
    const int bottom = static_cast<int>(area.bottom - (status.bottom - status.top));
    ::MoveWindow(list_, 0, top, area.right, std::max(bottom - top, 0), TRUE);
}

/// Runs an operation that the component may show windows for. They let messages run, so that other operations and the
/// wish to close can come meanwhile: those are left out, this waits until the operation is over.
template <class Operation>
void HostWindow::operate(Operation operation) {
    if (!presenter_ || operating_) return;
    {
        struct Running {
            bool& flag;
            ~Running() { flag = false; }
        };
        const Running running{operating_ = true};
        operation(*presenter_);
    }
    if (closeWanted_) onClose();
}

bool HostWindow::open(const std::wstring& archive) {
    bool opened = false;
    operate([&](HostPresenter& presenter) { opened = presenter.openFile(archive); });
    return opened;
}

void HostWindow::onCommand(int control) {
    switch (control) {
        case kUp:
            operate([](HostPresenter& presenter) { presenter.goUp(); });
            break;
        case kOpen:
        case IDOK:  // Enter
            openSelected();
            break;
        case kCompress: {
            std::vector<std::size_t> selected;
            for (int row = ListView_GetNextItem(list_, -1, LVNI_SELECTED); row >= 0;
                 row = ListView_GetNextItem(list_, row, LVNI_SELECTED)) {
                selected.push_back(static_cast<std::size_t>(row));
            }
            operate([&](HostPresenter& presenter) { presenter.compress(selected); });
            break;
        }
        case kConfigure:
            operate([](HostPresenter& presenter) { presenter.configure(); });
            break;
        default:
            break;
    }
}

LRESULT HostWindow::onNotify(const NMHDR& header) {
    if (header.idFrom == kList && header.code == static_cast<UINT>(NM_DBLCLK)) openSelected();
    return 0;
}

void HostWindow::openSelected() {
    const int row = ListView_GetNextItem(list_, -1, LVNI_SELECTED);
    if (row >= 0) operate([row](HostPresenter& presenter) { presenter.open(static_cast<std::size_t>(row)); });
}

void HostWindow::onClose() {
    closeWanted_ = true;
    if (operating_) return;
    // The component's window lives in this one: it goes first, then the object, then the host.
    presenter_.reset();
    component_.reset();
    ::DestroyWindow(window_);
}

void HostWindow::showFolder(const std::wstring& path, const std::vector<FolderItem>& items) {
    ::SetWindowTextW(path_, path.c_str());
    ::SendMessageW(list_, WM_SETREDRAW, FALSE, 0);
    ListView_DeleteAllItems(list_);
    ListView_SetItemCount(list_, static_cast<int>(items.size()));
    int row = 0;
    for (const auto& each : items) {
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE;
        item.iItem = row++;
        item.iImage = iconOf(each);
        item.pszText = const_cast<wchar_t*>(each.name.c_str());
        ::SendMessageW(list_, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        const std::wstring size = textSize(each);
        item.iSubItem = 1;
        item.pszText = const_cast<wchar_t*>(size.c_str());
        ::SendMessageW(list_, LVM_SETITEMTEXTW, static_cast<WPARAM>(item.iItem), reinterpret_cast<LPARAM>(&item));
    }
    ::SendMessageW(list_, WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(list_, nullptr, TRUE);
}

void HostWindow::showStatus(const std::wstring& text) {
    ::SendMessageW(status_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

std::wstring HostWindow::showStart(const std::wstring& path) {
    std::error_code error;
    const auto full = std::filesystem::absolute(path.empty() ? L"." : path, error);
    const bool isFolder = std::filesystem::is_directory(full, error);
    presenter_->showFolder(isFolder ? full : full.parent_path());
    return isFolder ? std::wstring() : full.wstring();
}

void HostWindow::paintNow() const {
    ::RedrawWindow(window_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    ::GdiFlush();
}

int HostWindow::run() {
    MSG message;
    while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (window_ != nullptr && ::GetActiveWindow() == window_ && ::IsDialogMessageW(window_, &message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return 0;
}

}  // namespace tovar::host
