// The entry of our libraries for Windows. What their own copy of the C++ run time takes of a process is given back when
// the process unloads them.
//
// The run time's threads part keeps a record of every thread that it meets: a slot for values of threads and two
// handles. It never gives the slot back, and the record of the unloading thread only when that thread ends. A process
// has 1088 slots: one that loads and unloads libraries over and over would run out of them, and the run time ends the
// process then. Its exceptions part keeps a block of memory for exceptions in times of need.

#include <windows.h>

#include <array>
#include <atomic>

#if defined(_WIN64)
#define IMPORTED(name, size) "__imp_" #name
#else
#define IMPORTED(name, size) "__imp__" #name "@" #size
#endif

namespace __gnu_cxx {
void __freeres();  // frees what the exceptions part keeps; nothing may be thrown any more
}

extern "C" {
extern const PIMAGE_TLS_CALLBACK __xl_f;  // what winpthreads does when a thread comes or goes
BOOL WINAPI DllMainCRTStartup(HINSTANCE module, DWORD reason, LPVOID ending);
BOOL WINAPI moduleEntry(HINSTANCE module, DWORD reason, LPVOID ending);
}

namespace {

DWORD WINAPI allocateSlot();
BOOL WINAPI freeSlot(DWORD slot);

}  // namespace

// These stand in the library's place of the system's functions.
extern "C" {
extern decltype(&allocateSlot) const importedTlsAlloc __asm__(IMPORTED(TlsAlloc, 0));
extern decltype(&freeSlot) const importedTlsFree __asm__(IMPORTED(TlsFree, 4));
__attribute__((used)) decltype(&allocateSlot) const importedTlsAlloc = &allocateSlot;
__attribute__((used)) decltype(&freeSlot) const importedTlsFree = &freeSlot;
}

namespace {

constexpr DWORD kNone = TLS_OUT_OF_INDEXES;

// What the library has taken and not given back. Initialized before any code of the library runs.
constinit std::array<std::atomic<DWORD>, 16> slots = {kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone,
                                                      kNone, kNone, kNone, kNone, kNone, kNone, kNone, kNone};

/// @return whether the value was in the table
bool replace(DWORD from, DWORD to) noexcept {
    for (std::atomic<DWORD>& each : slots) {
        DWORD expected = from;
        if (each.compare_exchange_strong(expected, to)) return true;
    }
    return false;
}

template <class Function>
Function* systemFunction(const char* name) noexcept {
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), name)));
}

BOOL freeSystemSlot(DWORD slot) noexcept { return systemFunction<BOOL WINAPI(DWORD)>("TlsFree")(slot); }

DWORD WINAPI allocateSlot() {
    const DWORD slot = systemFunction<DWORD WINAPI()>("TlsAlloc")();
    if (slot != kNone) replace(kNone, slot);
    return slot;
}

BOOL WINAPI freeSlot(DWORD slot) {
    replace(slot, kNone);
    return freeSystemSlot(slot);
}

/// Nothing of the library runs after this.
void giveBack(HINSTANCE module) noexcept {
    __gnu_cxx::__freeres();
    __xl_f(module, DLL_THREAD_DETACH, nullptr);
    for (std::atomic<DWORD>& each : slots) {
        if (const DWORD slot = each.exchange(kNone); slot != kNone) freeSystemSlot(slot);
    }
}

}  // namespace

BOOL WINAPI moduleEntry(HINSTANCE module, DWORD reason, LPVOID ending) {
    const BOOL result = DllMainCRTStartup(module, reason, ending);
    const bool unloaded = reason == DLL_PROCESS_DETACH && ending == nullptr;
    if (unloaded || (reason == DLL_PROCESS_ATTACH && result == FALSE)) giveBack(module);
    return result;
}
