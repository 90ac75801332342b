#include "create/zip_messages.h"

#include <gtest/gtest.h>

namespace tovar {
namespace {

struct LineCase {
    const char* name;
    std::wstring_view line;
    ZipMessageKind kind;
    std::wstring_view text, entry;
    bool finished = false, notMatched = false;
};
class ReadZipMessage : public testing::TestWithParam<LineCase> {};
TEST_P(ReadZipMessage, KnowsItsWords) {
    const ZipMessage message = readZipMessage(GetParam().line);
    EXPECT_EQ(message.kind, GetParam().kind);
    EXPECT_EQ(message.text, GetParam().text);
    EXPECT_EQ(message.entry, GetParam().entry);
    EXPECT_EQ(message.finished, GetParam().finished);
    EXPECT_EQ(message.notMatched, GetParam().notMatched);
}
INSTANTIATE_TEST_SUITE_P(
    Lines, ReadZipMessage,
    testing::Values(
        LineCase{"Dot", L".", ZipMessageKind::Tick, L".", L""},
        LineCase{"DotAndLineEnd", L".\r\n", ZipMessageKind::Tick, L".", L""},
        LineCase{"TwoDots", L"..", ZipMessageKind::Text, L"..", L""},
        LineCase{"Adding", L"  adding: dir/a.txt", ZipMessageKind::Adding, L"  adding: dir\\a.txt", L"dir/a.txt"},
        LineCase{"AddingWhole", L"  adding: dir/a.txt (deflated 45%)\n", ZipMessageKind::Adding,
                 L"  adding: dir\\a.txt (deflated 45%)", L"dir/a.txt", true},
        LineCase{"Stored", L"adding: a (stored 0%)", ZipMessageKind::Adding, L"adding: a (stored 0%)", L"a", true},
        LineCase{"NameLikeAResult", L"adding: a (stored 0%).txt (stored 0%)", ZipMessageKind::Adding,
                 L"adding: a (stored 0%).txt (stored 0%)", L"a (stored 0%).txt", true},
        LineCase{"NameWithParts", L"adding: a: b.txt", ZipMessageKind::Adding, L"adding: a: b.txt", L"a: b.txt"},
        LineCase{"UpperCase", L"UPDATING: X", ZipMessageKind::Updating, L"UPDATING: X", L"X"},
        LineCase{"Updating", L"updating: x", ZipMessageKind::Updating, L"updating: x", L"x"},
        LineCase{"Freshening", L"freshening: x", ZipMessageKind::Freshening, L"freshening: x", L"x"},
        LineCase{"Deleting", L"deleting: x/y", ZipMessageKind::Deleting, L"deleting: x\\y", L"x/y"},
        LineCase{"NoName", L"adding", ZipMessageKind::Text, L"adding", L""},
        LineCase{"RestStored", L" (stored 0%)\n", ZipMessageKind::Text, L" (stored 0%)", L"", true},
        LineCase{"RestDeflated", L" (DEFLATED 1%)", ZipMessageKind::Text, L" (DEFLATED 1%)", L"", true},
        LineCase{"Bytes", L"12 bytes", ZipMessageKind::Text, L"12 bytes", L"", true},
        LineCase{"TotalBytes", L"total bytes=9, compressed=5 -> 44% savings", ZipMessageKind::Total,
                 L"total bytes=9, compressed=5 -> 44% savings", L""},
        LineCase{"Info", L"zip info: local extra", ZipMessageKind::Note, L"zip info: local extra", L""},
        LineCase{"Warning", L"warning: something", ZipMessageKind::Note, L"warning: something", L""},
        LineCase{"NotMatched", L"\tzip warning:  name not matched: x", ZipMessageKind::Note,
                 L"\tzip warning:  name not matched: x", L"", false, true},
        LineCase{"Empty", L"\r\n", ZipMessageKind::Text, L"", L""},
        LineCase{"Other", L"a/b", ZipMessageKind::Text, L"a\\b", L""}),
    [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace tovar
