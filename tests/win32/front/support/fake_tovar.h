#pragma once
#include <windows.h>

#include <oleauto.h>

#include <functional>
#include <string>
#include <vector>

#include "front/win32/com_support.h"
#include "tovar_idl.h"

namespace tovar::test {

/// The interface without anything behind it: records what arrived, and answers as told.
class FakeTovar final : public ITovar {
public:
    std::vector<std::wstring> calls;
    HRESULT code = S_OK;
    VARIANT_BOOL answer = VARIANT_TRUE;
    LONG mode = 16;  ///< what CanOpenArchive sets
    bool setsMode = true;
    IDispatch* parent = nullptr;

    STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }

    STDMETHODIMP IsBusy(VARIANT_BOOL* result) override { return say(L"IsBusy", result); }
    STDMETHODIMP SetFont(BSTR sFontName, LONG hFont, VARIANT*) override {
        return say(L"SetFont " + text(sFontName) + L" " + std::to_wstring(hFont));
    }
    STDMETHODIMP Configure() override { return say(L"Configure"); }
    STDMETHODIMP CanCreateArchive(VARIANT_BOOL* result) override { return say(L"CanCreateArchive", result); }
    STDMETHODIMP CreateArchive(BSTR sArcFile, BSTR sArcDir, BSTR sArcList, IDispatch* fParent,
                               VARIANT_BOOL* result) override {
        parent = fParent;
        return say(L"CreateArchive " + text(sArcFile) + L" " + text(sArcDir) + L" " + text(sArcList), result);
    }
    STDMETHODIMP OpenArchive(BSTR sArcFile, BSTR sArcDir, IDispatch* fParent, VARIANT_BOOL* result) override {
        parent = fParent;
        return say(L"OpenArchive " + text(sArcFile) + L" " + text(sArcDir), result);
    }
    STDMETHODIMP CanOpenArchive(BSTR sArcFile, LONG* nArcMode, VARIANT_BOOL bMsg, VARIANT_BOOL* result) override {
        const std::wstring given = std::to_wstring(*nArcMode);
        if (setsMode) *nArcMode = mode;
        return say(L"CanOpenArchive " + text(sArcFile) + L" " + given + (bMsg == VARIANT_FALSE ? L" silent" : L" loud"),
                   result);
    }
    STDMETHODIMP SetTempDir(BSTR sTempDir) override { return say(L"SetTempDir " + text(sTempDir)); }

private:
    static std::wstring text(BSTR given) { return std::wstring(viewOf(given)); }

    HRESULT say(const std::wstring& call, VARIANT_BOOL* result = nullptr) {
        calls.push_back(call);
        if (result != nullptr) *result = answer;
        return code;
    }
};

}  // namespace tovar::test
