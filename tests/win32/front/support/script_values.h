#pragma once
#include <windows.h>

#include <oleauto.h>

#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "front/win32/com_support.h"

namespace tovar::test {

/// A VARIANT by value, as callers write it; owns its text.
class Value {
public:
    Value() { ::VariantInit(&variant_); }
    Value(LONG number) : Value() {  // NOLINT
        V_VT(&variant_) = VT_I4;
        V_I4(&variant_) = number;
    }
    Value(double number) : Value() {  // NOLINT
        V_VT(&variant_) = VT_R8;
        V_R8(&variant_) = number;
    }
    Value(bool flag) : Value() {  // NOLINT
        V_VT(&variant_) = VT_BOOL;
        V_BOOL(&variant_) = flag ? VARIANT_TRUE : VARIANT_FALSE;
    }
    Value(const wchar_t* text) : Value() {  // NOLINT
        V_VT(&variant_) = VT_BSTR;
        V_BSTR(&variant_) = ::SysAllocString(text);
    }
    Value(IDispatch* object) : Value() {  // NOLINT
        V_VT(&variant_) = VT_DISPATCH;
        V_DISPATCH(&variant_) = object;
        if (object != nullptr) object->AddRef();
    }
    Value(const Value& other) : Value() { ::VariantCopy(&variant_, const_cast<VARIANT*>(&other.variant_)); }
    Value& operator=(const Value& other) {
        if (this != &other) ::VariantCopy(&variant_, const_cast<VARIANT*>(&other.variant_));
        return *this;
    }
    ~Value() { ::VariantClear(&variant_); }

    static Value ofType(VARTYPE type) {
        Value value;
        V_VT(&value.variant_) = type;
        return value;
    }
    static Value null() { return ofType(VT_NULL); }
    static Value missing() {
        Value value = ofType(VT_ERROR);
        V_ERROR(&value.variant_) = DISP_E_PARAMNOTFOUND;
        return value;
    }
    /// A reference to a variable of a typed language; the variable outlives it.
    static Value reference(VARTYPE type, void* variable) {
        Value value = ofType(VT_BYREF | type);
        V_BYREF(&value.variant_) = variable;
        return value;
    }
    /// A reference to a script's variable.
    static Value reference(Value& variable) { return reference(VT_VARIANT, &variable.variant_); }

    [[nodiscard]] VARIANT* get() { return &variant_; }
    [[nodiscard]] const VARIANT& operator*() const { return variant_; }
    [[nodiscard]] VARTYPE type() const { return V_VT(&variant_); }
    [[nodiscard]] std::wstring text() const {
        return type() == VT_BSTR ? std::wstring(viewOf(V_BSTR(&variant_))) : L"(no text)";
    }

private:
    VARIANT variant_;
};

/// An object of a script as far as all are alike: no type information, and references that are only counted, as it
/// lives on its owner.
class ScriptDispatch : public IDispatch {
public:
    ULONG references = 1;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        *object = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ? this : nullptr;
        if (*object == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
};

/// An object of a script: properties by name, read late-bound. Reads are logged.
class ScriptObject final : public ScriptDispatch {
public:
    std::map<std::wstring, Value> properties;
    std::vector<std::wstring> reads;
    bool functionsOnly = false;  ///< the names are those of functions

    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        DISPID id = kFirst;
        for (const auto& [name, value] : properties) {
            if (name == names[0]) {
                ids[0] = id;
                return S_OK;
            }
            ++id;
        }
        ids[0] = DISPID_UNKNOWN;
        return DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*,
                        UINT*) override {
        if (!has(id)) return DISP_E_MEMBERNOTFOUND;
        const auto property = std::next(properties.begin(), id - kFirst);
        if ((flags & DISPATCH_PROPERTYPUT) != 0) {
            return ::VariantCopy(property->second.get(), &parameters->rgvarg[0]);
        }
        if ((flags & (functionsOnly ? DISPATCH_METHOD : DISPATCH_PROPERTYGET)) == 0) return DISP_E_MEMBERNOTFOUND;
        reads.push_back(property->first);
        if (property->second.type() == VT_ERROR) return DISP_E_EXCEPTION;  // a property that fails
        return ::VariantCopy(result, property->second.get());
    }

private:
    static constexpr DISPID kFirst = 100;

    [[nodiscard]] bool has(DISPID id) const {
        return id >= kFirst && id < kFirst + static_cast<DISPID>(properties.size());
    }
};

}  // namespace tovar::test
