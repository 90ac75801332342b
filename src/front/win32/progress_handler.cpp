#include "front/win32/progress_handler.h"

#include "front/win32/component_errors.h"
#include "front/win32/dispatch_host.h"

namespace tovar {
namespace {

/// What a failing call tells.
std::wstring failureOf(HRESULT code, EXCEPINFO& exception) {
    if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
    const UniqueBstr source(exception.bstrSource), description(exception.bstrDescription), help(exception.bstrHelpFile);
    const std::wstring text(viewOf(description.get()));
    if (!text.empty()) return text;
    if (code == DISP_E_MEMBERNOTFOUND) return L"the object has no method OnProgress";
    return errorDescription(code == DISP_E_EXCEPTION && exception.scode != S_OK ? exception.scode : code);
}

}  // namespace

ProgressListener::Answer ProgressHandler::onProgress(std::wstring_view path, double done, double total) {
    // Looked up each time: a script may give its object the method later, or another one.
    DISPID id = DISPID_UNKNOWN;
    if (!findMember(*object_, L"OnProgress", id)) id = DISPID_VALUE;

    const UniqueBstr text = makeBstr(path);
    VARIANT arguments[3];  // in reverse order
    V_VT(&arguments[2]) = VT_BSTR;
    V_BSTR(&arguments[2]) = text.get();
    V_VT(&arguments[1]) = VT_R8;
    V_R8(&arguments[1]) = done;
    V_VT(&arguments[0]) = VT_R8;
    V_R8(&arguments[0]) = total;
    DISPPARAMS parameters{arguments, nullptr, 3, 0};
    Variant answer;
    EXCEPINFO exception{};
    UINT bad = 0;
    const HRESULT code = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, answer.get(),
                                         &exception, &bad);
    if (FAILED(code)) {
        failure_ = failureOf(code, exception);
        return Answer::Failed;
    }
    const bool cancels = answer->vt == VT_BOOL && V_BOOL(answer.get()) == VARIANT_FALSE;
    return cancels ? Answer::Cancel : Answer::GoOn;
}

}  // namespace tovar
