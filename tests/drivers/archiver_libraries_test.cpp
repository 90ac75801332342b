#include "drivers/archiver_libraries.h"

#include <gtest/gtest.h>

#include "drivers/fakes/fake_module.h"
#include "drivers/un_tar.h"
#include "drivers/un_zip.h"
#include "shell/fakes/fake_file_system.h"
#include "shell/fakes/fake_system_paths.h"
#include "shell/fakes/fake_text_codec.h"

namespace tovar {
namespace {

struct NoFolders final : LibraryFolders {
    std::vector<std::wstring> searchOrder() const override { return {}; }
};

/// Loads what the test prepared, by path.
class FakeModuleLoader final : public ModuleLoader {
public:
    std::map<std::wstring, std::string> prefixes;  ///< of the library that lies at a path
    std::vector<std::wstring> loaded;

    [[nodiscard]] std::unique_ptr<Module> load(const std::wstring& fullPath) override {
        loaded.push_back(fullPath);
        const auto found = prefixes.find(fullPath);
        return found == prefixes.end() ? nullptr : test::FakeModule::plain(found->second);
    }
};

class ArchiverLibrariesTest : public testing::Test {
protected:
    ArchiverLibrariesTest() { paths.folders[L'C'] = LR"(C:\Archives)"; }

    void install(const std::wstring& library, const std::wstring& folder, const std::string& prefix) {
        const std::wstring path = folder + moduleFileName(library);
        paths.searchable[moduleFileName(library)] = path;
        if (!prefix.empty()) loader.prefixes[path] = prefix;
    }

    const std::wstring unZip = LR"(C:\Windows\)" + moduleFileName(L"UnZip32.dll");
    const std::wstring tar = LR"(C:\Windows\)" + moduleFileName(L"Tar32.dll");
    test::FakeExports exports;
    test::FakeFileSystem files;
    test::FakeSystemPaths paths{files};
    test::FakeTextCodec ansi;
    NoFolders folders;
    LibraryFinder finder{paths, files, folders, L""};
    FakeModuleLoader loader;
    ArchiverLibraries libraries{loader, finder, ansi, paths};
};

TEST_F(ArchiverLibrariesTest, LoadsALibraryOnceByItsFullPath) {
    install(L"UnZip32.dll", LR"(C:\Windows\)", "UnZip");
    ArchiverLibrary* const library = libraries.get(cUnZip::kDescription);
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(library->version(), 540);
    EXPECT_EQ(libraries.get(cUnZip::kDescription), library);
    EXPECT_EQ(loader.loaded, (std::vector<std::wstring>{unZip}));
}

TEST_F(ArchiverLibrariesTest, KeepsLibrariesApart) {
    install(L"UnZip32.dll", LR"(C:\Windows\)", "UnZip");
    install(L"Tar32.dll", LR"(C:\Windows\)", "Tar");
    ArchiverLibrary* const zipLibrary = libraries.get(cUnZip::kDescription);
    ArchiverLibrary* const tarLibrary = libraries.get(cUnTar::kDescription);
    ASSERT_NE(tarLibrary, nullptr);
    EXPECT_NE(zipLibrary, tarLibrary);
    EXPECT_EQ(tarLibrary->version(), 540) << "bound by its own prefix";
    EXPECT_EQ(loader.loaded, (std::vector<std::wstring>{unZip, tar}));
}

TEST_F(ArchiverLibrariesTest, HasNothingWhereNothingIsFound) {
    EXPECT_EQ(libraries.get(cUnZip::kDescription), nullptr);
    EXPECT_EQ(libraries.pathOf(L"UnZip32.dll"), L"");
    EXPECT_TRUE(loader.loaded.empty());
}

TEST_F(ArchiverLibrariesTest, HasNothingWhereTheFileCannotBeLoaded) {
    install(L"UnZip32.dll", LR"(C:\Windows\)", "");
    EXPECT_EQ(libraries.get(cUnZip::kDescription), nullptr);
    EXPECT_EQ(libraries.pathOf(L"UnZip32.dll"), unZip);
}

TEST_F(ArchiverLibrariesTest, FindsALibraryThatIsInstalledLater) {
    EXPECT_EQ(libraries.get(cUnZip::kDescription), nullptr);
    install(L"UnZip32.dll", LR"(C:\Windows\)", "UnZip");
    EXPECT_NE(libraries.get(cUnZip::kDescription), nullptr);
}

TEST_F(ArchiverLibrariesTest, TellsThePathOfTheLoadedLibrary) {
    install(L"UnZip32.dll", LR"(C:\Windows\)", "UnZip");
    EXPECT_EQ(libraries.pathOf(L"UnZip32.dll"), unZip);
    EXPECT_NE(libraries.get(cUnZip::kDescription), nullptr);
    install(L"UnZip32.dll", LR"(C:\Elsewhere\)", "UnZip");
    EXPECT_EQ(libraries.pathOf(L"UnZip32.dll"), unZip);
    EXPECT_EQ(libraries.pathOf(L"UNZIP32.DLL"), unZip);
}

TEST_F(ArchiverLibrariesTest, StandsInForAMissingLibrary) {
    ArchiverLibrary& missing = libraries.getOrMissing(cUnZip::kDescription);
    EXPECT_EQ(missing.version(), 1);
    EXPECT_EQ(missing.openArchive(nullptr, L"a.zip", 0), nullptr);
    install(L"UnZip32.dll", LR"(C:\Windows\)", "UnZip");
    EXPECT_EQ(libraries.getOrMissing(cUnZip::kDescription).version(), 540);
}

}  // namespace
}  // namespace tovar
