#include <gtest/gtest.h>

#include <cstring>

#include "archivers/loaded_library.h"

namespace archiver {
namespace {

using testing::LoadedLibrary;
using testing::sample;

struct LibraryCase {
    const char* module;
    const char* prefix;
    const char* archive;
    std::int32_t emptyLine;  ///< what a line without a word answers
};

/// Every function with arguments that mean nothing: it answers with its error and does no harm.
class BadArguments : public ::testing::TestWithParam<LibraryCase> {
protected:
    void SetUp() override { ASSERT_TRUE(library.loaded()); }

    template <class Function, class... Arguments>
    auto call(const char* name, Arguments... arguments) {
        return library.call<Function>(name, arguments...);
    }
    ArchiveHandle open() {
        return call<fn::OpenArchive>("OpenArchive", nullptr, sample(GetParam().archive).c_str(), 0U);
    }

    LoadedLibrary library{GetParam().module, GetParam().prefix};
};

TEST_P(BadArguments, ToFunctionsOfTheLibrary) {
    char text[8] = "as is";
    EXPECT_EQ(call<fn::Run>("", nullptr, nullptr, nullptr, 0U), GetParam().emptyLine);
    EXPECT_EQ(call<fn::Run>("", nullptr, nullptr, nullptr, 0xFFFFFFFFU), GetParam().emptyLine);
    EXPECT_EQ(call<fn::Run>("", nullptr, "", text, 0U), GetParam().emptyLine);
    EXPECT_STREQ(text, "as is");
    EXPECT_EQ(call<fn::GetBool>("GetRunning"), 0);
    EXPECT_EQ(call<fn::ConfigDialog>("ConfigDialog", nullptr, nullptr, -1), 0);
    EXPECT_EQ(call<fn::QueryFunctionList>("QueryFunctionList", -1), 0);
    EXPECT_EQ(call<fn::QueryFunctionList>("QueryFunctionList", 0), 1);
    EXPECT_EQ(call<fn::QueryFunctionList>("QueryFunctionList", 23), 1);
    EXPECT_EQ(call<fn::CheckArchive>("CheckArchive", nullptr, 0), 0);
    EXPECT_EQ(call<fn::CheckArchive>("CheckArchive", "", -1), 0);
    EXPECT_EQ(call<fn::GetFileCount>("GetFileCount", nullptr), -1);
    EXPECT_EQ(call<fn::OpenArchive>("OpenArchive", nullptr, nullptr, 0xFFFFFFFFU), nullptr);
    EXPECT_EQ(call<fn::OpenArchive>("OpenArchive", nullptr, "", 0U), nullptr);
    EXPECT_EQ(call<fn::SetOwnerWindow>("SetOwnerWindow", nullptr), 0);
    EXPECT_EQ(call<fn::SetOwnerWindowEx>("SetOwnerWindowEx", nullptr, nullptr), 0);
    EXPECT_EQ(call<fn::SetOwnerWindow>("KillOwnerWindowEx", nullptr), 0);
    EXPECT_EQ(call<fn::GetBool>("ClearOwnerWindow"), 1);
    EXPECT_EQ(call<fn::ExtractMem>("ExtractMem", nullptr, nullptr, nullptr, 0U, nullptr, nullptr, nullptr),
              GetParam().emptyLine);
    EXPECT_EQ(call<fn::CompressMem>("CompressMem", nullptr, nullptr, nullptr, 0U, nullptr, nullptr, nullptr), 0x8023);
}

TEST_P(BadArguments, ToTheModes) {
    EXPECT_EQ(call<fn::GetBool>("GetBackGroundMode"), 1);
    EXPECT_EQ(call<fn::SetBool>("SetBackGroundMode", 0x7FFFFFFF), 1);
    EXPECT_EQ(call<fn::GetBool>("GetBackGroundMode"), 1);
    EXPECT_EQ(call<fn::SetBool>("SetBackGroundMode", 0), 1);
    EXPECT_EQ(call<fn::GetBool>("GetBackGroundMode"), 0);
    EXPECT_EQ(call<fn::SetBool>("SetCursorMode", -1), 1);
    EXPECT_EQ(call<fn::GetBool>("GetCursorMode"), 1);
    EXPECT_EQ(call<fn::GetWord>("GetCursorInterval"), 80);
    EXPECT_EQ(call<fn::SetWord>("SetCursorInterval", std::uint16_t{0}), 1);
    EXPECT_EQ(call<fn::GetWord>("GetCursorInterval"), 0);
    EXPECT_EQ(call<fn::SetBool>("SetUnicodeMode", 1), 1);
    EXPECT_EQ(call<fn::SetBool>("SetUnicodeMode", 0), 1);
    EXPECT_EQ(call<fn::SetCommandPassword>("SetCommandPassword", nullptr), 1);
    EXPECT_EQ(call<fn::SetCommandPassword>("SetCommandPassword", ""), 1);
}

TEST_P(BadArguments, ToFunctionsOfAnArchive) {
    const ArchiveHandle open = this->open();
    ASSERT_NE(open, nullptr);
    ASSERT_EQ(call<fn::CloseArchive>("CloseArchive", open), 0);
    int here = 0;
    for (const ArchiveHandle bad :
         {ArchiveHandle{}, open, ArchiveHandle{&here}, reinterpret_cast<ArchiveHandle>(std::uintptr_t{1}),
          reinterpret_cast<ArchiveHandle>(UINTPTR_MAX)}) {
        EXPECT_EQ(call<fn::FindFirst>("FindFirst", bad, nullptr, nullptr), 0x8021);
        EXPECT_EQ(call<fn::FindNext>("FindNext", bad, nullptr), 0x8021);
        EXPECT_EQ(call<fn::CloseArchive>("CloseArchive", bad), 0x8021);
        for (const char* name : {"GetArcFileName", "GetFileName", "GetMethod"}) {
            EXPECT_EQ(call<fn::GetText>(name, bad, nullptr, -1), 0x8021) << name;
        }
        for (const char* name :
             {"GetArcFileSize", "GetArcOriginalSize", "GetArcCompressedSize", "GetArcOSType", "GetOriginalSize",
              "GetCompressedSize", "GetCRC", "GetOSType", "GetWriteTime", "GetCreateTime", "GetAccessTime"}) {
            EXPECT_EQ(call<fn::GetHandleDword>(name, bad), 0xFFFFFFFFU) << name;
        }
        for (const char* name : {"GetArcRatio", "GetArcDate", "GetArcTime", "GetRatio", "GetDate", "GetTime"}) {
            EXPECT_EQ(call<fn::GetHandleWord>(name, bad), 0xFFFF) << name;
        }
        for (const char* name : {"IsSFXFile", "GetAttribute"}) {
            EXPECT_EQ(call<fn::GetHandleInt>(name, bad), -1) << name;
        }
        for (const char* name : {"GetOriginalSizeEx", "GetCompressedSizeEx", "GetArcFileSizeEx", "GetArcOriginalSizeEx",
                                 "GetArcCompressedSizeEx"}) {
            EXPECT_EQ(call<fn::GetSizeEx>(name, bad, nullptr), 0) << name;
        }
        for (const char* name : {"GetWriteTimeEx", "GetCreateTimeEx", "GetAccessTimeEx"}) {
            EXPECT_EQ(call<fn::GetTimeEx>(name, bad, nullptr), 0) << name;
        }
    }
}

TEST_P(BadArguments, ToFunctionsOfAMember) {
    const ArchiveHandle archive = open();
    ASSERT_NE(archive, nullptr);
    EXPECT_EQ(call<fn::FindNext>("FindNext", archive, nullptr), 0x8022);
    EXPECT_EQ(call<fn::FindFirst>("FindFirst", archive, nullptr, nullptr), 0);
    for (const char* name : {"GetArcFileName", "GetFileName", "GetMethod"}) {
        EXPECT_NE(call<fn::GetText>(name, archive, nullptr, 100), 0) << name;
    }
    EXPECT_EQ(call<fn::GetSizeEx>("GetOriginalSizeEx", archive, nullptr), 0);
    EXPECT_EQ(call<fn::GetTimeEx>("GetWriteTimeEx", archive, nullptr), 0);
    EXPECT_EQ(call<fn::CloseArchive>("CloseArchive", archive), 0);
}

TEST_P(BadArguments, AreNotRunAsCommands) {
    char text[100];
    std::memset(text, '#', sizeof text);
    const std::int32_t code = call<fn::Run>("", nullptr, ("-?! -?! " + sample(GetParam().archive)).c_str(), text,
                                            static_cast<std::uint32_t>(sizeof text));
    EXPECT_EQ(code, 0x801C);
    EXPECT_NE(std::string(text).find("Error(0x801c): unknown command or switch\r\n"), std::string::npos) << text;
}

TEST(BadArguments, ToTheKindOfATar) {
    const LoadedLibrary tar("Tar32", "Tar");
    ASSERT_TRUE(tar.loaded());
    EXPECT_EQ(tar.call<fn::GetFileCount>("GetArchiveType", nullptr), -1);
    EXPECT_EQ(tar.call<fn::GetFileCount>("GetArchiveType", "no such file"), -1);
}

INSTANTIATE_TEST_SUITE_P(Libraries, BadArguments,
                         ::testing::Values(LibraryCase{"UnZip32", "UnZip", "listing.zip", 0x8019},
                                           LibraryCase{"Tar32", "Tar", "listing.tar", 0x801C},
                                           LibraryCase{"UnRar32", "Unrar", "../rar/rar.rar", 0x801C},
                                           LibraryCase{"UnArj32j", "Unarj", "../arj/methods.arj", 0x801C},
                                           LibraryCase{"UnLha32", "Unlha", "../lzh/unix-folders-level1.lzh", 0x8019},
                                           LibraryCase{"Cab32", "Cab", "../cab/mszip_lzx_qtm.cab", 0x801C}),
                         [](const auto& each) { return std::string(each.param.module); });

}  // namespace
}  // namespace archiver
