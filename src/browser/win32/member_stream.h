#pragma once
#include <windows.h>
// windows.h first
#include <objidl.h>

#include <memory>

#include "browser/drag_contents.h"
#include "shell/win32/com_object.h"

namespace tovar {

/// A file that can be read, and that stays where it is as long as somebody holds the stream.
class MemberStream final : public ComObject<IStream, IID_IStream, IID_ISequentialStream> {
public:
    /// @param file       what the stream is of
    /// @param component  what has to stay as well
    /// @return null when the file cannot be opened
    static ComOwner<IStream> open(HeldFile file, std::shared_ptr<const void> component);

    STDMETHODIMP Read(void* bytes, ULONG size, ULONG* read) noexcept override;
    STDMETHODIMP Write(const void*, ULONG, ULONG*) noexcept override { return STG_E_ACCESSDENIED; }
    STDMETHODIMP Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) noexcept override;
    STDMETHODIMP SetSize(ULARGE_INTEGER) noexcept override { return STG_E_ACCESSDENIED; }
    STDMETHODIMP CopyTo(IStream* other, ULARGE_INTEGER size, ULARGE_INTEGER* read,
                        ULARGE_INTEGER* written) noexcept override;
    STDMETHODIMP Commit(DWORD) noexcept override { return S_OK; }
    STDMETHODIMP Revert() noexcept override { return S_OK; }
    STDMETHODIMP LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) noexcept override { return STG_E_INVALIDFUNCTION; }
    STDMETHODIMP UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) noexcept override { return STG_E_INVALIDFUNCTION; }
    STDMETHODIMP Stat(STATSTG* status, DWORD flags) noexcept override;
    STDMETHODIMP Clone(IStream** clone) noexcept override;

private:
    MemberStream(HeldFile file, std::shared_ptr<const void> component)
        : component_(std::move(component)), file_(std::move(file)) {}

    // They go in reverse order: the file is closed first.
    std::shared_ptr<const void> component_;
    HeldFile file_;
    ComOwner<IStream> stream_;
};

}  // namespace tovar
