#pragma once
#include <windows.h>

#include <memory>

namespace archiver {

struct CloseHandleOf {
    void operator()(HANDLE handle) const noexcept { ::CloseHandle(handle); }
};

/// Owns a handle; "none" is null.
using UniqueHandle = std::unique_ptr<void, CloseHandleOf>;

inline UniqueHandle adoptHandle(HANDLE handle) noexcept {
    return UniqueHandle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

}  // namespace archiver
