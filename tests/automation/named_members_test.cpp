#include "front/automation/named_members.h"

#include <gtest/gtest.h>

#include "shell/fakes/fake_file_system.h"
#include "shell/fakes/fake_message_boxes.h"
#include "shell/fakes/fake_system_information.h"
#include "shell/fakes/fake_system_paths.h"
#include "shell/fakes/fake_text_codec.h"

namespace tovar {
namespace {

using Words = std::vector<std::wstring>;

class NamedMembersTest : public testing::Test {
protected:
    NamedMembersTest() {
        files.addFolder(paths.temp);
        folder.resetToTempFolder();
    }

    test::FakeFileSystem files;
    test::FakeSystemPaths paths{files};
    test::FakeSystemInformation information;
    test::FakeMessageBoxes messages;
    PathOperations operations{files, paths, information, messages};
    WorkFolder folder{operations, files, paths};
    Utf8Codec utf8;
};

struct AloneCase {
    const char* name;
    Words members;
    std::wstring argument;
};
class LoneMember : public NamedMembersTest, public testing::WithParamInterface<AloneCase> {};
TEST_P(LoneMember, StandsInTheLine) {
    const NamedMembers list(GetParam().members, utf8, folder, files);
    EXPECT_EQ(list.argument(), GetParam().argument);
    EXPECT_FALSE(list.isFile());
}
INSTANTIATE_TEST_SUITE_P(Members, LoneMember,
                         testing::Values(AloneCase{"None", {}, L"*.*"}, AloneCase{"Name", {L"a.txt"}, L"a.txt"},
                                         AloneCase{"Path", {L"docs\\a.txt"}, L"docs/a.txt"},
                                         AloneCase{"Folder", {L"docs/"}, L"docs/*.*"},
                                         AloneCase{"Pattern", {L"*.txt"}, L"*.txt"}),
                         [](const auto& each) { return std::string(each.param.name); });

struct ListedCase {
    const char* name;
    Words members;
    std::string bytes;
};
class ListedMembers : public NamedMembersTest, public testing::WithParamInterface<ListedCase> {};
TEST_P(ListedMembers, StandInAFileThatGoes) {
    std::wstring file;
    {
        const NamedMembers list(GetParam().members, utf8, folder, files);
        EXPECT_TRUE(list.isFile());
        ASSERT_TRUE(list.argument().starts_with(L"@"));
        file = list.argument().substr(1);
        std::string bytes;
        ASSERT_EQ(files.readFile(file, bytes), 0U);
        EXPECT_EQ(bytes, GetParam().bytes + "\r\n");
    }
    EXPECT_FALSE(files.attributes(file));
}
INSTANTIATE_TEST_SUITE_P(Members, ListedMembers,
                         testing::Values(ListedCase{"Two", {L"a", L"docs\\"}, "a\r\ndocs/*.*\r\n"},
                                         ListedCase{"Blank", {L"a b.txt"}, "\"a b.txt\"\r\n"},
                                         ListedCase{"Comma", {L"a,b"}, "\"a,b\"\r\n"},
                                         ListedCase{"Hyphen", {L"-o"}, "-o\r\n"}, ListedCase{"At", {L"@a"}, "@a\r\n"},
                                         ListedCase{"Umlaut", {L"\xE4", L"b"}, "\xC3\xA4\r\nb\r\n"}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(NamedMembersTest, CannotBeMadeOfNamesWithoutAForm) {
    test::FakeTextCodec ansi;
    EXPECT_THROW(NamedMembers({L"\x8868", L"b"}, ansi, folder, files), SystemError);
}

}  // namespace
}  // namespace tovar
