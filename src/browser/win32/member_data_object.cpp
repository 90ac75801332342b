#include "browser/win32/member_data_object.h"

// windows.h first
#include <shlobj.h>

#include <utility>

#include "browser/win32/member_stream.h"
#include "shell/file_drop.h"

namespace tovar {
namespace {

FORMATETC formatOf(CLIPFORMAT format, DWORD medium) { return {format, nullptr, DVASPECT_CONTENT, -1, medium}; }

}  // namespace

MemberDataObject::MemberDataObject(std::shared_ptr<DragContents> contents, std::shared_ptr<const void> component)
    : component_(std::move(component)),
      contents_(std::move(contents)),
      descriptors_(static_cast<CLIPFORMAT>(::RegisterClipboardFormatW(CFSTR_FILEDESCRIPTORW))),
      files_(static_cast<CLIPFORMAT>(::RegisterClipboardFormatW(CFSTR_FILECONTENTS))) {}

STDMETHODIMP MemberDataObject::QueryGetData(FORMATETC* format) noexcept {
    if (format == nullptr) return E_INVALIDARG;
    if (format->cfFormat == 0 ||
        (format->cfFormat != CF_HDROP && format->cfFormat != descriptors_ && format->cfFormat != files_)) {
        return DV_E_FORMATETC;
    }
    if (format->dwAspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    const DWORD medium = format->cfFormat == files_ ? TYMED_ISTREAM : TYMED_HGLOBAL;
    return (format->tymed & medium) != 0 ? S_OK : DV_E_TYMED;
}

STDMETHODIMP MemberDataObject::GetData(FORMATETC* format, STGMEDIUM* medium) noexcept {
    if (medium == nullptr) return E_INVALIDARG;
    *medium = {};
    const HRESULT known = QueryGetData(format);
    if (known != S_OK) return known;
    return comMethod([&]() -> HRESULT {
        if (format->cfFormat == CF_HDROP) return giveBlock(buildFileDrop({contents_->placeholder()}, codec_), *medium);
        if (format->cfFormat == files_) return giveFile(format->lindex, *medium);
        const auto block = contents_->descriptors();
        return block ? giveBlock(*block, *medium) : DV_E_FORMATETC;
    });
}

HRESULT MemberDataObject::giveBlock(std::string_view block, STGMEDIUM& medium) {
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, block.size());
    void* const bytes = memory != nullptr ? ::GlobalLock(memory) : nullptr;
    if (bytes == nullptr) {
        if (memory != nullptr) ::GlobalFree(memory);
        return E_OUTOFMEMORY;
    }
    block.copy(static_cast<char*>(bytes), block.size());
    ::GlobalUnlock(memory);
    medium.tymed = TYMED_HGLOBAL;
    medium.hGlobal = memory;
    return S_OK;
}

HRESULT MemberDataObject::giveFile(LONG index, STGMEDIUM& medium) {
    // Some who want the only file there is do not number it.
    auto file = contents_->file(index < 0 ? 0 : static_cast<std::size_t>(index));
    if (!file) return DV_E_LINDEX;
    medium.pstm = MemberStream::open(std::move(*file), component_).release();
    if (medium.pstm == nullptr) return STG_E_FILENOTFOUND;
    medium.tymed = TYMED_ISTREAM;
    return S_OK;
}

STDMETHODIMP MemberDataObject::GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* canonical) noexcept {
    if (format == nullptr || canonical == nullptr) return E_INVALIDARG;
    *canonical = *format;
    canonical->ptd = nullptr;
    return DATA_S_SAMEFORMATETC;
}

STDMETHODIMP MemberDataObject::EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) noexcept {
    if (formats == nullptr) return E_INVALIDARG;
    *formats = nullptr;
    if (direction != DATADIR_GET) return E_NOTIMPL;
    const FORMATETC offered[] = {formatOf(CF_HDROP, TYMED_HGLOBAL), formatOf(descriptors_, TYMED_HGLOBAL),
                                 formatOf(files_, TYMED_ISTREAM)};
    return ::SHCreateStdEnumFmtEtc(static_cast<UINT>(std::size(offered)), offered, formats);
}

}  // namespace tovar
