#pragma once
#include <windows.h>

#include <memory>
#include <type_traits>

namespace tovar {

template <auto Close>
struct CloseWith {
    template <class Handle>
    void operator()(Handle handle) const noexcept {
        Close(handle);
    }
};

using UniqueLibrary = std::unique_ptr<std::remove_pointer_t<HMODULE>, CloseWith<&::FreeLibrary>>;
using UniqueFind = std::unique_ptr<void, CloseWith<&::FindClose>>;
using UniqueHandle = std::unique_ptr<void, CloseWith<&::CloseHandle>>;
using UniqueFont = std::unique_ptr<std::remove_pointer_t<HFONT>, CloseWith<&::DeleteObject>>;
using UniqueIcon = std::unique_ptr<std::remove_pointer_t<HICON>, CloseWith<&::DestroyIcon>>;
using UniqueKey = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseWith<&::RegCloseKey>>;
using UniqueWindow = std::unique_ptr<std::remove_pointer_t<HWND>, CloseWith<&::DestroyWindow>>;

/// One meaning of "none": nullptr, also for functions that answer INVALID_HANDLE_VALUE.
inline UniqueFind adoptFind(HANDLE handle) noexcept {
    return UniqueFind(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}
inline UniqueHandle adoptHandle(HANDLE handle) noexcept {
    return UniqueHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

}  // namespace tovar
