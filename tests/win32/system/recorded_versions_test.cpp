#include <ostream>

#include "win32/system/support/system_fixture.h"

namespace tovar::test {
namespace {

using Lines = std::vector<std::string>;

/// The recording library in the place of one or both of the bundled ones.
class RecordedComponent : public SystemFixture {
protected:
    const recording::Session session;
    const std::wstring zip = writeFile(folder, L"some.zip", "whatever");
    const std::wstring tar = writeFile(folder, L"some.tar", "whatever");
};

struct VersionCase {
    const char* name;
    const wchar_t* library;
    const wchar_t* file;
    LONG kind;
    const char* version;  ///< what GetVersion answers
    bool usable;
};
std::ostream& operator<<(std::ostream& stream, const VersionCase& each) { return stream << each.name; }

class LibraryVersions : public RecordedComponent, public testing::WithParamInterface<VersionCase> {};

TEST_P(LibraryVersions, DecideWhetherAKindIsOpened) {
    const auto& [name, library, fileName, kind, version, usable] = GetParam();
    const std::wstring file = writeFile(folder, fileName, "whatever");
    libraries.bundled();  // so that another kind is there in any case
    libraries.recorded(library);
    session.script(std::string("version ") + version);
    create();
    EXPECT_EQ(kindOf(file), usable ? kind : -5);
    EXPECT_TRUE(boxes.seen.empty()) << "nothing is said unasked";
    EXPECT_EQ(kindOf(file, true), usable ? kind : -5);
    if (usable) {
        EXPECT_TRUE(boxes.seen.empty());
    } else {
        EXPECT_EQ(boxes.seen.size(), 1U);
        expectToldOf(fileName, kUnavailable);
    }
    boxes.seen.clear();
    EXPECT_EQ(open(file), usable);
    EXPECT_EQ(busy(), usable);
    EXPECT_EQ(browser().isVisible(), usable);
    EXPECT_TRUE(boxes.seen.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Versions, LibraryVersions,
    testing::Values(VersionCase{"ZipZero", L"UnZip32.dll", L"a.zip", 16, "0", false},
                    VersionCase{"ZipOne", L"UnZip32.dll", L"a.zip", 16, "1", false},
                    VersionCase{"ZipBelowItsMinimum", L"UnZip32.dll", L"a.zip", 16, "77", false},
                    VersionCase{"ZipAtItsMinimum", L"UnZip32.dll", L"a.zip", 16, "78", true},
                    VersionCase{"ZipUsual", L"UnZip32.dll", L"a.zip", 16, "540", true},
                    VersionCase{"ZipHighest", L"UnZip32.dll", L"a.zip", 16, "65535", true},
                    VersionCase{"ZipWithASetUpperHalf", L"UnZip32.dll", L"a.zip", 16, "0xABCD004E", true},
                    VersionCase{"ZipOneBelowASetUpperHalf", L"UnZip32.dll", L"a.zip", 16, "0xABCD0001", false},
                    VersionCase{"TarOne", L"Tar32.dll", L"a.tar", 512, "1", false},
                    VersionCase{"TarBelowItsMinimum", L"Tar32.dll", L"a.tar", 512, "52", false},
                    VersionCase{"TarAtItsMinimum", L"Tar32.dll", L"a.tar", 512, "53", true},
                    VersionCase{"ArjOne", L"UnArj32j.dll", L"a.arj", 64, "1", false},
                    VersionCase{"ArjBelowItsMinimum", L"UnArj32j.dll", L"a.arj", 64, "11", false},
                    VersionCase{"ArjAtItsMinimum", L"UnArj32j.dll", L"a.arj", 64, "12", true},
                    VersionCase{"RarZero", L"UnRar32.dll", L"a.rar", 32, "0", true},
                    VersionCase{"RarOne", L"UnRar32.dll", L"a.rar", 32, "1", false},
                    VersionCase{"RarTwo", L"UnRar32.dll", L"a.rar", 32, "2", true},
                    VersionCase{"LzhBelowItsMinimum", L"UnLha32.dll", L"a.lzh", 128, "86", false},
                    VersionCase{"LzhAtItsMinimum", L"UnLha32.dll", L"a.lzh", 128, "87", true},
                    VersionCase{"CabBelowItsMinimum", L"Cab32.dll", L"a.cab", 256, "64", false},
                    VersionCase{"CabAtItsMinimum", L"Cab32.dll", L"a.cab", 256, "65", true},
                    VersionCase{"AceOfAnyVersion", L"UnAce.dll", L"a.ace", 1024, "1", true}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(RecordedComponent, AsksUnusableLibrariesNothingElse) {
    libraries.recorded(L"UnZip32.dll");
    libraries.recorded(L"Tar32.dll");
    session.script("version 1");
    create();
    EXPECT_EQ(kindOf(zip, true), -5);
    EXPECT_FALSE(open(zip));
    EXPECT_FALSE(open(tar));
    EXPECT_TRUE(boxes.seen.empty()) << "with no kind left there is nothing to tell";
    release();
    EXPECT_EQ(session.log(), (Lines{"UnZipGetVersion", "TarGetVersion"}));
}

TEST_F(RecordedComponent, AsksLibrariesThatAreSwitchedOffNothingElse) {
    libraries.recorded(L"UnZip32.dll");
    libraries.recorded(L"Tar32.dll");
    KeptAllowMask::write(hive::kCurrentUser, 0);
    create();
    EXPECT_EQ(kindOf(zip, true), -5);
    EXPECT_FALSE(open(zip));
    EXPECT_FALSE(canCreate());
    EXPECT_TRUE(boxes.seen.empty());
    release();
    EXPECT_EQ(session.log(), (Lines{"UnZipGetVersion", "TarGetVersion"}));
    EXPECT_EQ(KeptAllowMask::read(hive::kCurrentUser), 0U) << "the user's choice stays";
}

TEST_F(RecordedComponent, ChecksTheLibrariesAnewForEachObject) {
    libraries.recorded(L"UnZip32.dll");
    session.script("version 77");
    create();
    EXPECT_EQ(kindOf(zip), -5);
    session.script("version 78");
    EXPECT_EQ(kindOf(zip), -5) << "asked once";
    const ComOwner<ITovar> second = createObject();
    EXPECT_EQ(kindOf(zip), 16) << "what objects know, they share";
}

TEST_F(RecordedComponent, RefusesWhatTheLibraryRefuses) {
    libraries.recorded(L"UnZip32.dll");
    libraries.recorded(L"Tar32.dll");
    create();
    for (const char* const answer : {"check 0", "check -1"}) {
        session.script(answer);
        EXPECT_EQ(kindOf(zip), -5);
        expectToldOf(L"some.zip", kRefused);
        EXPECT_FALSE(open(tar));
        expectToldOf(L"some.tar", kRefused);
    }
    EXPECT_EQ(boxes.seen.size(), 4U);
    EXPECT_FALSE(busy());
}

TEST_F(RecordedComponent, CreatesWithTheZipLibraryAlone) {
    libraries.recorded(L"InfoZip32.dll");
    create();
    EXPECT_TRUE(canCreate());
    EXPECT_EQ(kindOf(zip, true), -5);
    EXPECT_TRUE(boxes.seen.empty()) << "no reading kind is left at all";
    KeptAllowMask::write(hive::kCurrentUser, 0x7F0);
    const ComOwner<ITovar> second = createObject();
    EXPECT_FALSE(canCreate()) << "switched off";
}

}  // namespace
}  // namespace tovar::test
