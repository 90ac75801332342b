#include "shell/win32/windows_clipboard.h"

#include <windows.h>

#include <memory>

#include "shell/win32/global_bytes.h"
#include "shell/win32/handles.h"

namespace tovar {
namespace {

using UniqueGlobal = std::unique_ptr<void, CloseWith<&::GlobalFree>>;

}  // namespace

bool WindowsClipboard::hasFiles() const { return ::IsClipboardFormatAvailable(CF_HDROP) != FALSE; }

bool WindowsClipboard::open() { return ::OpenClipboard(nullptr) != FALSE; }

void WindowsClipboard::close() noexcept { ::CloseClipboard(); }

bool WindowsClipboard::empty() { return ::EmptyClipboard() != FALSE; }

bool WindowsClipboard::putFiles(std::string_view block) {
    UniqueGlobal memory(::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, block.size()));
    void* const bytes = memory ? ::GlobalLock(memory.get()) : nullptr;
    if (bytes == nullptr) return false;
    block.copy(static_cast<char*>(bytes), block.size());
    ::GlobalUnlock(memory.get());
    if (::SetClipboardData(CF_HDROP, memory.get()) == nullptr) return false;
    static_cast<void>(memory.release());  // the system's now
    return true;
}

std::optional<std::string> WindowsClipboard::takeFiles() { return bytesOf(::GetClipboardData(CF_HDROP)); }

}  // namespace tovar
