#include <cstdio>

#include "win32/system/support/stored_zip.h"
#include "win32/system/support/system_fixture.h"

namespace tovar::test {
namespace {

class LargeArchive : public SystemFixture {};

TEST_F(LargeArchive, OfAMillionMembersOpensCompletely) {
    const std::wstring file = folder / L"million.zip";
    std::uint64_t size = 0;
    {
        // 999 folders of a thousand members each, and a thousand members beside them.
        StoredZip zip(file);
        char name[32];
        for (int number = 0; number < 1000000; ++number) {
            if (number < 999000) {
                std::snprintf(name, sizeof name, "d%03d/m%06d.txt", number / 1000, number);
            } else {
                std::snprintf(name, sizeof name, "m%06d.txt", number);
            }
            zip.add(name, "data\n");
        }
        size = zip.finish();
    }
    libraries.bundled();
    create();
    ASSERT_TRUE(open(file));
    EXPECT_TRUE(boxes.seen.empty());
    const ShownBrowser shown = browser();
    EXPECT_EQ(shown.rowCount(), 1999);
    EXPECT_EQ(shown.cell(0, 0), L"d000");
    EXPECT_EQ(shown.cell(998, 0), L"d998");
    EXPECT_EQ(shown.cell(999, 0), L"m999000.txt");
    EXPECT_EQ(shown.cell(1998, 0), L"m999999.txt");
    EXPECT_EQ(shown.cell(1998, 1), L"         5");
    EXPECT_EQ(shown.folders().size(), 999U);

    // The system writes the size with its own grouping.
    wchar_t grouped[40] = L"";
    NUMBERFMTW format{0, 0, 3, const_cast<wchar_t*>(L"."), const_cast<wchar_t*>(L","), 1};
    ASSERT_NE(::GetNumberFormatW(LOCALE_USER_DEFAULT, 0, std::to_wstring(size).c_str(), &format, grouped, 40), 0);
    const std::wstring start = L"Archive has 1000000 files " + std::wstring(grouped) + L" Bytes ";
    EXPECT_TRUE(shown.status().starts_with(start)) << testing::PrintToString(shown.status());

    shown.openRow(998);
    EXPECT_EQ(shown.address(), L"million.zip\\d998\\");
    EXPECT_EQ(shown.rowCount(), 1000);
    EXPECT_EQ(shown.cell(0, 0), L"m998000.txt");
    EXPECT_EQ(shown.cell(999, 0), L"m998999.txt");
    EXPECT_EQ(shown.cell(999, 8), L"C582") << "the end of 0xE6C1C582";
}

}  // namespace
}  // namespace tovar::test
