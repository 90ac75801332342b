#include "front/win32/registration.h"

#include <vector>

#include "front/win32/com_support.h"
#include "tovar_idl.h"

namespace tovar {
namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes\\";
constexpr wchar_t kProgId[] = L"TovarEx.cTovar";
constexpr wchar_t kClassName[] = L"TovarEx archive component";
constexpr wchar_t kLibraryVersion[] = L"1.0";
// The system's marshaller for interfaces that a type library describes.
constexpr wchar_t kTypeLibraryMarshaller[] = L"{00020424-0000-0000-C000-000000000046}";
#ifdef _WIN64
constexpr wchar_t kPlatform[] = L"win64";
#else
constexpr wchar_t kPlatform[] = L"win32";
#endif

struct RegistryRow {
    std::wstring key;   ///< below Software\Classes
    std::wstring name;  ///< empty: the key's default value
    std::wstring value;
};

std::wstring textOf(REFGUID id) {
    wchar_t text[40] = L"";
    ::StringFromGUID2(id, text, static_cast<int>(std::size(text)));
    return text;
}

HKEY hiveOf(RegistrationScope scope) noexcept {
    return scope == RegistrationScope::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

std::wstring classKey() { return L"CLSID\\" + textOf(CLSID_cTovar); }
std::wstring interfaceKey() { return L"Interface\\" + textOf(IID_ITovar); }
std::wstring libraryKey() { return L"TypeLib\\" + textOf(LIBID_TovarEx); }

std::vector<RegistryRow> rowsFor(const std::wstring& module) {
    const std::wstring library = libraryKey() + L"\\" + kLibraryVersion;
    const std::wstring folder = module.substr(0, module.find_last_of(L'\\'));
    return {
        {kProgId, L"", kClassName},
        {std::wstring(kProgId) + L"\\CLSID", L"", textOf(CLSID_cTovar)},
        {classKey(), L"", kClassName},
        {classKey() + L"\\InprocServer32", L"", module},
        {classKey() + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
        {classKey() + L"\\ProgID", L"", kProgId},
        {classKey() + L"\\VersionIndependentProgID", L"", kProgId},
        {classKey() + L"\\TypeLib", L"", textOf(LIBID_TovarEx)},
        {classKey() + L"\\Version", L"", kLibraryVersion},
        {interfaceKey(), L"", L"ITovar"},
        {interfaceKey() + L"\\ProxyStubClsid32", L"", kTypeLibraryMarshaller},
        {interfaceKey() + L"\\TypeLib", L"", textOf(LIBID_TovarEx)},
        {interfaceKey() + L"\\TypeLib", L"Version", kLibraryVersion},
        {library, L"", kClassName},
        {library + L"\\0\\" + kPlatform, L"", module},
        {library + L"\\FLAGS", L"", L"0"},
        {library + L"\\HELPDIR", L"", folder},
    };
}

LSTATUS write(HKEY hive, const RegistryRow& row) {
    HKEY opened = nullptr;
    const std::wstring path = kClasses + row.key;
    const LSTATUS created =
        ::RegCreateKeyExW(hive, path.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened, nullptr);
    if (created != ERROR_SUCCESS) return created;
    const UniqueKey key(opened);
    return ::RegSetValueExW(opened, row.name.empty() ? nullptr : row.name.c_str(), 0, REG_SZ,
                            reinterpret_cast<const BYTE*>(row.value.c_str()),
                            static_cast<DWORD>((row.value.size() + 1) * sizeof(wchar_t)));
}

LSTATUS removeTree(HKEY hive, const std::wstring& key) {
    const std::wstring path = kClasses + key;
    const LSTATUS result = ::RegDeleteTreeW(hive, path.c_str());
    return result == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : result;
}

bool hasSubkeys(HKEY hive, const std::wstring& key) {
    HKEY opened = nullptr;
    if (::RegOpenKeyExW(hive, (kClasses + key).c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return false;
    const UniqueKey owner(opened);
    DWORD count = 0;
    return ::RegQueryInfoKeyW(opened, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr, nullptr,
                              nullptr, nullptr) == ERROR_SUCCESS &&
           count != 0;
}

/// A component of the other bitness has classes and interfaces of its own, but shares the name of the class and the
/// type library: these go with the last one.
HRESULT unregister(HKEY hive) {
    const std::wstring languages = libraryKey() + L"\\" + kLibraryVersion + L"\\0";
    LSTATUS result = ERROR_SUCCESS;
    const auto remove = [&](const std::wstring& key) {
        const LSTATUS removed = removeTree(hive, key);
        if (result == ERROR_SUCCESS) result = removed;
    };
    remove(classKey());
    remove(interfaceKey());
    remove(languages + L"\\" + kPlatform);
    if (!hasSubkeys(hive, languages)) {
        remove(kProgId);
        remove(libraryKey());
    }
    return HRESULT_FROM_WIN32(result);
}

}  // namespace

HRESULT registerServer(RegistrationScope scope, const std::wstring& module) noexcept {
    return comMethod([&] {
        const HKEY hive = hiveOf(scope);
        for (const RegistryRow& row : rowsFor(module)) {
            const LSTATUS written = write(hive, row);
            if (written == ERROR_SUCCESS) continue;
            static_cast<void>(unregister(hive));
            return static_cast<HRESULT>(HRESULT_FROM_WIN32(written));
        }
        return static_cast<HRESULT>(S_OK);
    });
}

HRESULT unregisterServer(RegistrationScope scope) noexcept {
    return comMethod([&] { return unregister(hiveOf(scope)); });
}

}  // namespace tovar
