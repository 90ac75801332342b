#include "browser/win32/member_stream.h"

// windows.h first
#include <shlwapi.h>

#include <utility>

#include "shell/win32/long_paths.h"

namespace tovar {

ComOwner<IStream> MemberStream::open(HeldFile file, std::shared_ptr<const void> component) {
    ComOwner<MemberStream> stream(new MemberStream(std::move(file), std::move(component)));
    IStream* opened = nullptr;
    const HRESULT result =
        ::SHCreateStreamOnFileW(systemPath(stream->file_.path).c_str(), STGM_READ | STGM_SHARE_DENY_WRITE, &opened);
    stream->stream_.reset(opened);
    if (FAILED(result)) return nullptr;
    return stream;
}

STDMETHODIMP MemberStream::Read(void* bytes, ULONG size, ULONG* read) noexcept {
    return stream_->Read(bytes, size, read);
}

STDMETHODIMP MemberStream::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) noexcept {
    return stream_->Seek(move, origin, position);
}

STDMETHODIMP MemberStream::CopyTo(IStream* other, ULARGE_INTEGER size, ULARGE_INTEGER* read,
                                  ULARGE_INTEGER* written) noexcept {
    return stream_->CopyTo(other, size, read, written);
}

STDMETHODIMP MemberStream::Stat(STATSTG* status, DWORD flags) noexcept {
    // Where the file lies concerns nobody.
    const HRESULT result = stream_->Stat(status, flags | STATFLAG_NONAME);
    if (SUCCEEDED(result)) status->pwcsName = nullptr;
    return result;
}

STDMETHODIMP MemberStream::Clone(IStream** clone) noexcept {
    if (clone == nullptr) return STG_E_INVALIDPOINTER;
    *clone = nullptr;
    return comMethod([&] {
        ComOwner<IStream> copy = open(file_, component_);
        if (!copy) return STG_E_ACCESSDENIED;
        LARGE_INTEGER none{}, place{};
        ULARGE_INTEGER position{};
        HRESULT result = stream_->Seek(none, STREAM_SEEK_CUR, &position);
        place.QuadPart = static_cast<LONGLONG>(position.QuadPart);
        if (SUCCEEDED(result)) result = copy->Seek(place, STREAM_SEEK_SET, nullptr);
        if (FAILED(result)) return result;
        *clone = copy.release();
        return S_OK;
    });
}

}  // namespace tovar
