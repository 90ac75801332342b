#include "front/win32/archive_object.h"

#include <utility>

#include "front/win32/component_errors.h"
#include "front/win32/entries_object.h"
#include "front/win32/name_lists.h"
#include "front/win32/progress_handler.h"
#include "front/win32/type_library.h"
#include "front/win32/variant_values.h"

namespace tovar {
namespace {

using End = AutomationResult::End;

HRESULT code(TovarError error) noexcept { return static_cast<HRESULT>(error); }

HRESULT codeOf(JobEnd end) noexcept {
    switch (end) {
        case JobEnd::Done:
            return S_OK;
        case JobEnd::NoFile:
            return code(tovarErrNoFile);
        case JobEnd::NoKind:
            return code(tovarErrNoArchive);
        case JobEnd::NoLibrary:
            return code(tovarErrNoLibrary);
        case JobEnd::SwitchedOff:
            return code(tovarErrSwitchedOff);
        case JobEnd::BadArchive:
            return code(tovarErrDamaged);
        case JobEnd::Unsupported:
            return code(tovarErrUnsupported);
        case JobEnd::BadName:
            return code(tovarErrBadName);
        case JobEnd::NoSource:
            return code(tovarErrNoSource);
        case JobEnd::Exists:
            return code(tovarErrExists);
        case JobEnd::NoMember:
            return code(tovarErrNoMember);
        case JobEnd::NoPassword:
            return code(tovarErrPassword);
        case JobEnd::Failed:
            break;
    }
    return code(tovarErrFailed);
}

/// Leaves the description of what went wrong.
/// @return S_OK for what was done, and S_FALSE for what was cancelled
HRESULT raise(const AutomationResult& result) {
    switch (result.end) {
        case End::Done:
            return S_OK;
        case End::Cancelled:
            return S_FALSE;
        case End::Busy:
            return reportError(code(tovarErrBusy), IID_ITovarArchive, result.text);
        case End::BadArgument:
            return reportError(E_INVALIDARG, IID_ITovarArchive, result.text);
        case End::ListenerFailed:
            return reportError(code(tovarErrHandler), IID_ITovarArchive, result.text);
        case End::Job:
            break;
    }
    return reportError(codeOf(result.job), IID_ITovarArchive, result.text);
}

/// A cancelled operation has answered False, and is no error.
HRESULT answer(VARIANT_BOOL* place, const AutomationResult& result) {
    const HRESULT raised = raise(result);
    *place = raised == S_OK ? VARIANT_TRUE : VARIANT_FALSE;
    return FAILED(raised) ? raised : S_OK;
}

/// Names of a list that may be left out.
HRESULT readOptionalNames(const VARIANT& argument, std::vector<std::wstring>& names) {
    if (isMissing(argument)) return S_OK;
    UniqueBstr text;
    const HRESULT result = readNames(argument, LOCALE_USER_DEFAULT, text);
    if (SUCCEEDED(result)) names = namesOf(text.get());
    return result;
}

}  // namespace

TovarArchive::TovarArchive(ITovar& outer, std::shared_ptr<Component> component)
    : outer_(outer),
      component_(std::move(component)),
      automation_(component_->automation()),
      thread_(::GetCurrentThreadId()) {}

/// What every method has in common. The object outlives its own methods, even when a progress handler drops it.
template <class Body>
HRESULT TovarArchive::call(Body body) noexcept {
    if (::GetCurrentThreadId() != thread_) return reportError(RPC_E_WRONG_THREAD, IID_ITovarArchive);
    const ComOwner<ITovar> alive = shareObject(&outer_);
    ::SetErrorInfo(0, nullptr);
    const HRESULT result = comMethod(body);
    if (result == E_OUTOFMEMORY || result == E_UNEXPECTED) return reportError(result, IID_ITovarArchive);
    return result;
}

STDMETHODIMP TovarArchive::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    if (index != 0) return DISP_E_BADINDEX;
    return handOutTypeInfo(IID_ITovarArchive, info);
}

STDMETHODIMP TovarArchive::ListEntries(BSTR sArcFile, ITovarEntries** result) {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    return call([&] {
        auto listing = std::make_shared<SharedListing>();
        listing->component = component_;
        const HRESULT raised = raise(automation_.list(viewOf(sArcFile), listing->archive));
        if (raised == S_OK) *result = makeEntries(std::move(listing)).release();
        return raised;
    });
}

STDMETHODIMP TovarArchive::TestArchive(BSTR sArcFile, BSTR sPassword, VARIANT_BOOL* result) {
    if (result == nullptr) return E_POINTER;
    *result = VARIANT_FALSE;
    return call([&] {
        bool good = false;
        const AutomationResult tested = automation_.test(viewOf(sArcFile), viewOf(sPassword), good);
        if (tested.end == End::Job && tested.job == JobEnd::BadArchive) return S_OK;  // that is the answer
        return answer(result, tested);
    });
}

STDMETHODIMP TovarArchive::ExtractArchive(BSTR sArcFile, BSTR sTargetDir, VARIANT vMembers, VARIANT_BOOL bOverwrite,
                                          VARIANT_BOOL bFolders, BSTR sPassword, VARIANT_BOOL* result) {
    if (result == nullptr) return E_POINTER;
    *result = VARIANT_FALSE;
    return call([&] {
        std::vector<std::wstring> members;
        const HRESULT read = readOptionalNames(vMembers, members);
        if (FAILED(read)) return reportError(read, IID_ITovarArchive);
        return answer(result, automation_.extract({.file = viewOf(sArcFile),
                                                   .target = viewOf(sTargetDir),
                                                   .members = std::move(members),
                                                   .overwrite = bOverwrite != VARIANT_FALSE,
                                                   .keepFolders = bFolders != VARIANT_FALSE,
                                                   .password = viewOf(sPassword)}));
    });
}

HRESULT TovarArchive::change(BSTR archive, const VARIANT& names, BSTR base, ArchiveChange change, BSTR password,
                             VARIANT_BOOL* result) noexcept {
    if (result == nullptr) return E_POINTER;
    *result = VARIANT_FALSE;
    return call([&] {
        const HRESULT read = readOptionalNames(names, change.names);
        if (FAILED(read)) return reportError(read, IID_ITovarArchive);
        return answer(result, automation_.change(viewOf(archive), viewOf(base), change, viewOf(password)));
    });
}

STDMETHODIMP TovarArchive::CreateArchiveFile(BSTR sArcFile, VARIANT vFiles, BSTR sBaseDir, LONG nLevel, BSTR sPassword,
                                             VARIANT_BOOL bRecurse, VARIANT_BOOL* result) {
    return change(sArcFile, vFiles, sBaseDir,
                  {.action = ArchiveChange::Action::Create, .level = nLevel, .recurse = bRecurse != VARIANT_FALSE},
                  sPassword, result);
}

STDMETHODIMP TovarArchive::AddToArchive(BSTR sArcFile, VARIANT vFiles, BSTR sBaseDir, LONG nLevel, BSTR sPassword,
                                        VARIANT_BOOL bRecurse, VARIANT_BOOL* result) {
    return change(sArcFile, vFiles, sBaseDir,
                  {.action = ArchiveChange::Action::Add, .level = nLevel, .recurse = bRecurse != VARIANT_FALSE},
                  sPassword, result);
}

STDMETHODIMP TovarArchive::DeleteFromArchive(BSTR sArcFile, VARIANT vMembers, VARIANT_BOOL* result) {
    return change(sArcFile, vMembers, nullptr, {.action = ArchiveChange::Action::Delete}, nullptr, result);
}

STDMETHODIMP TovarArchive::get_LastErrorText(BSTR* result) {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    return call([&] {
        *result = makeBstr(automation_.lastErrorText()).release();
        return S_OK;
    });
}

STDMETHODIMP TovarArchive::get_ProgressHandler(IDispatch** result) {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    return call([&] {
        *result = shareObject(handler_.get()).release();
        return S_OK;
    });
}

STDMETHODIMP TovarArchive::putref_ProgressHandler(IDispatch* handler) {
    return call([&] {
        automation_.setListener(handler == nullptr ? nullptr : std::make_shared<ProgressHandler>(*handler));
        handler_ = shareObject(handler);
        return S_OK;
    });
}

STDMETHODIMP TovarArchive::Cancel() {
    return call([&] {
        automation_.cancel();
        return S_OK;
    });
}

}  // namespace tovar
