// Archives of other programs, unpacked by the bundled libraries through the real dialog.

#include <ostream>

#include "shell/win32/folder_dialog_controls.h"
#include "win32/extraction/support/extraction_fixture.h"

namespace tovar::test {
namespace {

struct KindCase {
    const char* name;
    const wchar_t* library;
    const wchar_t* data;
    Files files;             ///< as other programs unpack them
    Files flat;              ///< without their folders
    const wchar_t* pattern;  ///< that one of them matches
    Files matching;
};
std::ostream& operator<<(std::ostream& stream, const KindCase& each) { return stream << each.name; }

class RealExtraction : public ExtractionFixture, public testing::WithParamInterface<KindCase> {
protected:
    RealExtraction() {
        libraries.bundled(GetParam().library);
        create();
        EXPECT_TRUE(open(copyOfData(GetParam().data)));
    }
    void TearDown() override {
        EXPECT_TRUE(boxes.seen.empty()) << testing::PrintToString(boxes.seen.empty() ? L"" : boxes.seen[0].text);
        ExtractionFixture::TearDown();
    }

    /// Extracts into a folder that the user makes in the dialog.
    /// @return what is in it afterwards
    Files extractTo(const std::wstring& name, const std::function<void(const UnpackControls&)>& use) const {
        const DialogUser<IDC_TXT_NAME> namer([&](HWND dialog) {
            ::SetDlgItemTextW(dialog, IDC_TXT_NAME, name.c_str());
            ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
        });
        extract([&](const UnpackControls& dialog) {
            dialog.click(IDC_CMD_NEW_FOLDER);
            EXPECT_EQ(dialog.text(IDC_LBL_FOLDER), folder / name);
            use(dialog);
            dialog.press(IDOK);
        });
        return filesBelow(folder / name);
    }
};

TEST_P(RealExtraction, OfAllFiles) {
    EXPECT_EQ(extractTo(L"my, new folder", [](const UnpackControls& dialog) { dialog.choose(1); }), GetParam().files);
}

TEST_P(RealExtraction, WithoutFolders) {
    EXPECT_EQ(extractTo(L"flat",
                        [](const UnpackControls& dialog) {
                            dialog.setCheck(IDC_CHK_OPT_KEEP_FOLDERS, false);
                            dialog.choose(1);
                        }),
              GetParam().flat);
}

TEST_P(RealExtraction, OfFilesThatMatch) {
    EXPECT_EQ(extractTo(L"matching",
                        [](const UnpackControls& dialog) {
                            dialog.choose(2);
                            dialog.type(GetParam().pattern);
                        }),
              GetParam().matching);
}

TEST_P(RealExtraction, OfSelectedFiles) {
    selectAll();
    EXPECT_EQ(
        extractTo(L"selected", [](const UnpackControls& dialog) { EXPECT_TRUE(dialog.isChecked(IDC_OPT_EXTRACT)); }),
        GetParam().files);
}

const Files kTree = {{"docs/again.txt", {1240, 0x5F9D6DA7}},
                     {"docs/empty.txt", {0, 0}},
                     {"docs/old notes/my file.txt", {20, 0xE9CB659D}},
                     {"readme.txt", {16, 0xEF3F9250}}};
const Files kFlatTree = {{"again.txt", {1240, 0x5F9D6DA7}},
                         {"empty.txt", {0, 0}},
                         {"my file.txt", {20, 0xE9CB659D}},
                         {"readme.txt", {16, 0xEF3F9250}}};
const Files kReadme = {{"readme.txt", {16, 0xEF3F9250}}};

INSTANTIATE_TEST_SUITE_P(
    Kinds, RealExtraction,
    testing::Values(
        KindCase{"Zip", L"UnZip32.dll", L"zip\\zip.zip", kTree, kFlatTree, L"readme.*", kReadme},
        KindCase{"Tar", L"Tar32.dll", L"tar\\ustar.tgz", kTree, kTree, L"readme.*", kReadme},
        KindCase{"Rar",
                 L"UnRar32.dll",
                 L"rar\\rar5_multiple_files.rar",
                 {{"test1.bin", {4096, 0x7E13B2C6}},
                  {"test2.bin", {4096, 0xF166AFCB}},
                  {"test3.bin", {4096, 0x9FB123D9}},
                  {"test4.bin", {4096, 0x10C43ED4}}},
                 {{"test1.bin", {4096, 0x7E13B2C6}},
                  {"test2.bin", {4096, 0xF166AFCB}},
                  {"test3.bin", {4096, 0x9FB123D9}},
                  {"test4.bin", {4096, 0x10C43ED4}}},
                 L"*3.bin",
                 {{"test3.bin", {4096, 0x9FB123D9}}}},
        KindCase{"Lzh",
                 L"UnLha32.dll",
                 L"lzh\\unix-folders-level1.lzh",
                 {{"subdir/subdir2/hello.txt", {12, 0xAF083B2D}}},
                 {{"subdir/subdir2/hello.txt", {12, 0xAF083B2D}}},
                 L"subdir/subdir2/*.txt",
                 {{"subdir/subdir2/hello.txt", {12, 0xAF083B2D}}}},
        KindCase{"Cab",
                 L"Cab32.dll",
                 L"cab\\mszip_lzx_qtm.cab",
                 {{"lzx.txt", {187, 0x1B19678C}}, {"mszip.txt", {57, 0x23AE717C}}, {"qtm.txt", {59, 0xE4CF865D}}},
                 {{"lzx.txt", {187, 0x1B19678C}}, {"mszip.txt", {57, 0x23AE717C}}, {"qtm.txt", {59, 0xE4CF865D}}},
                 L"q*",
                 {{"qtm.txt", {59, 0xE4CF865D}}}},
        // Members of the same name lie in several of its folders: without them the last one stays.
        KindCase{"Arj",
                 L"UnArj32j.dll",
                 L"arj\\methods.arj",
                 {{"method1/novel.txt", {16004, 0x8C44A0BA}},
                  {"method2/main.c", {1160, 0xC28ACD00}},
                  {"method3/zeros.bin", {300000, 0xF6B2E2FB}},
                  {"method4/main.c", {1160, 0xC28ACD00}},
                  {"method4/novel.txt", {12005, 0x73FBB476}},
                  {"stored/empty.txt", {0, 0}},
                  {"stored/readme.txt", {29, 0x9DA46E34}}},
                 {{"empty.txt", {0, 0}},
                  {"main.c", {1160, 0xC28ACD00}},
                  {"novel.txt", {12005, 0x73FBB476}},
                  {"readme.txt", {29, 0x9DA46E34}},
                  {"zeros.bin", {300000, 0xF6B2E2FB}}},
                 L"*.bin",
                 {{"method3/zeros.bin", {300000, 0xF6B2E2FB}}}},
        KindCase{"Ace",
                 L"UnAce.dll",
                 L"ace\\stored.ace",
                 {{"docs/a.txt", {700, 0xADAA7271}}, {"empty.txt", {0, 0}}},
                 {{"a.txt", {700, 0xADAA7271}}, {"empty.txt", {0, 0}}},
                 L"e*.txt",
                 {{"empty.txt", {0, 0}}}}),
    [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace tovar::test
