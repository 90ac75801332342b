#pragma once
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

#include "drivers/fakes/fake_module.h"
#include "drivers/library_finder.h"
#include "drivers/library_folders.h"
#include "front/fakes/fake_allow_mask.h"
#include "front/fakes/fake_browsers.h"
#include "front/fakes/fake_dialogs.h"
#include "front/fakes/fake_windows.h"
#include "front/tovar.h"
#include "shell/fakes/fake_file_system.h"
#include "shell/fakes/fake_message_boxes.h"
#include "shell/fakes/fake_system_information.h"
#include "shell/fakes/fake_system_paths.h"
#include "shell/fakes/fake_text_codec.h"

namespace tovar::test {

struct NoFolders final : LibraryFolders {
    [[nodiscard]] std::vector<std::wstring> searchOrder() const override { return {}; }
};

/// Loads libraries that consist of FakeExports' functions.
class FakeLibraryLoader final : public ModuleLoader {
public:
    std::map<std::wstring, std::string> prefixes;  ///< of the functions, by path
    std::vector<std::wstring> loaded;

    [[nodiscard]] std::unique_ptr<Module> load(const std::wstring& fullPath) override {
        loaded.push_back(fullPath);
        const auto found = prefixes.find(fullPath);
        return found == prefixes.end() ? nullptr : FakeModule::plain(found->second);
    }
};

/// Everything that the front stands on, with nothing installed. The real floors below stand on fakes of the system.
class FrontFixture : public testing::Test {
protected:
    /// Lays a library into the search path.
    /// @param prefix  of its functions; without one it cannot be loaded
    void install(const std::wstring& library, const std::string& prefix = "",
                 const FileVersion& version = {5 << 16 | 52, 1 << 16 | 7}) {
        const std::wstring path = pathOf(library);
        systemPaths.searchable[moduleFileName(library)] = path;
        files.addFile(path);
        information.versions[path] = version;
        if (!prefix.empty()) loader.prefixes[path] = prefix;
    }
    void installUnZip() { install(L"UnZip32.dll", "UnZip"); }
    void installTar() { install(L"Tar32.dll", "Tar"); }

    static std::wstring pathOf(const std::wstring& library) { return LR"(C:\Windows\)" + moduleFileName(library); }

    [[nodiscard]] DriverServices services() { return {libraries, messages, regional, files, passwords}; }

    [[nodiscard]] TovarPorts ports() {
        return {.surroundings = surroundings,
                .state = state,
                .settings = settings,
                .workFolder = workFolder,
                .paths = paths,
                .drivers = services(),
                .pointer = pointer,
                .pump = pump,
                .windows = windows,
                .browsers = browsers,
                .creation = creation,
                .configuration = configuration};
    }

    FrontFixture() {
        systemPaths.folders[L'C'] = LR"(C:\Archives)";
        windows.sizes[hostWindow] = {1000, 700};
        host.window = hostWindow;
        host.width = 15000;
        host.height = 10500;
    }

    const WindowHandle hostWindow = windowNumber(7);
    Journal journal;
    FakeExports exports;
    FakeFileSystem files;
    FakeSystemPaths systemPaths{files};
    FakeSystemInformation information;
    FakeMessageBoxes messages;
    PathOperations paths{files, systemPaths, information, messages};
    WorkFolder workFolder{paths, files, systemPaths};
    FakeAllowMask registry{journal};
    SettingsStore settings{registry};
    RegionalSettings regional;
    NoPasswords passwords;
    FakeTextCodec ansi;
    NoFolders folders;
    FakeLibraryLoader loader;
    LibraryFinder finder{systemPaths, files, folders, L""};
    ArchiverLibraries libraries{loader, finder, ansi, systemPaths};
    FakePointer pointer{journal};
    FakePump pump{journal};
    FakeWindowSystem windows{journal};
    FakeBrowsers browsers{journal, windows};
    FakeCreationWindows creation{journal, windows};
    FakeConfiguration configuration;
    FakeHost host;
    PluginState state;
    std::shared_ptr<int> surroundings = std::make_shared<int>();
};

}  // namespace tovar::test
