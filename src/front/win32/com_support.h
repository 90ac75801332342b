#pragma once
#include <windows.h>

#include <oleauto.h>

#include <memory>
#include <new>
#include <string_view>

#include "shell/win32/handles.h"

namespace tovar {

struct ReleaseInterface {
    template <class Interface>
    void operator()(Interface* object) const noexcept {
        object->Release();
    }
};

/// One counted reference to a COM object.
template <class Interface>
using ComOwner = std::unique_ptr<Interface, ReleaseInterface>;

template <class Interface>
[[nodiscard]] ComOwner<Interface> shareObject(Interface* object) noexcept {
    if (object != nullptr) object->AddRef();
    return ComOwner<Interface>(object);
}

using UniqueBstr = std::unique_ptr<OLECHAR, CloseWith<&::SysFreeString>>;

/// A null BSTR is an empty text.
[[nodiscard]] inline std::wstring_view viewOf(BSTR text) noexcept {
    return {text == nullptr ? L"" : text, ::SysStringLen(text)};
}

/// Throws std::bad_alloc.
[[nodiscard]] inline UniqueBstr makeBstr(std::wstring_view text) {
    UniqueBstr result(::SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
    if (!result) throw std::bad_alloc();
    return result;
}

/// A VARIANT that frees what it holds.
class Variant {
public:
    Variant() noexcept { ::VariantInit(&value_); }
    ~Variant() { ::VariantClear(&value_); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;

    [[nodiscard]] VARIANT* get() noexcept { return &value_; }
    [[nodiscard]] const VARIANT& operator*() const noexcept { return value_; }
    [[nodiscard]] VARIANT* operator->() noexcept { return &value_; }

private:
    VARIANT value_;
};

/// Runs the body of a COM method: no exception leaves it.
template <class Body>
HRESULT guarded(Body body) noexcept {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

}  // namespace tovar
