#include <ostream>

#include "win32/system/support/path_variable.h"
#include "win32/system/support/system_fixture.h"

namespace tovar::test {
namespace {

/// The current folder, put back at the end.
class KeptCurrentFolder {
public:
    KeptCurrentFolder() { ::GetCurrentDirectoryW(32768, text_); }
    ~KeptCurrentFolder() { ::SetCurrentDirectoryW(text_); }
    KeptCurrentFolder(const KeptCurrentFolder&) = delete;
    KeptCurrentFolder& operator=(const KeptCurrentFolder&) = delete;

private:
    wchar_t text_[32768] = L"";
};

class MissingLibraries : public SystemFixture {
protected:
    void expectUnavailable(const std::wstring& file, const wchar_t* name) {
        boxes.seen.clear();
        EXPECT_EQ(kindOf(file), -5);
        EXPECT_FALSE(open(file));
        EXPECT_TRUE(boxes.seen.empty()) << "nothing is said unasked";
        EXPECT_EQ(kindOf(file, true), -5);
        EXPECT_EQ(boxes.seen.size(), 1U);
        expectToldOf(name, kUnavailable);
        EXPECT_FALSE(busy());
    }

    const std::wstring zip = writeFile(folder, L"small.zip", kSmallZip);
    const std::wstring tgz = writeFile(folder, L"small.tar.gz", kSmallTarGz);
    const std::wstring installed = folder / L"installed";  ///< a folder for libraries
};

TEST_F(MissingLibraries, AllOfThemLeaveNothingToOpenAndNothingToSay) {
    create();
    for (const std::wstring& file : {zip, tgz}) {
        EXPECT_EQ(kindOf(file, true), -5);
        EXPECT_FALSE(open(file));
    }
    EXPECT_FALSE(canCreate());
    EXPECT_TRUE(boxes.seen.empty());
}

TEST_F(MissingLibraries, OneMakesItsKindUnavailable) {
    libraries.bundled(L"Tar32.dll");
    create();
    expectUnavailable(zip, L"small.zip");
    EXPECT_EQ(kindOf(tgz), 512);
    EXPECT_TRUE(open(tgz));
}

TEST_F(MissingLibraries, ComeBackWithTheNextObject) {
    libraries.bundled(L"Tar32.dll");
    create();
    EXPECT_EQ(kindOf(zip), -5);
    libraries.bundled(L"UnZip32.dll");
    EXPECT_EQ(kindOf(zip), -5);
    const ComOwner<ITovar> second = createObject();
    EXPECT_EQ(kindOf(zip), 16);
}

struct MaskCase {
    const char* name;
    std::optional<DWORD> user, machine;
    bool zip, tar;
};
std::ostream& operator<<(std::ostream& stream, const MaskCase& each) { return stream << each.name; }
class SwitchedOff : public MissingLibraries, public testing::WithParamInterface<MaskCase> {};

TEST_P(SwitchedOff, KindsAreUnavailable) {
    KeptAllowMask::write(hive::kCurrentUser, GetParam().user);
    KeptAllowMask::write(hive::kLocalMachine, GetParam().machine);
    libraries.bundled();
    create();
    if (GetParam().zip) {
        EXPECT_EQ(kindOf(zip, true), 16);
    } else {
        expectUnavailable(zip, L"small.zip");
    }
    boxes.seen.clear();
    EXPECT_EQ(kindOf(tgz, true), GetParam().tar ? 512 : -5);
    EXPECT_EQ(boxes.seen.empty(), GetParam().tar);
}

INSTANTIATE_TEST_SUITE_P(Masks, SwitchedOff,
                         testing::Values(MaskCase{"ZipByTheUser", 0x7EF, std::nullopt, false, true},
                                         MaskCase{"TarByTheUser", 0x5F7, std::nullopt, true, false},
                                         MaskCase{"ZipByTheMachine", std::nullopt, 0x7EF, false, true},
                                         MaskCase{"MachineCountsWhenTheUserHasAll", 0xFFFFFFFF, 0x7EF, false, true},
                                         MaskCase{"UserCountsBeforeTheMachine", 0x7FF, 0x7EF, true, true},
                                         MaskCase{"TarAlone", 512, std::nullopt, false, true}),
                         [](const auto& each) { return std::string(each.param.name); });

struct FileCase {
    const char* name;
    void (*place)(LibrariesBeside& libraries);
};
std::ostream& operator<<(std::ostream& stream, const FileCase& each) { return stream << each.name; }
class NoLibrary : public MissingLibraries, public testing::WithParamInterface<FileCase> {};

void writeLibrary(LibrariesBeside& libraries, std::string_view bytes) {
    std::ofstream file(libraries.place(L"UnZip32.dll"), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

TEST_P(NoLibrary, UnderALibrarysNameMakesTheKindUnavailable) {
    libraries.bundled(L"Tar32.dll");
    GetParam().place(libraries);
    create();
    expectUnavailable(zip, L"small.zip");
    EXPECT_TRUE(open(tgz));
}

INSTANTIATE_TEST_SUITE_P(
    Files, NoLibrary,
    testing::Values(FileCase{"EmptyFile", [](LibrariesBeside& libraries) { writeLibrary(libraries, ""); }},
                    FileCase{"Text", [](LibrariesBeside& libraries) { writeLibrary(libraries, "no program at all"); }},
                    FileCase{"HalfAProgram", [](LibrariesBeside& libraries) { writeLibrary(libraries, "MZ\x90"); }},
                    FileCase{"Folder",
                             [](LibrariesBeside& libraries) {
                                 std::filesystem::create_directory(libraries.place(L"UnZip32.dll"));
                             }},
                    FileCase{"ModuleWithoutTheFunctions",
                             [](LibrariesBeside& libraries) {
                                 std::filesystem::copy_file(staged::productsFolder() / L"TovarEx.dll",
                                                            libraries.place(L"UnZip32.dll"));
                             }}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(MissingLibraries, OneInTheCurrentFolderIsNotLoaded) {
    const recording::Session session;
    const KeptCurrentFolder keptFolder;
    libraries.bundled(L"Tar32.dll");
    recording::Session::install(installed, L"UnZip32.dll", recording::Texts::Utf8);
    ASSERT_TRUE(::SetCurrentDirectoryW(installed.c_str()));
    create();
    expectUnavailable(zip, L"small.zip");
    release();
    EXPECT_TRUE(session.log().empty()) << "the planted library was asked";
}

TEST_F(MissingLibraries, OneInTheCurrentFolderHidesNoOther) {
    const recording::Session session;
    const KeptCurrentFolder keptFolder;
    libraries.bundled();
    recording::Session::install(installed, L"UnZip32.dll", recording::Texts::Utf8);
    ASSERT_TRUE(::SetCurrentDirectoryW(installed.c_str()));
    create();
    EXPECT_TRUE(open(zip));
    release();
    EXPECT_TRUE(session.log().empty());
}

TEST_F(MissingLibraries, OneOnThePathIsFound) {
    const recording::Session session;
    recording::Session::install(installed, L"UnZip32.dll", recording::Texts::Utf8);
    const PathVariable path(installed);
    create();
    EXPECT_EQ(kindOf(zip), 16);
    release();
    EXPECT_FALSE(session.log().empty());
}

TEST_F(MissingLibraries, OneBesideTheProgramGoesBeforeThePath) {
    const recording::Session session;
    libraries.bundled();
    recording::Session::install(installed, L"UnZip32.dll", recording::Texts::Utf8);
    const PathVariable path(installed);
    create();
    EXPECT_EQ(kindOf(zip), 16);
    release();
    EXPECT_TRUE(session.log().empty());
}

/// An object of a component that lies somewhere else than the program.
ComOwner<ITovar> createFrom(HMODULE module) {
    using Entry = HRESULT WINAPI(REFCLSID, REFIID, void**);
    void* const entry = reinterpret_cast<void*>(::GetProcAddress(module, "DllGetClassObject"));
    void* found = nullptr;
    EXPECT_EQ(reinterpret_cast<Entry*>(entry)(CLSID_cTovar, IID_IClassFactory, &found), S_OK);
    const ComOwner<IClassFactory> factory(static_cast<IClassFactory*>(found));
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_ITovar, &found), S_OK);
    return ComOwner<ITovar>(static_cast<ITovar*>(found));
}

TEST_F(MissingLibraries, OneBesideTheComponentIsTheLastToBeFound) {
    const recording::Session session;
    recording::Session::install(installed, L"Tar32.dll", recording::Texts::Utf8);
    recording::Session::install(installed, L"UnZip32.dll", recording::Texts::Utf8);
    std::filesystem::copy_file(staged::productsFolder() / L"TovarEx.dll", installed + L"\\TovarEx.dll");
    libraries.bundled(L"Tar32.dll");
    const UniqueLibrary module(::LoadLibraryW((installed + L"\\TovarEx.dll").c_str()));
    ASSERT_NE(module, nullptr);
    object = createFrom(module.get());
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(kindOf(zip), 16);
    EXPECT_EQ(kindOf(tgz), 512);
    object.reset();
    for (const std::string& line : session.log()) EXPECT_TRUE(line.starts_with("UnZip")) << line;
    EXPECT_FALSE(session.log().empty());
}

}  // namespace
}  // namespace tovar::test
