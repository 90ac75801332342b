#include "archivers/formats/ace/dictionary.h"

#include <gtest/gtest.h>

#include <string>

namespace archiver::test {
namespace {

/// A byte for each position.
char byteAt(std::uint64_t position) { return static_cast<char>((position * 2654435761U >> 13) & 0xFF); }

void fill(ace::Dictionary& dictionary, std::uint64_t from, std::uint64_t to) {
    while (from < to) {
        const std::span<char> room = dictionary.room(static_cast<std::size_t>(to - from));
        for (char& each : room) each = byteAt(from++);
        dictionary.commit(room.size());
    }
}

/// Copies into fresh room.
std::string copied(ace::Dictionary& dictionary, std::size_t distance, std::size_t length) {
    const std::span<char> room = dictionary.room(length);
    EXPECT_EQ(room.size(), length);
    dictionary.copy(room.data(), distance, length);
    dictionary.commit(length);
    return {room.data(), length};
}

TEST(AceDictionary, CopiesFromAnyDistance) {
    for (std::size_t distance = 1; distance < 40; ++distance) {
        for (std::size_t length = 1; length < 60; ++length) {
            ace::Dictionary dictionary;
            fill(dictionary, 0, 100);
            std::string expected;
            for (std::size_t i = 0; i < length; ++i) expected += byteAt(100 - distance + i % distance);
            ASSERT_EQ(copied(dictionary, distance, length), expected) << distance << ' ' << length;
        }
    }
}

TEST(AceDictionary, ReachesFourMebibytesBackOverItsEnd) {
    ace::Dictionary dictionary;
    std::uint64_t written = 0;
    const auto expectCopy = [&](std::size_t distance) {
        constexpr std::size_t kLength = 259;
        const std::span<char> room = dictionary.room(kLength);
        if (room.size() < kLength) {  // at the end of its memory
            fill(dictionary, written, written + room.size());
            written += room.size();
        }
        const std::string got = copied(dictionary, distance, kLength);
        for (std::size_t i = 0; i < kLength; ++i) ASSERT_EQ(got[i], byteAt(written - distance + i)) << written;
        // What was copied is taken back, so that every position keeps its byte.
        written += kLength;
    };
    // Copies are spoilers here: each one is behind a stretch longer than the reach.
    for (int turn = 0; turn < 3; ++turn) {
        for (const std::size_t distance : {4U << 20, (4U << 20) - 1, 3U << 20, 300U}) {
            fill(dictionary, written, written + (4U << 20) + 100'003);
            written += (4U << 20) + 100'003;
            expectCopy(distance);
        }
    }
    EXPECT_EQ(dictionary.written(), written);
}

TEST(AceDictionary, KeepsWhatIsAppended) {
    ace::Dictionary dictionary;
    fill(dictionary, 0, 10);
    const std::string text(200'000, 'x');
    dictionary.append(text);
    dictionary.append({});
    EXPECT_EQ(dictionary.written(), 200'010U);
    EXPECT_EQ(copied(dictionary, 200'010, 11), [] {
        std::string expected;
        for (std::uint64_t i = 0; i < 10; ++i) expected += byteAt(i);
        return expected + 'x';
    }());
}

TEST(AceDictionary, ForgetsWhenCleared) {
    ace::Dictionary dictionary;
    fill(dictionary, 0, 100'000);
    dictionary.clear();
    EXPECT_EQ(dictionary.written(), 0U);
    fill(dictionary, 0, 5);
    EXPECT_EQ(dictionary.written(), 5U);
}

}  // namespace
}  // namespace archiver::test
