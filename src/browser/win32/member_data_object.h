#pragma once
#include <windows.h>
// windows.h first
#include <objidl.h>

#include <memory>
#include <string_view>

#include "browser/drag_contents.h"
#include "shell/win32/ansi_codec.h"
#include "shell/win32/com_object.h"

namespace tovar {

/// What a drag offers to its target, in two ways:
///
/// 1. CF_HDROP, the placeholder's path. Shell folders copy it, the shell tells where it came to lie, and the members
/// are
///    unpacked right there, without a copy of them in between. It stands first, as a list of formats begins with the
///    one that serves best: folders of the shell take a list of files wherever there is one, and what is described by
///    the others only without one.
/// 2. CFSTR_FILEDESCRIPTORW and CFSTR_FILECONTENTS for who has no folder: the members themselves, unpacked when the
///    first of them is asked for.
///
/// Who takes streams although it is a folder gets the files all the same. They never go both ways: once a stream was
/// asked for, a placeholder that comes to lie somewhere means nothing, and once the shell has told of the placeholder
/// there are no streams (DraggedMembers).
class MemberDataObject final : public ComObject<IDataObject, IID_IDataObject> {
public:
    /// @param component  what has to stay as long as somebody holds the object
    MemberDataObject(std::shared_ptr<DragContents> contents, std::shared_ptr<const void> component);

    STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) noexcept override;
    STDMETHODIMP GetDataHere(FORMATETC*, STGMEDIUM*) noexcept override { return DATA_E_FORMATETC; }
    STDMETHODIMP QueryGetData(FORMATETC* format) noexcept override;
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* canonical) noexcept override;
    STDMETHODIMP SetData(FORMATETC*, STGMEDIUM*, BOOL) noexcept override { return E_NOTIMPL; }
    STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) noexcept override;
    STDMETHODIMP DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) noexcept override { return OLE_E_ADVISENOTSUPPORTED; }
    STDMETHODIMP DUnadvise(DWORD) noexcept override { return OLE_E_ADVISENOTSUPPORTED; }
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA**) noexcept override { return OLE_E_ADVISENOTSUPPORTED; }

private:
    HRESULT giveBlock(std::string_view block, STGMEDIUM& medium);
    HRESULT giveFile(LONG index, STGMEDIUM& medium);

    std::shared_ptr<const void> component_;
    std::shared_ptr<DragContents> contents_;
    AnsiCodec codec_;
    CLIPFORMAT descriptors_, files_;
};

}  // namespace tovar
