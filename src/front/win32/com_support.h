#pragma once
#include <windows.h>

#include <oleauto.h>

#include <memory>
#include <new>
#include <string_view>

#include "shell/win32/com_object.h"
#include "shell/win32/handles.h"

namespace tovar {

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

}  // namespace tovar
