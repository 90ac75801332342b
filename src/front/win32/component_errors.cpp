#include "front/win32/component_errors.h"

#include "front/win32/com_support.h"
#include "shell/win32/windows_system_information.h"

namespace tovar {

std::wstring errorDescription(HRESULT code) {
    if (code == RPC_E_WRONG_THREAD) return L"The object was called on another thread than the one that made it.";
    return WindowsSystemInformation().errorText(static_cast<SystemErrorCode>(code));
}

HRESULT reportError(HRESULT code, REFIID iid) noexcept {
    comMethod([&] {
        reportError(code, iid, errorDescription(code));
        return S_OK;
    });
    return code;
}

HRESULT reportError(HRESULT code, REFIID iid, std::wstring_view description) noexcept {
    comMethod([&] {
        ICreateErrorInfo* created = nullptr;
        if (FAILED(::CreateErrorInfo(&created))) return S_OK;
        const ComOwner<ICreateErrorInfo> info(created);
        info->SetGUID(iid);
        info->SetSource(makeBstr(kErrorSource).get());
        info->SetDescription(makeBstr(description).get());
        IErrorInfo* described = nullptr;
        if (FAILED(info->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&described)))) return S_OK;
        const ComOwner<IErrorInfo> owner(described);
        ::SetErrorInfo(0, described);
        return S_OK;
    });
    return code;
}

}  // namespace tovar
