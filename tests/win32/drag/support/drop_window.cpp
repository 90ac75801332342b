#include "win32/drag/support/drop_window.h"

// windows.h first
#include <ole2.h>
#include <shellapi.h>
#include <shlobj.h>

#include <cstdio>
#include <fstream>
#include <vector>

#include "shell/win32/com_object.h"

namespace tovar::test {
namespace {

namespace fs = std::filesystem;

FORMATETC formatOf(UINT format, DWORD medium, LONG index = -1) {
    return {static_cast<CLIPFORMAT>(format), nullptr, DVASPECT_CONTENT, index, medium};
}

UINT descriptorFormat() { return ::RegisterClipboardFormatW(CFSTR_FILEDESCRIPTORW); }
UINT contentsFormat() { return ::RegisterClipboardFormatW(CFSTR_FILECONTENTS); }

void takeFiles(IDataObject& data, const fs::path* folder) {
    FORMATETC format = formatOf(CF_HDROP, TYMED_HGLOBAL);
    STGMEDIUM medium{};
    if (FAILED(data.GetData(&format, &medium))) return;
    const auto drop = static_cast<HDROP>(medium.hGlobal);
    const UINT count = ::DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT each = 0; each < count && folder != nullptr; ++each) {
        wchar_t path[MAX_PATH];
        ::DragQueryFileW(drop, each, path, MAX_PATH);
        const fs::path copy = *folder / fs::path(path).filename();
        if (::CopyFileW(path, copy.c_str(), TRUE)) {
            ::SHChangeNotify(SHCNE_CREATE, SHCNF_PATHW | SHCNF_FLUSH, copy.c_str(), nullptr);
        }
    }
    ::ReleaseStgMedium(&medium);
}

void writeStream(IDataObject& data, LONG index, const fs::path& file) {
    FORMATETC format = formatOf(contentsFormat(), TYMED_ISTREAM, index);
    STGMEDIUM medium{};
    if (FAILED(data.GetData(&format, &medium))) return;
    std::ofstream out(file, std::ios::binary);
    char bytes[4096];
    ULONG read = 0;
    while (SUCCEEDED(medium.pstm->Read(bytes, sizeof bytes, &read)) && read != 0) {
        out.write(bytes, static_cast<std::streamsize>(read));
    }
    ::ReleaseStgMedium(&medium);
}

void takeStreams(IDataObject& data, const fs::path& folder) {
    FORMATETC format = formatOf(descriptorFormat(), TYMED_HGLOBAL);
    STGMEDIUM medium{};
    if (FAILED(data.GetData(&format, &medium))) return;
    const auto* const group = static_cast<const FILEGROUPDESCRIPTORW*>(::GlobalLock(medium.hGlobal));
    for (UINT each = 0; each < group->cItems; ++each) {
        const FILEDESCRIPTORW& file = group->fgd[each];
        if ((file.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            fs::create_directory(folder / file.cFileName);
        } else {
            writeStream(data, static_cast<LONG>(each), folder / file.cFileName);
        }
    }
    ::GlobalUnlock(medium.hGlobal);
    ::ReleaseStgMedium(&medium);
}

}  // namespace

class DropWindow::Target final : public ComObject<IDropTarget, IID_IDropTarget> {
public:
    Target(fs::path folder, Taking taking) : folder_(std::move(folder)), taking_(taking) {}

    int drops = 0;

    STDMETHODIMP DragEnter(IDataObject* data, DWORD, POINTL, DWORD* effect) noexcept override {
        FORMATETC format = taking_ == Taking::Streams ? formatOf(descriptorFormat(), TYMED_HGLOBAL)
                                                      : formatOf(CF_HDROP, TYMED_HGLOBAL);
        takes_ = data->QueryGetData(&format) == S_OK;
        return DragOver(0, {}, effect);
    }
    STDMETHODIMP DragOver(DWORD, POINTL, DWORD* effect) noexcept override {
        *effect &= takes_ ? DROPEFFECT_COPY : DROPEFFECT_NONE;
        return S_OK;
    }
    STDMETHODIMP DragLeave() noexcept override { return S_OK; }
    STDMETHODIMP Drop(IDataObject* data, DWORD, POINTL, DWORD* effect) noexcept override {
        return comMethod([&] {
            ++drops;
            DragOver(0, {}, effect);
            if (taking_ == Taking::Streams || taking_ == Taking::Both) takeStreams(*data, folder_);
            if (taking_ != Taking::Streams) takeFiles(*data, taking_ == Taking::Path ? nullptr : &folder_);
            return S_OK;
        });
    }

private:
    fs::path folder_;
    Taking taking_;
    bool takes_ = false;
};

DropWindow::DropWindow(fs::path folder, Taking taking, POINT place)
    : window_(::CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"target", WS_POPUP | WS_VISIBLE | WS_BORDER | SS_NOTIFY,
                                place.x, place.y, 120, 120, nullptr, nullptr, nullptr, nullptr)),
      target_(new Target(std::move(folder), taking)) {
    ready_ = SUCCEEDED(::RegisterDragDrop(window_.get(), target_));
}

DropWindow::~DropWindow() {
    ::RevokeDragDrop(window_.get());
    target_->Release();
}

POINT DropWindow::middle() const {
    RECT place{};
    ::GetWindowRect(window_.get(), &place);
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

int DropWindow::drops() const { return target_->drops; }

}  // namespace tovar::test
