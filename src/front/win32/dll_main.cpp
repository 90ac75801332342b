#include <windows.h>

#include <optional>

#include "front/win32/class_factory.h"
#include "front/win32/registration.h"
#include "front/win32/server_lock.h"
#include "front/win32/type_library.h"

// The entries that COM and registration programs call.

namespace {

HRESULT registerModule(tovar::RegistrationScope scope) noexcept {
    return tovar::comMethod([&] { return tovar::registerServer(scope, tovar::modulePath()); });
}

/// "user" is for the calling user, nothing for the machine.
std::optional<tovar::RegistrationScope> scopeOf(const wchar_t* commandLine) noexcept {
    if (commandLine == nullptr || *commandLine == L'\0') return tovar::RegistrationScope::Machine;
    if (::CompareStringOrdinal(commandLine, -1, L"user", -1, TRUE) == CSTR_EQUAL) {
        return tovar::RegistrationScope::User;
    }
    return std::nullopt;
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, LPVOID* object) {
    return tovar::ClassFactory::create(classId, iid, object);
}

STDAPI DllCanUnloadNow() { return tovar::ServerLock::any() ? S_FALSE : S_OK; }

STDAPI DllRegisterServer() { return registerModule(tovar::RegistrationScope::Machine); }

STDAPI DllUnregisterServer() { return tovar::unregisterServer(tovar::RegistrationScope::Machine); }

/// Registers or removes the class: regsvr32 /n /i:user TovarEx.dll does it for the calling user, without the rights
/// that the machine's part of the registry takes.
STDAPI DllInstall(BOOL install, LPCWSTR commandLine) {
    const std::optional<tovar::RegistrationScope> scope = scopeOf(commandLine);
    if (!scope) return E_INVALIDARG;
    return install != FALSE ? registerModule(*scope) : tovar::unregisterServer(*scope);
}
