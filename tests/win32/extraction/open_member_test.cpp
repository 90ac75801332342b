// Members that are opened by a double-click: unpacked by the real library, started by the system's shell.

#include "win32/extraction/support/extraction_fixture.h"
#include "win32/system/support/stored_zip.h"

namespace tovar::test {
namespace {

namespace fs = std::filesystem;

/// A file type of the test's own, whose program copies what it is given.
class FileType {
public:
    explicit FileType(const fs::path& copy) {
        set(L".tovaropen", L"TovarOpenTest");
        set(L"TovarOpenTest\\shell\\open\\command", L"cmd.exe /c copy \"%1\" \"" + copy.native() + L"\"");
    }
    ~FileType() {
        ::RegDeleteTreeW(HKEY_CLASSES_ROOT, L".tovaropen");
        ::RegDeleteTreeW(HKEY_CLASSES_ROOT, L"TovarOpenTest");
    }
    FileType(const FileType&) = delete;
    FileType& operator=(const FileType&) = delete;

private:
    static void set(const wchar_t* key, const std::wstring& value) {
        EXPECT_EQ(::RegSetKeyValueW(HKEY_CLASSES_ROOT, key, nullptr, REG_SZ, value.c_str(),
                                    static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))),
                  ERROR_SUCCESS);
    }
};

class OpenMember : public ExtractionFixture {
protected:
    OpenMember() {
        libraries.bundled(L"UnZip32.dll");
        StoredZip archive(folder / L"some.zip");
        archive.add("docs/my notes.tovaropen", "in a folder");
        archive.add("one.tovaropen", "the first");
        archive.add("run.bat", "echo it ran>\"%~dp0..\\it ran.txt\"\r\n");
        archive.finish();
        fs::create_directory(work);
        create();
        EXPECT_EQ(object->SetTempDir(makeBstr(work.native()).get()), S_OK);
        EXPECT_TRUE(open(folder / L"some.zip"));
    }
    void TearDown() override {
        ::SetFileAttributesW(work.c_str(), FILE_ATTRIBUTE_NORMAL);  // the component hides it
        ExtractionFixture::TearDown();
    }
    [[nodiscard]] Files workFiles() const { return filesBelow(work); }

    const fs::path work = folder / L"work";
    const fs::path opened = folder / L"opened copy.txt";
    const FileType type{opened};
};

TEST_F(OpenMember, StartsItsProgramAndTakesTheCopyBackLater) {
    browser().openRow(1);
    ASSERT_TRUE(waitUntil([&] { return contentOf(opened) == "the first"; }));
    EXPECT_EQ(workFiles().size(), 1U);
    EXPECT_TRUE(fs::exists(work / L"one.tovaropen"));
    browser().close();
    runMessages();
    EXPECT_TRUE(workFiles().empty()) << testing::PrintToString(workFiles());
    EXPECT_TRUE(boxes.seen.empty());
}

TEST_F(OpenMember, FindsMembersOfFolders) {
    browser().openRow(0);
    ASSERT_EQ(browser().names(), Texts{L"my notes.tovaropen"});
    browser().openRow(0);
    ASSERT_TRUE(waitUntil([&] { return contentOf(opened) == "in a folder"; }));
    browser().close();
    runMessages();
    EXPECT_TRUE(fs::is_empty(work));
}

TEST_F(OpenMember, IsOpenedAnewEachTime) {
    writeFile(folder, L"work\\one.tovaropen", "something old");
    browser().openRow(1);
    ASSERT_TRUE(waitUntil([&] { return contentOf(opened) == "the first"; }));
    // The program that made it may still have it open.
    ASSERT_TRUE(waitUntil([&] {
        std::error_code inUse;
        return fs::remove(opened, inUse);
    }));
    browser().openRow(1);
    EXPECT_TRUE(waitUntil([&] { return contentOf(opened) == "the first"; }));
    EXPECT_TRUE(boxes.seen.empty());
}

TEST_F(OpenMember, StartsProgramsWithoutAQuestion) {
    browser().openRow(2);
    EXPECT_TRUE(waitUntil([&] { return contentOf(folder / L"it ran.txt").starts_with("it ran"); }));
    EXPECT_TRUE(boxes.seen.empty());
}

TEST_F(OpenMember, InUseStaysUntilTheNextChance) {
    browser().openRow(1);
    ASSERT_TRUE(waitUntil([&] { return contentOf(opened) == "the first"; }));
    {
        const UniqueHandle inUse = adoptHandle(::CreateFileW((work / L"one.tovaropen").c_str(), GENERIC_READ,
                                                             FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
        ASSERT_NE(inUse, nullptr);
        release();
        EXPECT_TRUE(fs::exists(work / L"one.tovaropen"));
        EXPECT_TRUE(fs::exists(work / L"TovarEx.opened"));
    }
    create();
    EXPECT_EQ(object->SetTempDir(makeBstr(work.native()).get()), S_OK);
    ASSERT_TRUE(open(folder / L"some.zip"));
    EXPECT_TRUE(fs::is_empty(work)) << testing::PrintToString(workFiles());
}

TEST_F(OpenMember, WithoutAnythingToOpenItStaysThere) {
    StoredZip archive(folder / L"other.zip");
    archive.add("a.unknownext", "nobody knows it");
    archive.finish();
    ASSERT_TRUE(open(folder / L"other.zip"));
    browser().openRow(0);
    EXPECT_TRUE(waitUntil([&] { return fs::exists(work / L"a.unknownext"); }));
    browser().close();
    EXPECT_TRUE(waitUntil([&] { return fs::is_empty(work); }));
}

}  // namespace
}  // namespace tovar::test
