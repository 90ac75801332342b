#include <gtest/gtest.h>

#include "archivers/loaded_library.h"

namespace archiver {
namespace {

using testing::LoadedLibrary;

/// What callers of the convention bind, behind the prefix. Written down from its published interface.
constexpr const char* kNames[] = {
    "",
    "GetVersion",
    "GetRunning",
    "GetBackGroundMode",
    "SetBackGroundMode",
    "GetCursorMode",
    "SetCursorMode",
    "CheckArchive",
    "ConfigDialog",
    "OpenArchive",
    "FindFirst",
    "FindNext",
    "CloseArchive",
    "GetFileCount",
    "QueryFunctionList",
    "GetCursorInterval",
    "SetCursorInterval",
    "GetArcFileName",
    "GetArcFileSize",
    "GetArcOriginalSize",
    "GetArcCompressedSize",
    "GetArcRatio",
    "GetArcDate",
    "GetArcTime",
    "GetArcOSType",
    "IsSFXFile",
    "GetFileName",
    "GetMethod",
    "GetOriginalSize",
    "GetCompressedSize",
    "GetCRC",
    "GetRatio",
    "GetDate",
    "GetTime",
    "GetAttribute",
    "GetOSType",
    "GetWriteTime",
    "GetCreateTime",
    "GetAccessTime",
    "GetWriteTimeEx",
    "GetCreateTimeEx",
    "GetAccessTimeEx",
    "GetOriginalSizeEx",
    "GetCompressedSizeEx",
    "GetArcFileSizeEx",
    "GetArcOriginalSizeEx",
    "GetArcCompressedSizeEx",
    "SetOwnerWindow",
    "ClearOwnerWindow",
    "SetOwnerWindowEx",
    "KillOwnerWindowEx",
    "GetSubVersion",
    "ExtractMem",
    "CompressMem",
    "SetUnicodeMode",
    "SetCommandPassword",
};

struct LibraryCase {
    const char* module;
    const char* prefix;
    std::uint16_t version;
};

class Exports : public ::testing::TestWithParam<LibraryCase> {
protected:
    LoadedLibrary library{GetParam().module, GetParam().prefix};
};

TEST_P(Exports, HaveEveryName) {
    ASSERT_TRUE(library.loaded());
    for (const char* name : kNames) {
        EXPECT_NE(library.find<void()>(name), nullptr) << GetParam().prefix << name;
    }
}

TEST_P(Exports, HaveNoOtherLetterCase) {
    ASSERT_TRUE(library.loaded());
    EXPECT_EQ(library.find<void()>("getversion"), nullptr);
    EXPECT_EQ(library.find<void()>("GetVersion@0"), nullptr);
}

TEST_P(Exports, TellTheVersion) {
    ASSERT_TRUE(library.loaded());
    EXPECT_EQ(library.call<fn::GetWord>("GetVersion"), GetParam().version);
    EXPECT_EQ(library.call<fn::GetWord>("GetSubVersion"), 0);
}

TEST_P(Exports, CanBeLoadedAgain) {
    for (int count = 0; count < 3; ++count) {
        const LoadedLibrary again(GetParam().module, GetParam().prefix);
        ASSERT_TRUE(again.loaded());
        EXPECT_EQ(again.call<fn::GetWord>("GetVersion"), GetParam().version);
    }
}

INSTANTIATE_TEST_SUITE_P(Libraries, Exports,
                         ::testing::Values(LibraryCase{"UnZip32", "UnZip", 540}, LibraryCase{"Tar32", "Tar", 228},
                                           LibraryCase{"UnRar32", "Unrar", 40}, LibraryCase{"UnArj32j", "Unarj", 120},
                                           LibraryCase{"UnLha32", "Unlha", 267}, LibraryCase{"Cab32", "Cab", 98}),
                         [](const auto& each) { return std::string(each.param.module); });

TEST(Exports, OneKindHasAFunctionOfItsOwn) {
    EXPECT_NE(LoadedLibrary("Tar32", "Tar").find<fn::GetFileCount>("GetArchiveType"), nullptr);
    EXPECT_EQ(LoadedLibrary("UnZip32", "UnZip").find<fn::GetFileCount>("GetArchiveType"), nullptr);
    EXPECT_EQ(LoadedLibrary("UnRar32", "Unrar").find<fn::GetFileCount>("GetArchiveType"), nullptr);
    EXPECT_EQ(LoadedLibrary("UnArj32j", "Unarj").find<fn::GetFileCount>("GetArchiveType"), nullptr);
    EXPECT_EQ(LoadedLibrary("UnLha32", "Unlha").find<fn::GetFileCount>("GetArchiveType"), nullptr);
    EXPECT_EQ(LoadedLibrary("Cab32", "Cab").find<fn::GetFileCount>("GetArchiveType"), nullptr);
}

}  // namespace
}  // namespace archiver
