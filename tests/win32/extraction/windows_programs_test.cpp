#include "shell/win32/windows_programs.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <fstream>

#include "win32/shell/temporary_folder.h"

namespace tovar {
namespace {

class WindowsProgramsTest : public testing::Test {
protected:
    [[nodiscard]] std::wstring file(const std::wstring& name) const {
        const std::wstring path = folder / name;
        std::ofstream(std::filesystem::path(path)) << "content";
        return path;
    }

    const test::TemporaryFolder folder;
    WindowsPrograms programs;
};

TEST_F(WindowsProgramsTest, KnowNoneForFilesOfAnUnknownType) {
    const std::wstring path = file(L"x.unknownext");
    EXPECT_FALSE(programs.hasProgramFor(path));
    EXPECT_FALSE(programs.open(path));
}

TEST_F(WindowsProgramsTest, KnowProgramsThemselves) {
    wchar_t program[MAX_PATH] = L"";
    ::GetModuleFileNameW(nullptr, program, MAX_PATH);
    EXPECT_TRUE(programs.hasProgramFor(program));
}

TEST_F(WindowsProgramsTest, OpenNothingThatIsNotThere) {
    EXPECT_FALSE(programs.open(folder / L"none.txt"));
    EXPECT_FALSE(programs.open(L""));
    EXPECT_FALSE(programs.open(std::wstring(L"C:\\windows\0\\notepad.exe", 23)));
    EXPECT_FALSE(programs.hasProgramFor(folder / L"none.txt"));
    EXPECT_FALSE(programs.hasProgramFor(folder / std::wstring(400, L'x')));
}

}  // namespace
}  // namespace tovar
