#include <windows.h>

#include "archivers/unace/open_record.h"

namespace archiver::unace {
namespace {

constexpr DWORD kExecutes = PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;
constexpr DWORD kWrites = PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;

bool has(const void* address, DWORD protection, std::size_t size) noexcept {
    const char* at = static_cast<const char*>(address);
    const char* const end = at + size;
    if (end < at) return false;
    do {
        MEMORY_BASIC_INFORMATION region{};
        if (::VirtualQuery(at, &region, sizeof region) == 0 || region.State != MEM_COMMIT ||
            (region.Protect & protection) == 0 || (region.Protect & PAGE_GUARD) != 0) {
            return false;
        }
        at = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
    } while (at < end);
    return true;
}

}  // namespace

bool isCode(const void* address) noexcept { return has(address, kExecutes, 1); }
bool isWritable(const void* address, std::size_t size) noexcept { return has(address, kWrites, size); }

}  // namespace archiver::unace
