#pragma once
#include <windows.h>

#include <oleauto.h>

#include <memory>

#include "front/automation/automation.h"
#include "front/win32/com_support.h"
#include "front/win32/component.h"
#include "tovar_idl.h"

namespace tovar {

/// The second interface of the public class: work on archives without any window. A part of its object, which counts
/// the references and answers the names of both interfaces.
///
/// What cannot be done raises an error, as in the file objects that script authors know: a script that looks at no
/// answers must not delete files of which no archive was made. Only what is no failure is answered: TestArchive says
/// False for an archive that is damaged, and an operation that the script itself cancelled says False.
class TovarArchive final : public ITovarArchive {
public:
    /// @param outer  the object that this is a part of
    TovarArchive(ITovar& outer, std::shared_ptr<Component> component);
    TovarArchive(const TovarArchive&) = delete;
    TovarArchive& operator=(const TovarArchive&) = delete;

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override { return outer_.QueryInterface(iid, object); }
    STDMETHODIMP_(ULONG) AddRef() override { return outer_.AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return outer_.Release(); }

    // IDispatch
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return outer_.GetTypeInfoCount(count); }
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
        return outer_.GetIDsOfNames(iid, names, count, locale, ids);
    }
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT* badArgument) override {
        return outer_.Invoke(id, iid, locale, flags, parameters, result, exception, badArgument);
    }

    // ITovarArchive
    STDMETHODIMP ListEntries(BSTR sArcFile, ITovarEntries** result) override;
    STDMETHODIMP TestArchive(BSTR sArcFile, BSTR sPassword, VARIANT_BOOL* result) override;
    STDMETHODIMP ExtractArchive(BSTR sArcFile, BSTR sTargetDir, VARIANT vMembers, VARIANT_BOOL bOverwrite,
                                VARIANT_BOOL bFolders, BSTR sPassword, VARIANT_BOOL* result) override;
    STDMETHODIMP CreateArchiveFile(BSTR sArcFile, VARIANT vFiles, BSTR sBaseDir, LONG nLevel, BSTR sPassword,
                                   VARIANT_BOOL bRecurse, VARIANT_BOOL* result) override;
    STDMETHODIMP AddToArchive(BSTR sArcFile, VARIANT vFiles, BSTR sBaseDir, LONG nLevel, BSTR sPassword,
                              VARIANT_BOOL bRecurse, VARIANT_BOOL* result) override;
    STDMETHODIMP DeleteFromArchive(BSTR sArcFile, VARIANT vMembers, VARIANT_BOOL* result) override;
    STDMETHODIMP get_LastErrorText(BSTR* result) override;
    STDMETHODIMP get_ProgressHandler(IDispatch** result) override;
    STDMETHODIMP putref_ProgressHandler(IDispatch* handler) override;
    STDMETHODIMP put_ProgressHandler(IDispatch* handler) override { return putref_ProgressHandler(handler); }
    STDMETHODIMP Cancel() override;

private:
    template <class Body>
    HRESULT call(Body body) noexcept;
    HRESULT change(BSTR archive, const VARIANT& names, BSTR base, ArchiveChange change, BSTR password,
                   VARIANT_BOOL* result) noexcept;

    ITovar& outer_;
    std::shared_ptr<Component> component_;
    Automation automation_;
    ComOwner<IDispatch> handler_;
    const DWORD thread_;
};

}  // namespace tovar
