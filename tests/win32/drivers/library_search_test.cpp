// Which copy of a library is taken, on a real disk and in the system's real search order.

#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>

#include "drivers/archiver_libraries.h"
#include "drivers/common_driver.h"
#include "recording/session.h"
#include "shell/fakes/fake_message_boxes.h"
#include "shell/win32/ansi_codec.h"
#include "shell/win32/windows_file_system.h"
#include "shell/win32/windows_system_paths.h"

namespace tovar {
namespace {

namespace fs = std::filesystem;
using recording::Texts;

/// Undoes what a test did to the process.
class ProcessState {
public:
    ProcessState() : folder_(fs::current_path()) {
        wchar_t path[32767] = {};
        ::GetEnvironmentVariableW(L"PATH", path, 32767);
        path_ = path;
    }
    ~ProcessState() {
        fs::current_path(folder_);
        setPath(path_);
    }
    ProcessState(const ProcessState&) = delete;
    ProcessState& operator=(const ProcessState&) = delete;

    static void setPath(const std::wstring& path) { ::SetEnvironmentVariableW(L"PATH", path.c_str()); }
    void addToPath(const std::wstring& folder) const { setPath(folder + L";" + path_); }

private:
    fs::path folder_;
    std::wstring path_;
};

class LibrarySearch : public testing::Test {
protected:
    ~LibrarySearch() override {
        std::error_code ignored;
        fs::remove(recording::programFolder() / kLibrary, ignored);
    }

    [[nodiscard]] fs::path folder(const char* name) const {
        const fs::path made = session.folder() / name;
        fs::create_directories(made);
        return made;
    }

    fs::path install(const fs::path& where) const { return recording::Session::install(where, kLibrary, Texts::Utf8); }

    [[nodiscard]] std::wstring find() const { return LibraryFinder{paths, files, *folders, own}.find(kLibrary); }

    static bool same(const std::wstring& left, const fs::path& right) {
        return !left.empty() && fs::equivalent(left, right);
    }

    // A name of the tests' own: the program's folder holds the bundled libraries too.
    static constexpr const wchar_t* kLibrary = L"RecordingProbe32.dll";

    recording::Session session;
    ProcessState process;
    WindowsSystemPaths paths;
    WindowsFileSystem files;
    std::unique_ptr<LibraryFolders> folders = systemLibraryFolders();
    std::wstring own;
};

TEST_F(LibrarySearch, FindsNothingWhereNothingIs) { EXPECT_EQ(find(), L""); }

TEST_F(LibrarySearch, FindsTheCopyInTheProgramsFolder) {
    const fs::path copy = install(recording::programFolder());
    EXPECT_TRUE(same(find(), copy)) << fs::path(find());
}

TEST_F(LibrarySearch, FindsTheCopyInTheProgramsFolderEvenFromThere) {
    const fs::path copy = install(recording::programFolder());
    fs::current_path(recording::programFolder());
    EXPECT_TRUE(same(find(), copy)) << fs::path(find());
}

TEST_F(LibrarySearch, FindsTheCopyOnTheSearchPath) {
    const fs::path copy = install(folder("tools"));
    process.addToPath(folder("tools").wstring());
    EXPECT_TRUE(same(find(), copy)) << fs::path(find());
}

TEST_F(LibrarySearch, DoesNotTakeTheCopyInTheCurrentFolder) {
    install(folder("archives"));
    fs::current_path(folder("archives"));
    EXPECT_NE(paths.searchPath(kLibrary), L"") << "the system itself would";
    EXPECT_EQ(find(), L"");
}

TEST_F(LibrarySearch, DoesNotTakeTheCopyInTheCurrentFolderByARelativeSearchPath) {
    install(folder("archives"));
    install(folder("archives") / "bin");
    fs::current_path(folder("archives"));
    process.addToPath(L".;bin;.\\bin");
    EXPECT_EQ(find(), L"");
}

TEST_F(LibrarySearch, PassesTheCurrentFolderOverForTheSearchPath) {
    install(folder("archives"));
    const fs::path copy = install(folder("tools"));
    fs::current_path(folder("archives"));
    process.addToPath(folder("tools").wstring());
    EXPECT_TRUE(same(find(), copy)) << fs::path(find());
}

TEST_F(LibrarySearch, FallsBackToTheOwnFolder) {
    const fs::path copy = install(folder("component"));
    own = folder("component").wstring();
    EXPECT_TRUE(same(find(), copy)) << fs::path(find());
    install(folder("archives"));
    fs::current_path(folder("archives"));
    EXPECT_TRUE(same(find(), copy)) << fs::path(find());
}

TEST_F(LibrarySearch, PrefersTheSearchOrderToTheOwnFolder) {
    install(folder("component"));
    own = folder("component").wstring();
    const fs::path copy = install(folder("tools"));
    process.addToPath(folder("tools").wstring());
    EXPECT_TRUE(same(find(), copy)) << fs::path(find());
}

TEST_F(LibrarySearch, LoadsWhatItFindsAndLeavesTheProcessAsItWas) {
    const fs::path copy = install(folder("own"));
    own = folder("own").wstring();
    const fs::path current = fs::current_path();
    const LibraryFinder finder{paths, files, *folders, own};
    const std::unique_ptr<ModuleLoader> loader = systemModuleLoader();
    const AnsiCodec ansi;
    const DriverDescription description{.library = kLibrary, .prefix = "Cab", .messageTitle = L"Some Message"};
    {
        ArchiverLibraries libraries(*loader, finder, ansi, paths);
        session.script("version 1\n");
        EXPECT_EQ(libraries.getOrMissing(description).version(), 1);
        session.script("version 64\n");
        EXPECT_EQ(libraries.getOrMissing(description).version(), 64);
        EXPECT_TRUE(same(libraries.pathOf(kLibrary), copy));
        EXPECT_NE(::GetModuleHandleW(kLibrary), nullptr);
        EXPECT_EQ(session.log(), (std::vector<std::string>{"CabGetVersion", "CabGetVersion"}));
    }
    EXPECT_EQ(::GetModuleHandleW(kLibrary), nullptr) << "unloaded with the libraries";
    EXPECT_EQ(fs::current_path(), current);
}

TEST_F(LibrarySearch, HasNoLibraryWhereTheFileIsNone) {
    std::ofstream(folder("own") / "RecordingProbe32.dll") << "MZ, but no library";
    own = folder("own").wstring();
    const LibraryFinder finder{paths, files, *folders, own};
    const std::unique_ptr<ModuleLoader> loader = systemModuleLoader();
    const AnsiCodec ansi;
    const DriverDescription description{.library = kLibrary, .prefix = "Cab", .messageTitle = L"Some Message"};
    ArchiverLibraries libraries(*loader, finder, ansi, paths);
    EXPECT_EQ(libraries.get(description), nullptr);
    EXPECT_EQ(libraries.getOrMissing(description).version(), 1);
}

}  // namespace
}  // namespace tovar
