#pragma once
#include <windows.h>

#include <memory>
#include <type_traits>

namespace archiver {

template <auto Close>
struct CloseWith {
    template <class Handle>
    void operator()(Handle handle) const noexcept {
        Close(handle);
    }
};

using UniqueFont = std::unique_ptr<std::remove_pointer_t<HFONT>, CloseWith<&::DeleteObject>>;
using UniqueIcon = std::unique_ptr<std::remove_pointer_t<HICON>, CloseWith<&::DestroyIcon>>;
using UniqueKey = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseWith<&::RegCloseKey>>;

}  // namespace archiver
