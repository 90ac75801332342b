#pragma once
#include <windows.h>

#include <activscp.h>
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "front/win32/com_support.h"

namespace tovar::test {

/// A script engine of the system inside the test's own process, as a host with scripts of its own has it.
class ScriptEngine final : public IActiveScriptSite {
public:
    /// @param language  "VBScript" or "JScript"
    explicit ScriptEngine(const wchar_t* language) {
        CLSID id{};
        void* found = nullptr;
        if (FAILED(::CLSIDFromProgID(language, &id)) ||
            FAILED(::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript, &found))) {
            return;
        }
        engine_.reset(static_cast<IActiveScript*>(found));
        if (FAILED(engine_->QueryInterface(__uuidof(IActiveScriptParse), &found))) return;
        parser_.reset(static_cast<IActiveScriptParse*>(found));
        parser_->InitNew();
        engine_->SetScriptSite(this);
    }
    ~ScriptEngine() {
        if (engine_) engine_->Close();
    }
    ScriptEngine(const ScriptEngine&) = delete;
    ScriptEngine& operator=(const ScriptEngine&) = delete;

    /// Makes an object known to the script under a name.
    void add(const wchar_t* name, IDispatch* object) {
        objects_[name] = object;
        engine_->AddNamedItem(name, SCRIPTITEM_ISVISIBLE);
    }

    /// @return whether the text ran to its end
    bool run(const std::wstring& text) {
        failed_ = false;
        engine_->SetScriptState(SCRIPTSTATE_CONNECTED);
        return SUCCEEDED(
                   parser_->ParseScriptText(text.c_str(), nullptr, nullptr, nullptr, 0, 0, 0, nullptr, nullptr)) &&
               !failed_;
    }

    [[nodiscard]] bool ready() const { return parser_ != nullptr; }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IActiveScriptSite);
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetLCID(LCID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetItemInfo(LPCOLESTR name, DWORD, IUnknown** object, ITypeInfo** info) override {
        if (info != nullptr) *info = nullptr;
        const auto found = objects_.find(name);
        if (found == objects_.end() || object == nullptr) return TYPE_E_ELEMENTNOTFOUND;
        *object = found->second;
        found->second->AddRef();
        return S_OK;
    }
    STDMETHODIMP GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    STDMETHODIMP OnStateChange(SCRIPTSTATE) override { return S_OK; }
    STDMETHODIMP OnScriptError(IActiveScriptError* error) override {
        EXCEPINFO information{};
        DWORD context = 0;
        ULONG line = 0;
        LONG column = 0;
        error->GetExceptionInfo(&information);
        error->GetSourcePosition(&context, &line, &column);
        ADD_FAILURE() << "line " << line + 1 << ": error 0x" << std::hex << information.scode;
        ::SysFreeString(information.bstrSource);
        ::SysFreeString(information.bstrDescription);
        ::SysFreeString(information.bstrHelpFile);
        failed_ = true;
        return S_OK;
    }
    STDMETHODIMP OnEnterScript() override { return S_OK; }
    STDMETHODIMP OnLeaveScript() override { return S_OK; }

private:
    ComOwner<IActiveScript> engine_;
    ComOwner<IActiveScriptParse> parser_;
    std::map<std::wstring, IDispatch*> objects_;
    bool failed_ = false;
};

}  // namespace tovar::test
