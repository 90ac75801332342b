#include <gtest/gtest.h>

#include <stdexcept>

#include "shell/fakes/fake_shell.h"

namespace tovar {
namespace {

const std::wstring kLibrary = LR"(C:\Windows\UnZip32.dll)";

std::wstring versionText(FileVersion version) {
    test::FakeShell shell;
    shell.information.versions[kLibrary] = version;
    return shell.operations.FileVersionText(kLibrary);
}

TEST(FileVersionText, JoinsFourNumbers) {
    EXPECT_EQ(versionText({0x00050042, 0x00030007}), L"5.66.3.7");
    EXPECT_EQ(versionText({0, 0}), L"0.0.0.0");
}

TEST(FileVersionText, TakesHighWordsInFull) { EXPECT_EQ(versionText({0xFFFF0000, 0x80000001}), L"65535.0.32768.1"); }

TEST(FileVersionText, TakesLowWordsUpTo32767) { EXPECT_EQ(versionText({0x00017FFF, 0x00017FFF}), L"1.32767.1.32767"); }

TEST(FileVersionText, OverflowsOnALowWordAbove32767) {
    EXPECT_THROW(versionText({0x00018000, 0}), std::overflow_error);
    EXPECT_THROW(versionText({0, 0x0000FFFF}), std::overflow_error);
}

TEST(FileVersionText, IsEmptyForAnEmptyPath) {
    test::FakeShell shell;
    shell.information.versions[L""] = {1, 1};
    EXPECT_EQ(shell.operations.FileVersionText(L""), L"");
}

TEST(FileVersionText, IsAllZeroWithoutVersionResource) {
    test::FakeShell shell;
    EXPECT_EQ(shell.operations.FileVersionText(kLibrary), L"0.0.0.0");
}

}  // namespace
}  // namespace tovar
