#include "shell/win32/file_drop_target.h"

#include <shellapi.h>
#include <shlobj.h>

#include <memory>
#include <utility>

#include "shell/file_drop.h"
#include "shell/win32/ansi_codec.h"
#include "shell/win32/com_object.h"
#include "shell/win32/global_bytes.h"

namespace tovar {
namespace {

/// @return none for a list that is empty or damaged
std::vector<std::wstring> pathsIn(HGLOBAL block) {
    const std::optional<std::string> bytes = bytesOf(block);
    if (!bytes) return {};
    return readFileDrop(*bytes, AnsiCodec()).value_or(std::vector<std::wstring>());
}

FORMATETC listOfFiles() { return {CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL}; }

std::vector<std::wstring> pathsIn(IDataObject& data) {
    FORMATETC format = listOfFiles();
    STGMEDIUM medium{};
    if (data.GetData(&format, &medium) != S_OK) return {};
    struct Owner {
        STGMEDIUM& medium;
        ~Owner() { ::ReleaseStgMedium(&medium); }
    } const owner{medium};
    return medium.tymed == TYMED_HGLOBAL ? pathsIn(medium.hGlobal) : std::vector<std::wstring>();
}

}  // namespace

/// What OLE knows. It may be kept by others after the window has gone, and refuses everything then.
class FileDropTarget::Target final : public ComObject<IDropTarget, IID_IDropTarget> {
public:
    Target(HWND window, FileDropOwner& owner) : window_(window), owner_(&owner) {}
    void leaveOwner() noexcept {
        owner_ = nullptr;
        picture_.reset();
    }

    // IDropTarget
    STDMETHODIMP DragEnter(IDataObject* data, DWORD, POINTL place, DWORD* effect) noexcept override {
        if (data == nullptr || effect == nullptr) return E_INVALIDARG;
        hasFiles_ = holdsFiles(*data);
        *effect = effectOf(*effect);
        POINT point{place.x, place.y};
        if (IDropTargetHelper* const picture = this->picture()) picture->DragEnter(window_, data, &point, *effect);
        return S_OK;
    }
    STDMETHODIMP DragOver(DWORD, POINTL place, DWORD* effect) noexcept override {
        if (effect == nullptr) return E_INVALIDARG;
        *effect = effectOf(*effect);
        POINT point{place.x, place.y};
        if (picture_) picture_->DragOver(&point, *effect);
        return S_OK;
    }
    STDMETHODIMP DragLeave() noexcept override {
        hasFiles_ = false;
        if (picture_) picture_->DragLeave();
        return S_OK;
    }
    STDMETHODIMP Drop(IDataObject* data, DWORD, POINTL place, DWORD* effect) noexcept override {
        if (data == nullptr || effect == nullptr) return E_INVALIDARG;
        hasFiles_ = holdsFiles(*data);
        *effect = effectOf(*effect);
        POINT point{place.x, place.y};
        if (picture_) picture_->Drop(data, &point, *effect);
        hasFiles_ = false;
        if (*effect == DROPEFFECT_NONE) return S_OK;
        try {
            std::vector<std::wstring> paths = pathsIn(*data);
            // Another process lets messages run while it hands out its list.
            if (!paths.empty() && owner_ != nullptr) {
                owner_->onFilesDropped(std::move(paths));
                return S_OK;
            }
        } catch (...) {
            // Memory is short: nothing was dropped.
        }
        *effect = DROPEFFECT_NONE;
        return S_OK;
    }

private:
    static bool holdsFiles(IDataObject& data) {
        FORMATETC format = listOfFiles();
        return data.QueryGetData(&format) == S_OK;
    }
    /// @param allowed  by the source
    [[nodiscard]] DWORD effectOf(DWORD allowed) const noexcept {
        try {
            const bool taken =
                hasFiles_ && (allowed & DROPEFFECT_COPY) != 0 && owner_ != nullptr && owner_->takesFiles();
            return taken ? DROPEFFECT_COPY : DROPEFFECT_NONE;
        } catch (...) {
            return DROPEFFECT_NONE;
        }
    }
    /// What shows the dragged things under the pointer, where the source has pictures of them.
    IDropTargetHelper* picture() noexcept {
        void* made = nullptr;
        if (!picture_ && owner_ != nullptr &&
            ::CoCreateInstance(CLSID_DragDropHelper, nullptr, CLSCTX_INPROC_SERVER, IID_IDropTargetHelper, &made) ==
                S_OK) {
            picture_.reset(static_cast<IDropTargetHelper*>(made));
        }
        return picture_.get();
    }

    HWND window_;
    FileDropOwner* owner_;
    ComOwner<IDropTargetHelper> picture_;
    bool hasFiles_ = false;
};

void FileDropTarget::start(HWND window) {
    if (window_ != nullptr) return;
    window_ = window;
    ole_.emplace();
    if (!ole_->start()) return;
    target_ = new Target(window, owner_);
    if (::RegisterDragDrop(window, target_) == S_OK) return;
    target_->Release();
    target_ = nullptr;
}

void FileDropTarget::stop() noexcept {
    if (target_ != nullptr) {
        ::RevokeDragDrop(window_);
        target_->leaveOwner();
        std::exchange(target_, nullptr)->Release();
    }
    ole_.reset();
    window_ = nullptr;
}

void FileDropTarget::announce(bool takesFiles) noexcept {
    if (window_ != nullptr) ::DragAcceptFiles(window_, takesFiles ? TRUE : FALSE);
}

void FileDropTarget::onDropFiles(WPARAM drop) {
    struct Owner {
        HDROP drop;
        ~Owner() { ::DragFinish(drop); }
    } const owner{reinterpret_cast<HDROP>(drop)};
    if (!owner_.takesFiles()) return;
    std::vector<std::wstring> paths = pathsIn(static_cast<HGLOBAL>(owner.drop));
    if (!paths.empty()) owner_.onFilesDropped(std::move(paths));
}

}  // namespace tovar
