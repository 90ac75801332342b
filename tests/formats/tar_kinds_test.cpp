#include <gtest/gtest.h>

#include "archivers/formats/tar/tar_format.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/tar_builder.h"

namespace archiver::test {
namespace {

/// A header alone, with the name of what it links to. Source: POSIX.1-1988 ustar, linkname at 157
std::string tarLink(const std::string& name, const std::string& target, char type) {
    std::string header = tarMember(name, "", type);
    header.replace(157, target.size(), target);
    header.replace(148, 8, 8, ' ');
    unsigned sum = 0;
    for (const char byte : header.substr(0, 512)) sum += static_cast<unsigned char>(byte);
    char text[8];
    std::snprintf(text, sizeof(text), "%06o", sum & 0777777U);
    header.replace(148, 7, text, 7);
    return header;
}

const Member* find(const Listing& listing, std::string_view name) {
    for (const Member& member : listing.members) {
        if (member.name == name) return &member;
    }
    return nullptr;
}

TEST(TarKinds, OfWhatTarPackedAreTold) {
    for (const char* archive : {"tar/gnu.tar", "tar/pax.tar"}) {
        const Listing listing = walk(openTar(dataFile(archive)));
        std::string folder = "./";
        for (int count = 0; count < 26; ++count) folder += "long-";
        struct Expected {
            std::string name;
            MemberKind kind;
            std::string target;
        };
        const std::string longName = folder.substr(2);
        for (const Expected& expected : {
                 Expected{"./", MemberKind::kFolder, ""},
                 Expected{"./Gr\xC3\xBC\xC3\x9F"
                          "e.txt",
                          MemberKind::kFile, ""},
                 Expected{"./hard", MemberKind::kHardLink,
                          "./Gr\xC3\xBC\xC3\x9F"
                          "e.txt"},
                 Expected{"./holes", MemberKind::kFile, ""},
                 Expected{"./pipe", MemberKind::kSpecial, ""},
                 Expected{"./symbolic", MemberKind::kSymbolicLink, longName + "/" + longName + ".txt"},
             }) {
            const Member* const member = find(listing, expected.name);
            ASSERT_NE(member, nullptr) << archive << " " << expected.name;
            EXPECT_EQ(member->kind, expected.kind) << expected.name;
            EXPECT_EQ(member->linkTarget, expected.target) << expected.name;
        }
    }
}

TEST(TarKinds, OfEveryTypeLetterAreTold) {
    const std::string bytes = tarMember("file", "content") + tarLink("hard", "file", '1') +
                              tarLink("symbolic", "../file", '2') + tarLink("character", "", '3') +
                              tarLink("block", "", '4') + tarLink("folder/", "", '5') + tarLink("pipe", "", '6') +
                              tarMember("contiguous", "more", '7') + tarEnd();
    const OpenResult opened = openTar(inMemory(bytes), "x.tar");
    ASSERT_TRUE(opened.reader);
    const Listing listing = walk(*opened.reader);
    ASSERT_EQ(listing.names(), (std::vector<std::string>{"file", "hard", "symbolic", "character", "block", "folder/",
                                                         "pipe", "contiguous"}));
    using enum MemberKind;
    const MemberKind kinds[] = {kFile, kHardLink, kSymbolicLink, kSpecial, kSpecial, kFolder, kSpecial, kFile};
    for (std::size_t index = 0; index < 8; ++index) EXPECT_EQ(listing.members[index].kind, kinds[index]) << index;
    EXPECT_EQ(listing.members[1].linkTarget, "file");
    EXPECT_EQ(listing.members[2].linkTarget, "../file");
    EXPECT_EQ(unpack(*opened.reader, "hard").bytes, "");
    EXPECT_EQ(unpack(*opened.reader, "hard").code, kOk);
    EXPECT_EQ(unpack(*opened.reader, "contiguous").bytes, "more");
}

TEST(TarKinds, TargetsThatAreNoUtf8AreReadInTheCodePage) {
    if (!westernCodePages()) GTEST_SKIP() << "another code page here";
    const std::string bytes = tarMember("gr\xFCn.txt", "x") + tarLink("hard", "gr\xFCn.txt", '1') +
                              tarLink("symbolic", "gr\xFCn.txt", '2') + tarLink("plain", "file", '2') + tarEnd();
    const Listing listing = walk(openTar(inMemory(bytes), "x.tar"));
    ASSERT_EQ(listing.members.size(), 4U);
    EXPECT_EQ(listing.members[0].kind, MemberKind::kFile);
    EXPECT_EQ(listing.members[0].name, "gr\xC3\xBCn.txt");
    EXPECT_EQ(listing.members[1].kind, MemberKind::kHardLink);
    EXPECT_EQ(listing.members[1].linkTarget, "gr\xC3\xBCn.txt");
    EXPECT_EQ(listing.members[2].kind, MemberKind::kSymbolicLink);
    EXPECT_EQ(listing.members[2].linkTarget, "gr\xC3\xBCn.txt");
    EXPECT_EQ(listing.members[3].linkTarget, "file");
}

TEST(TarFacts, TellWhetherListingUnpacks) {
    for (const char* name : {"ustar.tar", "ustar.tgz", "ustar.tbz", "ustar.taz", "named.gz"}) {
        const OpenResult opened = openTar(dataFile(std::string("tar/") + name));
        ASSERT_TRUE(opened.reader) << name;
        const bool byHeaders = std::string_view(name) == "ustar.tar" || std::string_view(name) == "named.gz";
        EXPECT_EQ(opened.reader->facts().listedByHeaders, byHeaders) << name;
    }
}

TEST(TarConsumed, GrowsToTheFilesSize) {
    for (const char* name : {"ustar.tar", "ustar.tgz", "ustar.tbz", "ustar.taz", "named.gz", "again.txt.bz2"}) {
        const OpenResult opened = openTar(dataFile(std::string("tar/") + name));
        ASSERT_TRUE(opened.reader) << name;
        std::uint64_t last = 0;
        Member member;
        while (opened.reader->next(member) == kOk) {
            EXPECT_GE(opened.reader->consumed(), last);
            last = opened.reader->consumed();
            EXPECT_EQ(unpack(*opened.reader).code, kOk);
            EXPECT_GE(opened.reader->consumed(), last);
            last = opened.reader->consumed();
        }
        EXPECT_EQ(opened.reader->consumed(), opened.reader->facts().fileSize) << name;
    }
}

TEST(TarConsumed, CountsWhatIsLeftOutAndStartsAgain) {
    constexpr std::uint64_t kLarge = std::uint64_t{1} << 30;
    constexpr std::uint64_t kFewPieces = std::uint64_t{1} << 20;
    const std::string behind = tarMember("small", "content") + tarEnd();
    const std::map<std::uint64_t, std::string> texts{{0, tarHeader("large", kLarge)}, {512 + kLarge, behind}};
    const OpenResult opened = openTar(std::make_unique<SparseFile>(texts, 512 + kLarge + behind.size()), "x.tar");
    ASSERT_TRUE(opened.reader);
    Member member;
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(opened.reader->next(member), kOk);
        EXPECT_LT(opened.reader->consumed(), kFewPieces);
        ASSERT_EQ(opened.reader->next(member), kOk);
        EXPECT_GE(opened.reader->consumed(), kLarge);
        opened.reader->restart();
    }
}

}  // namespace
}  // namespace archiver::test
