#include "browser/file_types.h"

#include <gtest/gtest.h>

#include "browser/fakes/fake_file_types.h"

namespace tovar::test {
namespace {

TEST(KnownFileTypes, AsksTheDesktopOncePerExtensionInAnyCase) {
    FakeFileTypes desktop;
    KnownFileTypes types(desktop);
    EXPECT_EQ(types.ofFile(L"one.txt").name, L"Text Document");
    EXPECT_EQ(types.ofFile(L"two.TXT").name, L"Text Document");
    EXPECT_EQ(types.ofFile(L"x.y.txt").icon, 3);
    EXPECT_EQ(types.ofFile(L"one.bin").icon, 4);
    EXPECT_EQ(desktop.asked, (std::vector<std::wstring>{L"one.txt", L"one.bin"}));
}

TEST(KnownFileTypes, TakesAllNamesWithoutExtensionForOneType) {
    FakeFileTypes desktop;
    KnownFileTypes types(desktop);
    EXPECT_EQ(types.ofFile(L"README").name, L"File");
    EXPECT_EQ(types.ofFile(L"Makefile").name, L"File");
    EXPECT_EQ(types.ofFile(L"dot.").name, L"File");
    EXPECT_EQ(desktop.asked, std::vector<std::wstring>{L"README"});
}

TEST(KnownFileTypes, AsksForTheFolderOnce) {
    FakeFileTypes desktop;
    KnownFileTypes types(desktop);
    EXPECT_EQ(desktop.askedForFolder, 0);
    EXPECT_EQ(types.ofFolder().name, L"File Folder");
    EXPECT_EQ(types.ofFolder().icon, 1);
    EXPECT_EQ(desktop.askedForFolder, 1);
}

}  // namespace
}  // namespace tovar::test
