#include <gtest/gtest.h>

#include <charconv>
#include <map>
#include <sstream>

#include "archivers/formats/lzh/lzh_reader.h"
#include "corpus/support/corpus.h"
#include "formats/support/listing.h"

/// The archives that lhasa is tested with, made by archivers of two dozen systems. What it expects of their headers
/// lies beside them, as blocks of "field: value" lines that end with "--".
namespace archiver::test {
namespace {

namespace fs = std::filesystem;
using Fields = std::map<std::string, std::string>;

std::vector<Fields> readExpected(const fs::path& file) {
    std::vector<Fields> members;
    Fields fields;
    std::string last;
    std::istringstream text(contentOf(file));
    for (std::string line; std::getline(text, line);) {
        if (line == "--") {
            members.push_back(std::exchange(fields, {}));
        } else if (const std::size_t colon = line.find(": "); colon != std::string::npos) {
            last = line.substr(0, colon);
            fields[last] = line.substr(colon + 2);
        } else if (!last.empty()) {
            fields[last] += '\n' + line;  // a name with a line end in it
        }
    }
    return members;
}

std::uint64_t number(const std::string& text, int base) {
    std::uint64_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value, base);
    return value;
}

/// Letters in their lower case: the names of systems that know upper case alone are turned round by lhasa.
std::string comparable(std::string name) {
    for (char& letter : name) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
        if (letter == '\\') letter = '/';
    }
    return name;
}

std::string expectedName(const Fields& fields) {
    const auto path = fields.find("path");
    const auto name = fields.find("filename");
    return (path == fields.end() ? "" : path->second) + (name == fields.end() ? "" : name->second);
}

bool isAsciiText(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char each) { return static_cast<unsigned char>(each) < 0x80; });
}

void compare(const Fields& fields, const Member& member) {
    EXPECT_EQ(member.method, fields.at("compress_method"));
    EXPECT_EQ(member.packedSize, number(fields.at("compressed_length"), 10));
    EXPECT_EQ(member.originalSize, number(fields.at("length"), 10));
    EXPECT_EQ(member.crc, number(fields.at("crc"), 16));
    if (const std::string name = expectedName(fields); isAsciiText(name)) {
        EXPECT_EQ(comparable(member.name), comparable(name));
    }
    if (const auto target = fields.find("symlink_target"); target != fields.end()) {
        EXPECT_EQ(member.kind, MemberKind::kSymbolicLink);
        EXPECT_EQ(member.linkTarget, target->second);
    }
}

TEST(LhasaCorpus, IsListedAndUnpackedAsExpected) {
    const fs::path tests = corpus("lhasa") / "test";
    if (!fs::is_directory(tests / "archives")) GTEST_SKIP() << "TOVAREX_CORPUS names no folder with lhasa's sources";
    int archives = 0, listed = 0, unpacked = 0, refused = 0, damaged = 0;
    for (const fs::path& file : filesBelow(tests / "archives")) {
        if (file.filename() == "README") continue;
        ++archives;
        const fs::path relative = fs::relative(file, tests / "archives");
        SCOPED_TRACE(relative.string());
        const OpenResult opened = openLzh(file);
        ASSERT_EQ(opened.code, kOk);
        const fs::path expectedFile = tests / "output" / (relative.string() + "-hdr.txt");
        const bool described = fs::exists(expectedFile);
        const auto expected = described ? readExpected(expectedFile) : std::vector<Fields>();
        std::size_t count = 0;
        Member member;
        ReturnCode code = kOk;
        while ((code = opened.reader->next(member)) == kOk) {
            if (described) {
                ASSERT_LT(count, expected.size());
                SCOPED_TRACE(member.name);
                compare(expected[count], member);
            }
            ++count;
            const ReturnCode read = unpack(*opened.reader).code;
            if (read == kOk) ++unpacked;
            if (read == kMethod) ++refused;
            if (relative == "regression/truncated.lzh") {
                ++damaged;
                EXPECT_EQ(read, kCannotRead);
                continue;
            }
            EXPECT_TRUE(read == kOk || read == kMethod) << member.name << " " << std::hex << read;
        }
        if (described) {
            EXPECT_EQ(count, expected.size());
        }
        listed += static_cast<int>(count);
    }
    EXPECT_GT(archives, 150);
    std::cout << "[ COUNT    ] lhasa: " << archives << " archives, " << listed << " members listed, " << unpacked
              << " unpacked, " << refused << " refused for their method, " << damaged << " damaged\n";
}

}  // namespace
}  // namespace archiver::test
