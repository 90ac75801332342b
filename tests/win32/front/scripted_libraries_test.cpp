// The real component with recording libraries in place of all that it would find otherwise. A program's own folder is
// where libraries are looked for first, so these tests run in a copy of the program: "ScriptedLibraries.Answer" makes
// it, and starts the tests that are disabled here.

#include <gtest/gtest.h>

#include <filesystem>

#include "recording/session.h"
#include "win32/front/support/component_fixture.h"

namespace tovar {
namespace {

namespace fs = std::filesystem;
using recording::Session;
using recording::Texts;

TEST(ScriptedLibraries, Answer) {
    const test::TemporaryFolder folder;
    wchar_t program[32768];
    ::GetModuleFileNameW(nullptr, program, 32768);
    fs::copy_file(program, folder / L"tests.exe");
    fs::copy_file(test::programFolder() / L"TovarEx.dll", folder / L"TovarEx.dll");
    for (const wchar_t* library : {L"UnZip32.dll", L"Tar32.dll"}) Session::install(folder.path(), library, Texts::Utf8);
    EXPECT_EQ(test::runProgram(L'"' + (folder / L"tests.exe") +
                               L"\" --gtest_also_run_disabled_tests --gtest_filter=DISABLED_Scripted.*"),
              0U);
}

class DISABLED_Scripted : public test::ComponentFixture {
protected:
    /// Makes the object anew, so that it meets the libraries as they are now.
    void restart(const std::string& script) {
        object.reset();
        session.script(script);
        session.clearLog();
        object = dll.createObject();
    }

    bool canCreate() {
        VARIANT_BOOL result = VARIANT_FALSE;
        EXPECT_EQ(object->CanCreateArchive(&result), S_OK);
        return result != VARIANT_FALSE;
    }

    [[nodiscard]] bool called(const std::string& start) const {
        for (const std::string& line : session.log()) {
            if (line.starts_with(start)) return true;
        }
        return false;
    }

    const Session session;
    const std::wstring zip = test::writeFile(folder, L"any.zip", "whatever the library says");
    const std::wstring tar = test::writeFile(folder, L"any.tar", "whatever the library says");
};

TEST_F(DISABLED_Scripted, LibraryOfVersionOneIsUnusable) {
    restart("version 1\n");
    LONG mode = 3;
    EXPECT_FALSE(canOpen(zip, mode, true));
    EXPECT_TRUE(boxes.seen.empty()) << "nothing at all can be read";
    EXPECT_EQ(mode, 3);
}

TEST_F(DISABLED_Scripted, LibraryBelowItsMinimumIsUnusable) {
    restart("version 77\n");
    LONG mode = 3;
    EXPECT_FALSE(canOpen(zip, mode, true));
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, test::kUnavailable);
    EXPECT_EQ(boxes.seen[0].title, L"Open 'any.zip' by Vantrel");
    EXPECT_EQ(mode, 3);
    EXPECT_TRUE(canOpen(tar, mode, true)) << "77 is enough for this one";
    EXPECT_EQ(mode, 512);
}

TEST_F(DISABLED_Scripted, LibraryAtItsMinimumIsUsable) {
    restart("version 78\n");
    LONG mode = 3;
    EXPECT_TRUE(canOpen(zip, mode, true));
    EXPECT_EQ(mode, 16);
    restart("version 53\n");
    EXPECT_TRUE(canOpen(tar, mode, true));
    EXPECT_EQ(mode, 512);
}

TEST_F(DISABLED_Scripted, MissingLibraryIsToldOnlyWhenAsked) {
    const std::wstring ace = test::writeFile(folder, L"some.ace", "no library here reads this");
    LONG mode = -3;
    EXPECT_FALSE(canOpen(ace, mode, false));
    EXPECT_FALSE(open(ace));
    EXPECT_TRUE(boxes.seen.empty());
    EXPECT_FALSE(canOpen(ace, mode, true));
    EXPECT_EQ(mode, -3);
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, test::kUnavailable);
}

TEST_F(DISABLED_Scripted, RefusalIsTold) {
    restart("check 0\n");
    LONG mode = 3;
    EXPECT_FALSE(canOpen(zip, mode, false));
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, test::kRefused);
    EXPECT_EQ(mode, 3);
}

TEST_F(DISABLED_Scripted, ArchiveThatCannotBeListedIsShownEmpty) {
    restart("handle 0\n");
    EXPECT_TRUE(open(zip));
    ASSERT_EQ(boxes.seen.size(), 1U);
    EXPECT_EQ(boxes.seen[0].text, L"Can not open '" + zip + L"' (corrupted archive) !");
    EXPECT_EQ(boxes.seen[0].title, L"ZIP Message");
    EXPECT_FALSE(boxes.seen[0].information);
    EXPECT_TRUE(busy());
}

TEST_F(DISABLED_Scripted, ErrorInTheMiddleKeepsWhatWasRead) {
    restart("entry name=a.txt original=5\nerror 0x8017\nentry name=never.txt\n");
    EXPECT_TRUE(open(zip));
    EXPECT_TRUE(busy());
    EXPECT_TRUE(boxes.seen.empty());
    EXPECT_TRUE(called("UnZipCloseArchive"));
}

TEST_F(DISABLED_Scripted, LibraryIsCheckedThenOpenedThenClosed) {
    restart("entry name=a.txt original=5\n");
    ASSERT_TRUE(open(zip));
    std::vector<std::string> functions;
    for (const std::string& line : session.log()) {
        const std::string function = line.substr(0, line.find(' '));
        if (function.starts_with("UnZip") && function != "UnZipSetUnicodeMode") functions.push_back(function);
    }
    EXPECT_EQ(functions.at(0), "UnZipGetVersion");
    std::erase_if(functions, [](const std::string& each) {
        return each == "UnZipGetVersion" || each.find("Size") != std::string::npos;
    });
    EXPECT_EQ(functions, (std::vector<std::string>{"UnZipCheckArchive", "UnZipOpenArchive", "UnZipFindFirst",
                                                   "UnZipFindNext", "UnZipCloseArchive"}));
}

TEST_F(DISABLED_Scripted, NothingIsOpenedWithAnAllowMaskOfZero) {
    object.reset();  // it saves its setting when it goes
    test::KeptAllowMask::write(hive::kCurrentUser, 0);
    restart("");
    LONG mode = 3;
    EXPECT_FALSE(canOpen(zip, mode, true));
    EXPECT_FALSE(open(zip));
    EXPECT_FALSE(canCreate());
    EXPECT_TRUE(boxes.seen.empty());
    EXPECT_FALSE(called("UnZipCheckArchive"));
    EXPECT_FALSE(called("UnZipOpenArchive"));
}

TEST_F(DISABLED_Scripted, CreatorAloneIsEnoughToCreate) {
    EXPECT_FALSE(canCreate());
    const fs::path creator = test::programFolder() / L"InfoZip32.dll";
    fs::copy_file(test::programFolder() / L"Tar32.dll", creator);
    restart("version 1\n");
    EXPECT_TRUE(canCreate()) << "its presence is enough";
    LONG mode = 3;
    EXPECT_FALSE(canOpen(zip, mode, false));
    fs::remove(creator);
    restart("");
    EXPECT_FALSE(canCreate());
}

}  // namespace
}  // namespace tovar
