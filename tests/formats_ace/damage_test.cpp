#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <set>

#include "archivers/formats/utf8.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats_ace/support/expected.h"
#include "formats_ace/support/memory_disk.h"

/// Archives that are no longer what they were.
namespace archiver::test {
namespace {

struct Outcome {
    bool faultless = true;  ///< no call gave an error
    std::map<std::string, std::string> contents;
};

/// Lists and unpacks everything.
Outcome exhaust(const MemoryDisk& disk) {
    Outcome outcome;
    const AceOpenResult opened = disk.open("a.ace");
    if (!opened.reader) {
        EXPECT_NE(opened.code, kOk);
        outcome.faultless = false;
        return outcome;
    }
    opened.reader->setPassword("secret");
    Member member;
    ReturnCode code = kOk;
    while ((code = opened.reader->next(member)) == kOk) {
        EXPECT_TRUE(isUtf8(member.name));
        const Unpacked unpacked = unpack(*opened.reader);
        EXPECT_LE(unpacked.bytes.size(), member.originalSize);
        if (unpacked.code == kOk) {
            outcome.contents[member.name] = unpacked.bytes;
        } else {
            outcome.faultless = false;
        }
    }
    if (code != kNoMoreEntries) outcome.faultless = false;
    return outcome;
}

Outcome exhaust(const std::string& bytes) {
    MemoryDisk disk;
    disk.put("a.ace", bytes);
    return exhaust(disk);
}

/// Where headers stand in an archive of members with 32-bit sizes, and where it ends.
std::set<std::size_t> headerPlaces(const std::string& bytes) {
    const auto number = [&](std::size_t at, int size) {
        std::size_t value = 0;
        while (size-- > 0) value = value << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(size)]);
        return value;
    };
    std::set<std::size_t> places;
    for (std::size_t at = 0; at < bytes.size();) {
        places.insert(at);
        at += 4 + number(at + 2, 2) + (bytes[at + 4] == 1 ? number(at + 7, 4) : 0);
    }
    places.insert(bytes.size());
    return places;
}

class AceDamage : public testing::TestWithParam<ExpectedArchive> {
protected:
    void SetUp() override { whole_ = readFile(dataFile("ace/" + GetParam().file)); }
    void TearDown() override { EXPECT_LT(std::chrono::steady_clock::now() - start_, std::chrono::seconds(120)); }

    std::string whole_;

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

TEST_P(AceDamage, CutsShow) {
    const std::set<std::size_t> places = headerPlaces(whole_);
    for (std::size_t size = 0; size < whole_.size(); size += 97) {
        // The format has no end mark: where a member ends, nothing can be missed.
        if (places.contains(size) && size != 0) continue;
        EXPECT_FALSE(exhaust(whole_.substr(0, size)).faultless) << size;
    }
}

TEST_P(AceDamage, FlippedBytesShow) {
    const Outcome good = exhaust(whole_);
    std::size_t shown = 0;
    std::size_t tried = 0;
    for (std::size_t at = 0; at < whole_.size(); at += 101) {
        for (const int bits : {0x01, 0x80, 0xFF}) {
            std::string bytes = whole_;
            bytes[at] = static_cast<char>(bytes[at] ^ bits);
            const Outcome outcome = exhaust(bytes);
            ++tried;
            if (!outcome.faultless) ++shown;
            // What is said to be good is good: some bits at the end of packed data mean nothing.
            for (const auto& [name, content] : outcome.contents) {
                const auto original = good.contents.find(name);
                ASSERT_NE(original, good.contents.end()) << at << ' ' << bits;
                EXPECT_TRUE(content == original->second) << at << ' ' << bits;
            }
        }
    }
    EXPECT_GE(shown * 10, tried * 9);
}

INSTANTIATE_TEST_SUITE_P(Data, AceDamage, testing::ValuesIn(expectedArchives()), [](const auto& each) {
    std::string name;
    for (const char c : each.param.file.substr(0, each.param.file.find('.'))) name += c == '-' ? '_' : c;
    return name;
});

TEST(AceDamagedVolume, Shows) {
    const std::string first = readFile(dataFile("ace/volume.ace"));
    const std::string second = readFile(dataFile("ace/volume.c00"));
    MemoryDisk disk;
    disk.put("a.ace", first);
    disk.put("a.c00", second);
    const Outcome good = exhaust(disk);
    ASSERT_TRUE(good.faultless);
    for (std::size_t size = 0; size < second.size(); size += 97) {
        disk.put("a.c00", second.substr(0, size));
        EXPECT_FALSE(exhaust(disk).faultless) << size;
    }
    for (std::size_t at = 0; at < second.size(); at += 101) {
        std::string bytes = second;
        bytes[at] = static_cast<char>(bytes[at] ^ 0xFF);
        disk.put("a.c00", bytes);
        const Outcome outcome = exhaust(disk);
        EXPECT_TRUE(!outcome.faultless || outcome.contents == good.contents) << at;
    }
}

}  // namespace
}  // namespace archiver::test
