#include <gtest/gtest.h>

#include <cmath>

#include "win32/browser/browser_fixture.h"

namespace tovar::test {
namespace {

class ContentsViewTest : public BrowserFixture {
protected:
    [[nodiscard]] LVCOLUMNW column(int place) const {
        LVCOLUMNW column{};
        column.mask = LVCF_WIDTH | LVCF_FMT;
        send(LV1, LVM_GETCOLUMNW, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&column));
        return column;
    }
    [[nodiscard]] int widthOf(const std::wstring& text) const {
        const HDC device = ::GetDC(control(LV1));
        const HGDIOBJ former = ::SelectObject(device, reinterpret_cast<HFONT>(send(LV1, WM_GETFONT)));
        SIZE size{};
        ::GetTextExtentPoint32W(device, text.c_str(), static_cast<int>(text.size()), &size);
        ::SelectObject(device, former);
        ::ReleaseDC(control(LV1), device);
        return size.cx;
    }
    void clickHeader(int place) const {
        RECT area{};
        ::SendMessageW(header(), HDM_GETITEMRECT, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&area));
        const LPARAM middle = MAKELPARAM((area.left + area.right) / 2, (area.top + area.bottom) / 2);
        ::SendMessageW(header(), WM_LBUTTONDOWN, MK_LBUTTON, middle);
        ::SendMessageW(header(), WM_LBUTTONUP, 0, middle);
    }
    [[nodiscard]] LPARAM middleOfRow(int row) const {
        RECT area{};
        area.left = LVIR_LABEL;
        send(LV1, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&area));
        return MAKELPARAM(area.left + 3, (area.top + area.bottom) / 2);
    }
    [[nodiscard]] int iconOf(int row) const {
        LVITEMW item{};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        send(LV1, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        return item.iImage;
    }
    [[nodiscard]] int sortArrow(int place) const {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        ::SendMessageW(header(), HDM_GETITEMW, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&item));
        return item.fmt & (HDF_SORTUP | HDF_SORTDOWN);
    }
};

TEST_F(ContentsViewTest, ShowsTheColumnsOfAZipArchive) {
    driver_.columns.crcHeader = L"CRC32";
    open({L"a"});
    EXPECT_EQ(headers(), (Texts{L"Name", L"Original (Bytes)", L"Packed (Bytes)", L"Ratio", L"File Type", L"Modified",
                                L"Attr", L"Type", L"CRC32"}));
    EXPECT_EQ(column(0).cx, widthOf(L"Name") * 4);
    EXPECT_EQ(column(1).cx, std::lround(widthOf(L"Original (Bytes)") * 1.4));
    EXPECT_EQ(column(2).cx, std::lround(widthOf(L"Packed  (Bytes)") * 1.2));
    EXPECT_EQ(column(3).cx, std::lround(widthOf(L"Ratio") * 2.2));
    EXPECT_EQ(column(5).cx, std::lround(widthOf(L"Modified") * 2.8));
    EXPECT_EQ(column(8).cx, std::lround(widthOf(L"CRC") * 2.3));
    EXPECT_EQ(column(0).fmt & LVCFMT_JUSTIFYMASK, LVCFMT_LEFT);
    EXPECT_EQ(column(1).fmt & LVCFMT_JUSTIFYMASK, LVCFMT_RIGHT);
    EXPECT_EQ(column(5).fmt & LVCFMT_JUSTIFYMASK, LVCFMT_CENTER);
}

TEST_F(ContentsViewTest, ShowsTheColumnsOfACabArchive) {
    driver_.columns = {.packed = false, .ratio = false, .type = false, .crc = false};
    open({L"a"});
    EXPECT_EQ(headers(), (Texts{L"Name", L"Original (Bytes)", L"File Type", L"Modified", L"Attr"}));
}

TEST_F(ContentsViewTest, ShowsTheColumnsOfATarArchive) {
    driver_.columns = {.attributes = false, .packed = false, .ratio = false};
    open({L"a"});
    EXPECT_EQ(headers(), (Texts{L"Name", L"Original (Bytes)", L"File Type", L"Modified", L"Type", L"CRC"}));
}

TEST_F(ContentsViewTest, ShowsTheCellsOfAFile) {
    driver_.members = {{.storedName = L"d/one.txt",
                        .original = 1234567,
                        .packed = 525,
                        .ratio = 425,
                        .crc = 0x1A2B3C4D,
                        .attributes = L"a--w",
                        .type = L"Deflate"},
                       {.storedName = L"d/empty"}};
    openMembers(L"\\d\\");
    const wchar_t* const expected[] = {L"one.txt",         L" 1,234,567", L"       525", L" 42.5%", L"Text Document",
                                       L"5/17/2001 17:30", L"a--w",       L"Deflate",    L"3C4D"};
    for (int place = 0; place < 9; ++place) EXPECT_EQ(cell(0, place), expected[place]);
    EXPECT_EQ(cell(1, 1), L"          ");
    EXPECT_EQ(iconOf(0), 3);
    EXPECT_EQ(iconOf(1), 4);
}

TEST_F(ContentsViewTest, ShowsTheCellsOfAFolder) {
    open({L"d/one.txt"});
    EXPECT_EQ(cell(0, 0), L"d");
    EXPECT_EQ(cell(0, 4), L"File Folder");
    EXPECT_EQ(cell(0, 1), L"");
    EXPECT_EQ(cell(0, 5), L"");
    EXPECT_EQ(iconOf(0), 1);
}

TEST_F(ContentsViewTest, ShowsANameOfThreeHundredCharactersWhole) {
    const std::wstring name = std::wstring(296, L'n') + L".txt", folder(300, L'f');
    open({folder + L"/" + name});
    EXPECT_EQ(cell(0, 0), folder);
    EXPECT_EQ(textsIn(root()), Texts{folder});
    selectItem(itemsIn(root())[0]);
    EXPECT_EQ(cell(0, 0), name);
    EXPECT_EQ(address(), L"a.zip\\" + folder + L"\\");
}

TEST_F(ContentsViewTest, ShowsLettersOfEveryLanguage) {
    open({L"\u65E5\u672C\u8A9E/\u0444\u0430\u0439\u043B.txt", L"\u00DCbung.txt"});
    EXPECT_EQ(names(), (Texts{L"\u65E5\u672C\u8A9E", L"\u00DCbung.txt"}));
    EXPECT_EQ(textsIn(root()), Texts{L"\u65E5\u672C\u8A9E"});
}

TEST_F(ContentsViewTest, TellsHowManyRowsAreSelected) {
    open({L"1", L"2", L"3"});
    select(0);
    EXPECT_EQ(status(), L"1 Objects are selected.");
    select(2);
    EXPECT_EQ(status(), L"2 Objects are selected.");
    setRowState(-1, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(status(), L"3 Objects are selected.");
    setRowState(-1, 0, LVIS_SELECTED);
    EXPECT_EQ(status(), L"0 Objects are selected.");
}

TEST_F(ContentsViewTest, TellsHowManyRowsAreSelectedAfterAClick) {
    open({L"1", L"2", L"3"});
    send(LV1, WM_LBUTTONDOWN, MK_LBUTTON, middleOfRow(1));
    send(LV1, WM_LBUTTONUP, 0, middleOfRow(1));
    EXPECT_EQ(selectedRows(), std::vector<int>{1});
    EXPECT_EQ(status(), L"1 Objects are selected.");
}

TEST_F(ContentsViewTest, SelectsNothingInANewFolder) {
    open({L"a/1", L"a/2", L"b"});
    setRowState(-1, LVIS_SELECTED, LVIS_SELECTED);
    selectItem(itemsIn(root())[0]);
    EXPECT_TRUE(selectedRows().empty());
    EXPECT_EQ(status(), L"0 Objects are selected.");
}

TEST_F(ContentsViewTest, OpensAFolderRowByEnter) {
    open({L"x.txt", L"a/1", L"b/2"});
    focus(1);
    select(1);
    press(control(LV1), VK_RETURN);
    EXPECT_EQ(selectedFolder(), L"b");
    EXPECT_EQ(names(), Texts{L"2"});
}

TEST_F(ContentsViewTest, OpensAFolderRowByADoubleClick) {
    open({L"a/1", L"b/2"});
    const LPARAM where = middleOfRow(1);
    send(LV1, WM_LBUTTONDOWN, MK_LBUTTON, where);
    send(LV1, WM_LBUTTONUP, 0, where);
    send(LV1, WM_LBUTTONDBLCLK, MK_LBUTTON, where);
    send(LV1, WM_LBUTTONUP, 0, where);
    EXPECT_EQ(selectedFolder(), L"b");
    EXPECT_EQ(names(), Texts{L"2"});
}

TEST_F(ContentsViewTest, StaysWhereItIsWhenAFileRowIsOpened) {
    open({L"x.txt"});
    focus(0);
    press(control(LV1), VK_RETURN);
    EXPECT_EQ(names(), Texts{L"x.txt"});
}

TEST_F(ContentsViewTest, SortsByAClickOnTheHeader) {
    open({L"b", L"d/1", L"c", L"a", L"e/1"});
    clickHeader(0);
    EXPECT_EQ(names(), (Texts{L"c", L"b", L"a", L"e", L"d"}));
    EXPECT_EQ(sortArrow(0), HDF_SORTDOWN);
    clickHeader(0);
    EXPECT_EQ(names(), (Texts{L"d", L"e", L"a", L"b", L"c"}));
    EXPECT_EQ(sortArrow(0), HDF_SORTUP);
    clickHeader(1);
    EXPECT_EQ(sortArrow(0), 0);
    EXPECT_EQ(sortArrow(1), HDF_SORTDOWN);
}

TEST_F(ContentsViewTest, TakesTheSelectionAlongWhenItSorts) {
    open({L"b", L"d", L"a", L"c"});
    select(0);
    select(3);
    focus(3);
    clickHeader(0);
    EXPECT_EQ(names(), (Texts{L"d", L"c", L"b", L"a"}));
    EXPECT_EQ(selectedRows(), (std::vector<int>{1, 2}));
    EXPECT_EQ(send(LV1, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED), 1);
    EXPECT_EQ(status(), L"2 Objects are selected.");
    setRowState(-1, LVIS_SELECTED, LVIS_SELECTED);
    clickHeader(0);
    EXPECT_EQ(selectedRows(), (std::vector<int>{0, 1, 2, 3}));
}

TEST_F(ContentsViewTest, FindsRowsByTheBeginningOfTheirName) {
    open({L"alpha", L"beta", L"Bear"});
    LVFINDINFOW find{};
    find.flags = LVFI_STRING | LVFI_PARTIAL;
    find.psz = L"be";
    EXPECT_EQ(send(LV1, LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&find)), 1);
    find.psz = L"z";
    EXPECT_EQ(send(LV1, LVM_FINDITEMW, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&find)), -1);
}

TEST_F(ContentsViewTest, GoesToARowWhoseFirstLetterIsTyped) {
    open({L"alpha", L"gamma", L"Beta"});
    send(LV1, WM_CHAR, L'b', 1);
    EXPECT_EQ(selectedRows(), std::vector<int>{2});
}

TEST_F(ContentsViewTest, AsksOnlyForTheRowsThatAreSeen) {
    std::vector<std::wstring> storedNames;
    for (int i = 0; i < 100000; ++i) storedNames.push_back(std::to_wstring(i) + L".txt");
    open(storedNames);
    ::UpdateWindow(control(LV1));
    EXPECT_EQ(rowCount(), 100000);
    EXPECT_GT(driver_.namesRead, 0);
    EXPECT_LT(driver_.namesRead, 2000);
    EXPECT_EQ(desktop_.asked.size(), 1U);
    EXPECT_EQ(cell(99999, 0), L"99999.txt");
}

TEST_F(ContentsViewTest, ShowsNothingForRowsWhoseEntriesAreGone) {
    open({L"a.txt"});
    driver_.members.clear();
    driver_.SetArcFile(L"C:\\files\\a.zip");
    EXPECT_EQ(cell(0, 0), L"");
    EXPECT_TRUE(::IsWindow(window()));
}

}  // namespace
}  // namespace tovar::test
