#pragma once
#include <gtest/gtest.h>
#include <windows.h>

#include <oleauto.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

#include "front/win32/com_support.h"
#include "settings/settings_store.h"
#include "settings/win32/windows_registry.h"
#include "tovar_idl.h"
#include "win32/front/support/script_values.h"
#include "win32/front/support/small_archives.h"
#include "win32/shell/temporary_folder.h"

namespace tovar::test {

/// The folder of the test program: the component and the archiver libraries lie there.
inline std::filesystem::path programFolder() {
    wchar_t path[32768];
    const DWORD length = ::GetModuleFileNameW(nullptr, path, 32768);
    return std::filesystem::path(std::wstring_view(path, length)).parent_path();
}

/// COM on this thread.
class Apartment {
public:
    explicit Apartment(DWORD model = COINIT_APARTMENTTHREADED) : result_(::CoInitializeEx(nullptr, model)) {}
    ~Apartment() {
        if (SUCCEEDED(result_)) ::CoUninitialize();
    }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;

private:
    HRESULT result_;
};

/// While it lives, COM on this thread knows what a manifest tells.
class ActiveManifest {
public:
    /// @param resource  null for a manifest file; else the resource of a module
    explicit ActiveManifest(const std::filesystem::path& source, const wchar_t* resource = nullptr) {
        ACTCTXW description{};
        description.cbSize = sizeof description;
        description.lpSource = source.c_str();
        const std::wstring folder = programFolder().native();
        description.lpAssemblyDirectory = folder.c_str();
        description.dwFlags = ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
        if (resource != nullptr) {
            description.dwFlags |= ACTCTX_FLAG_RESOURCE_NAME_VALID;
            description.lpResourceName = resource;
        }
        context_ = ::CreateActCtxW(&description);
        active_ = context_ != INVALID_HANDLE_VALUE && ::ActivateActCtx(context_, &cookie_);
    }
    ~ActiveManifest() {
        if (active_) ::DeactivateActCtx(0, cookie_);
        if (context_ != INVALID_HANDLE_VALUE) ::ReleaseActCtx(context_);
    }
    ActiveManifest(const ActiveManifest&) = delete;
    ActiveManifest& operator=(const ActiveManifest&) = delete;

    [[nodiscard]] bool active() const { return active_; }

private:
    HANDLE context_ = INVALID_HANDLE_VALUE;
    ULONG_PTR cookie_ = 0;
    bool active_ = false;
};

/// The component's DLL by its own entries.
class ComponentDll {
public:
    ComponentDll() : module_(::LoadLibraryW((programFolder() / L"TovarEx.dll").c_str())) {}

    [[nodiscard]] bool loaded() const { return module_ != nullptr; }
    [[nodiscard]] HMODULE module() const { return module_.get(); }

    HRESULT canUnloadNow() const { return call("DllCanUnloadNow"); }
    HRESULT registerServer() const { return call("DllRegisterServer"); }
    HRESULT unregisterServer() const { return call("DllUnregisterServer"); }
    HRESULT install(BOOL install, LPCWSTR commandLine) const { return call("DllInstall", install, commandLine); }
    HRESULT getClassObject(REFCLSID id, REFIID iid, void** object) const {
        return call<REFCLSID, REFIID, LPVOID*>("DllGetClassObject", id, iid, object);
    }

    /// An object made without any registration.
    [[nodiscard]] ComOwner<ITovar> createObject() const {
        void* factory = nullptr;
        if (FAILED(getClassObject(CLSID_cTovar, IID_IClassFactory, &factory))) return nullptr;
        const ComOwner<IClassFactory> owner(static_cast<IClassFactory*>(factory));
        void* object = nullptr;
        if (FAILED(owner->CreateInstance(nullptr, IID_ITovar, &object))) return nullptr;
        return ComOwner<ITovar>(static_cast<ITovar*>(object));
    }

private:
    template <class... Arguments>
    HRESULT call(const char* name, Arguments... arguments) const {
        using Entry = HRESULT WINAPI(Arguments...);
        void* const entry = reinterpret_cast<void*>(::GetProcAddress(module_.get(), name));
        return entry == nullptr ? E_UNEXPECTED : reinterpret_cast<Entry*>(entry)(arguments...);
    }

    UniqueLibrary module_;
};

/// A host's window, and the object that it passes as fParent: sizes in twips.
class TestHost {
public:
    explicit TestHost(int width = 800, int height = 600)
        : window_(::CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, width, height,
                                    nullptr, nullptr, nullptr, nullptr)) {
        object.properties[L"hWnd"] = static_cast<LONG>(reinterpret_cast<LONG_PTR>(window_.get()));
        object.properties[L"Width"] = width * 15.0;
        object.properties[L"Height"] = height * 15.0;
    }

    ScriptObject object;

    [[nodiscard]] HWND window() const { return window_.get(); }
    void destroy() { window_.reset(); }
    /// The archive browser inside; null when there is none.
    [[nodiscard]] HWND browser() const { return ::FindWindowExW(window_.get(), nullptr, L"fArcMain", nullptr); }

private:
    UniqueWindow window_;
};

/// Keeps the allow-mask of both hives as it was.
class KeptAllowMask {
public:
    KeptAllowMask() : user_(read(hive::kCurrentUser)), machine_(read(hive::kLocalMachine)) {}
    ~KeptAllowMask() {
        write(hive::kCurrentUser, user_);
        write(hive::kLocalMachine, machine_);
    }
    KeptAllowMask(const KeptAllowMask&) = delete;
    KeptAllowMask& operator=(const KeptAllowMask&) = delete;

    static std::optional<DWORD> read(RegistryHive hive) {
        DWORD mask = 0, size = sizeof mask;
        const LSTATUS result = ::RegGetValueW(handleOfHive(hive), kKey, kName, RRF_RT_REG_DWORD, nullptr, &mask, &size);
        return result == ERROR_SUCCESS ? std::optional(mask) : std::nullopt;
    }
    static void write(RegistryHive hive, std::optional<DWORD> mask) {
        if (mask) {
            ::RegSetKeyValueW(handleOfHive(hive), kKey, kName, REG_DWORD, &*mask, sizeof *mask);
        } else {
            ::RegDeleteKeyValueW(handleOfHive(hive), kKey, kName);
        }
    }

private:
    static constexpr wchar_t kKey[] = L"SOFTWARE\\Vantrel\\Config", kName[] = L"ArchiverSetting";

    static HKEY handleOfHive(RegistryHive hive) {
        return hive == hive::kCurrentUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
    }

    std::optional<DWORD> user_, machine_;
};

inline std::wstring writeFile(const TemporaryFolder& folder, const std::wstring& name, std::string_view bytes) {
    const std::wstring path = folder / name;
    std::ofstream file(std::filesystem::path(path), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path;
}

/// Dispatches everything that waits on this thread.
inline void runMessages() {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&message);
}

/// Runs a program and waits for it.
/// @param line  its path, quoted where needed, and its arguments
/// @return its exit code
inline DWORD runProgram(std::wstring line) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process)) {
        return ~0U;
    }
    const UniqueHandle handle(process.hProcess), thread(process.hThread);
    DWORD code = ~0U;
    if (::WaitForSingleObject(process.hProcess, 60000) != WAIT_OBJECT_0) ::TerminateProcess(process.hProcess, 99);
    ::GetExitCodeProcess(process.hProcess, &code);
    return code;
}

/// Runs this test program again with an argument, and waits for it.
/// @return its exit code
inline DWORD runSelf(const std::wstring& argument) {
    wchar_t path[32768];
    ::GetModuleFileNameW(nullptr, path, 32768);
    return runProgram(L'"' + std::wstring(path) + L"\" " + argument);
}

}  // namespace tovar::test
