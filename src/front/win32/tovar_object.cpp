#include "front/win32/tovar_object.h"

#include <optional>
#include <utility>

#include "front/win32/archive_table.h"
#include "front/win32/component_errors.h"
#include "front/win32/dispatch_host.h"
#include "front/win32/late_binding.h"
#include "front/win32/type_library.h"
#include "front/win32/variant_values.h"
#include "tovar_idl.h"

namespace tovar {
namespace {

HRESULT answer(VARIANT_BOOL* result, bool value) noexcept {
    *result = value ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

std::optional<DispatchHost> hostOf(IDispatch* object) {
    return object == nullptr ? std::nullopt : std::optional<DispatchHost>(std::in_place, *object);
}

HostWindow* pointerTo(std::optional<DispatchHost>& host) noexcept { return host ? &*host : nullptr; }

}  // namespace

cTovar::cTovar(std::shared_ptr<Component> component)
    : component_(std::move(component)),
      operations_(component_->ports()),
      archive_(*this, component_),
      thread_(::GetCurrentThreadId()) {}

HRESULT cTovar::create(REFIID iid, void** object) noexcept {
    return comMethod([&] {
        const ComOwner<cTovar> made(new cTovar(Component::ofThisThread()));
        return made->QueryInterface(iid, object);
    });
}

STDMETHODIMP cTovar::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr) return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) || IsEqualIID(iid, IID_ITovar)) {
        *object = static_cast<ITovar*>(this);
    } else if (IsEqualIID(iid, IID_ITovarArchive)) {
        *object = static_cast<ITovarArchive*>(&archive_);
    } else if (IsEqualIID(iid, IID_IProvideClassInfo)) {
        *object = static_cast<IProvideClassInfo*>(this);
    } else if (IsEqualIID(iid, IID_ISupportErrorInfo)) {
        *object = static_cast<ISupportErrorInfo*>(this);
    } else {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) cTovar::AddRef() { return ++references_; }

STDMETHODIMP_(ULONG) cTovar::Release() {
    const ULONG left = --references_;
    if (left == 0) {
        references_ = 1;  // hosts called while the windows go may take and drop references
        delete this;
    } else if (left == calls_ && ::GetCurrentThreadId() == thread_) {
        // Only its own methods still hold the object: the host has let go of it from inside a dialog, which would wait
        // for a user who may no longer see it.
        comMethod([this] {
            operations_.unloadWindows();
            return S_OK;
        });
    }
    return left;
}

/// Keeps the object while one of its methods runs: the host may drop it while a library or a dialog lets messages run.
class cTovar::Running {
public:
    explicit Running(cTovar& object) : object_(object), alive_(shareObject<ITovar>(&object)) { ++object_.calls_; }
    ~Running() { --object_.calls_; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

private:
    cTovar& object_;
    ComOwner<ITovar> alive_;
};

/// What every method of the interface has in common.
template <class Body>
HRESULT cTovar::call(Body body) noexcept {
    if (::GetCurrentThreadId() != thread_) return reportError(RPC_E_WRONG_THREAD, IID_ITovar);
    const Running running(*this);
    const HRESULT result = comMethod(body);
    return FAILED(result) ? reportError(result, IID_ITovar) : result;
}

/// Scripts reach all interfaces through the one IDispatch.
std::array<DispatchPart, 2> cTovar::parts() noexcept {
    return {DispatchPart{methodTable(), static_cast<ITovar*>(this)}, DispatchPart{archiveTable(), &archive_}};
}

STDMETHODIMP cTovar::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
}

STDMETHODIMP cTovar::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    if (index != 0) return DISP_E_BADINDEX;
    return handOutTypeInfo(IID_ITovar, info);
}

STDMETHODIMP cTovar::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
    return idsOfNames(parts(), {names, count}, ids);
}

STDMETHODIMP cTovar::Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                            EXCEPINFO* exception, UINT* badArgument) {
    const Running running(*this);
    return invokeMethod(parts(), id, iid, locale, flags, parameters, result, exception, badArgument);
}

STDMETHODIMP cTovar::IsBusy(VARIANT_BOOL* result) {
    if (result == nullptr) return E_POINTER;
    *result = VARIANT_FALSE;
    return call([&] { return answer(result, operations_.IsBusy()); });
}

STDMETHODIMP cTovar::SetFont(BSTR sFontName, LONG hFont, VARIANT* result) {
    if (result == nullptr) return E_POINTER;
    ::VariantInit(result);
    return call([&] {
        operations_.SetFont(viewOf(sFontName), handleOf(hFont));
        return S_OK;
    });
}

STDMETHODIMP cTovar::Configure() {
    return call([&] {
        operations_.Configure();
        return S_OK;
    });
}

STDMETHODIMP cTovar::CanCreateArchive(VARIANT_BOOL* result) {
    if (result == nullptr) return E_POINTER;
    *result = VARIANT_FALSE;
    return call([&] { return answer(result, operations_.CanCreateArchive()); });
}

STDMETHODIMP cTovar::CreateArchive(BSTR sArcFile, BSTR sArcDir, BSTR sArcList, IDispatch* fParent,
                                   VARIANT_BOOL* result) {
    if (result == nullptr) return E_POINTER;
    *result = VARIANT_FALSE;
    return call([&] {
        std::optional<DispatchHost> host = hostOf(fParent);
        return answer(result,
                      operations_.CreateArchive(viewOf(sArcFile), viewOf(sArcDir), viewOf(sArcList), pointerTo(host)));
    });
}

STDMETHODIMP cTovar::OpenArchive(BSTR sArcFile, BSTR sArcDir, IDispatch* fParent, VARIANT_BOOL* result) {
    if (result == nullptr) return E_POINTER;
    *result = VARIANT_FALSE;
    return call([&] {
        std::optional<DispatchHost> host = hostOf(fParent);
        return answer(result, operations_.OpenArchive(viewOf(sArcFile), viewOf(sArcDir), pointerTo(host)));
    });
}

STDMETHODIMP cTovar::CanOpenArchive(BSTR sArcFile, LONG* nArcMode, VARIANT_BOOL bMsg, VARIANT_BOOL* result) {
    if (nArcMode == nullptr || result == nullptr) return E_POINTER;
    *result = VARIANT_FALSE;
    return call([&] {
        std::int32_t mode = *nArcMode;
        const bool can = operations_.CanOpenArchive(viewOf(sArcFile), mode, bMsg != VARIANT_FALSE);
        *nArcMode = mode;
        return answer(result, can);
    });
}

STDMETHODIMP cTovar::SetTempDir(BSTR sTempDir) {
    return call([&] {
        operations_.SetTempDir(viewOf(sTempDir));
        return S_OK;
    });
}

STDMETHODIMP cTovar::GetClassInfo(ITypeInfo** info) { return handOutTypeInfo(CLSID_cTovar, info); }

STDMETHODIMP cTovar::InterfaceSupportsErrorInfo(REFIID iid) {
    return IsEqualIID(iid, IID_ITovar) || IsEqualIID(iid, IID_ITovarArchive) ? S_OK : S_FALSE;
}

}  // namespace tovar
