#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "archivers/formats/zip/in_memory.h"
#include "archivers/formats/zip/zip_reader.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "formats/support/zip_builder.h"

namespace archiver::test {
namespace {

Unpacked readDetached(DetachedData& data) {
    Unpacked result;
    result.code = data.read([&](const char* bytes, std::size_t size) {
        result.bytes.append(bytes, size);
        return true;
    });
    return result;
}

/// Different for each member, and longer than any piece for some.
std::string contentOf(std::size_t index) {
    std::string content;
    const std::size_t size = index % 10 == 0 ? 300000 : index * 7;
    while (content.size() < size) content += std::to_string(index) + ' ';
    return content;
}

std::string archiveOfMany(std::size_t members) {
    ZipBuilder builder;
    for (std::size_t index = 0; index < members; ++index) {
        const std::string content = contentOf(index);
        BuiltMember member{.name = std::to_string(index), .content = content};
        if (index % 3 != 0) {
            member.content = ZipBuilder::deflateStored(content);
            member.method = 8;
            member.originalSize = content.size();
            member.crc = ZipBuilder::crcOf(content);
        }
        builder.add(std::move(member));
    }
    return builder.build();
}

TEST(ZipDetach, MembersAreReadBesideEachOtherWhileTheReaderGoesOn) {
    constexpr std::size_t kMembers = 100;
    const OpenResult opened = openZip(inMemory(archiveOfMany(kMembers)));
    ASSERT_TRUE(opened.reader);
    std::vector<std::unique_ptr<DetachedData>> detached(kMembers);
    std::vector<Unpacked> results(kMembers);
    // Not std::atomic::wait, which in MinGW's library of GCC 12 can miss the notification and wait for ever.
    std::mutex mutex;
    std::condition_variable changed;
    std::size_t ready = 0;
    std::atomic<std::size_t> taken{0};
    std::vector<std::thread> threads;
    for (int count = 0; count < 4; ++count) {
        threads.emplace_back([&] {
            for (std::size_t index; (index = taken++) < kMembers;) {
                {
                    std::unique_lock lock(mutex);
                    changed.wait(lock, [&] { return ready > index; });
                }
                results[index] = readDetached(*detached[index]);
            }
        });
    }
    Member member;
    for (std::size_t index = 0; index < kMembers; ++index) {
        EXPECT_EQ(opened.reader->next(member), kOk);
        detached[index] = opened.reader->detach();
        if (!detached[index]) ADD_FAILURE() << index;
        {
            const std::lock_guard lock(mutex);
            ready = index + 1;
        }
        changed.notify_all();
    }
    EXPECT_EQ(opened.reader->next(member), kNoMoreEntries);
    for (std::thread& thread : threads) thread.join();
    for (std::size_t index = 0; index < kMembers; ++index) {
        EXPECT_EQ(results[index].code, kOk) << index;
        EXPECT_TRUE(results[index].bytes == contentOf(index)) << index;
    }
}

TEST(ZipDetach, EncryptedMembersKeepThePasswordTheyWereTakenWith) {
    const OpenResult opened = openZip(dataFile("zip_members/aes128.zip"));
    ASSERT_TRUE(opened.reader);
    opened.reader->setPassword("secret");
    Member member;
    while (opened.reader->next(member) == kOk && member.name != "short.txt") {
    }
    const auto good = opened.reader->detach();
    opened.reader->setPassword("wrong");
    const auto bad = opened.reader->detach();
    ASSERT_TRUE(good && bad);
    EXPECT_EQ(readDetached(*bad).code, kPasswordFile);
    EXPECT_EQ(readDetached(*good).bytes, "short\n");
}

TEST(ZipDetach, TellsWhatReadWouldTell) {
    BuiltMember contradicting{.name = "a", .content = "content"};
    contradicting.local.name = "b";
    const OpenResult opened = openZip(inMemory(
        ZipBuilder().add(contradicting).add({.name = "c", .content = "content", .crc = 1}).add({.name = "d"}).build()));
    ASSERT_TRUE(opened.reader);
    EXPECT_EQ(opened.reader->detach(), nullptr);  // no member is current
    Member member;
    std::vector<ReturnCode> codes;
    while (opened.reader->next(member) == kOk) {
        const auto data = opened.reader->detach();
        ASSERT_TRUE(data);
        codes.push_back(readDetached(*data).code);
    }
    EXPECT_EQ(codes, (std::vector<ReturnCode>{kHeaderBroken, kFileCrc, kOk}));
    EXPECT_EQ(opened.reader->detach(), nullptr);
}

TEST(ZipDetach, ConsumesThePackedBytes) {
    const OpenResult opened = openZip(
        inMemory(ZipBuilder().add({.name = "a", .content = "content"}).add({.name = "b", .content = "more"}).build()));
    ASSERT_TRUE(opened.reader);
    Member member;
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(opened.reader->consumed(), 0U);
    EXPECT_EQ(unpack(*opened.reader).code, kOk);
    EXPECT_EQ(opened.reader->consumed(), 7U);
    ASSERT_EQ(opened.reader->next(member), kOk);
    EXPECT_EQ(readDetached(*opened.reader->detach()).code, kOk);
    EXPECT_EQ(opened.reader->consumed(), 11U);
    opened.reader->restart();
    EXPECT_EQ(opened.reader->consumed(), 0U);
}

zip::MemberData deflated(std::uint64_t packed, std::uint64_t original) {
    zip::MemberData data;
    data.method = 8;
    data.packedSize = packed;
    data.originalSize = original;
    return data;
}

TEST(ZipInMemory, TakesWhatFits) {
    constexpr std::uint64_t kMiB = std::uint64_t{1} << 20;
    zip::InMemoryUnpacker unpacker;
    EXPECT_TRUE(unpacker.reserve(deflated(0, 0)));
    EXPECT_TRUE(unpacker.reserve(deflated(2 * kMiB, 30 * kMiB)));
    EXPECT_FALSE(unpacker.reserve(deflated(2 * kMiB, 30 * kMiB + 1)));
    EXPECT_FALSE(unpacker.reserve(deflated(~std::uint64_t{0}, 1)));
    EXPECT_FALSE(unpacker.reserve(deflated(1, ~std::uint64_t{0})));
    EXPECT_TRUE(unpacker.reserve(deflated(100, 103200)));
    EXPECT_FALSE(unpacker.reserve(deflated(100, 103201)));  // deflate packs no better
    zip::MemberData stored = deflated(1, 1);
    stored.method = 0;
    EXPECT_FALSE(unpacker.reserve(stored));
    zip::MemberData encrypted = deflated(100, 100);
    encrypted.encryption = zip::Encryption::kTraditional;
    EXPECT_FALSE(unpacker.reserve(encrypted));
}

TEST(ZipInMemory, SharesItsMemory) {
    constexpr std::uint64_t kMiB = std::uint64_t{1} << 20;
    zip::InMemoryUnpacker unpacker;
    {
        const auto first = unpacker.reserve(deflated(16 * kMiB, 16 * kMiB));
        const auto second = unpacker.reserve(deflated(16 * kMiB, 16 * kMiB));
        const auto third = unpacker.reserve(deflated(16 * kMiB, 16 * kMiB));
        EXPECT_TRUE(first && second && third);
        EXPECT_FALSE(unpacker.reserve(deflated(1, 1)));  // 96 MiB are taken
    }
    EXPECT_TRUE(unpacker.reserve(deflated(1, 1)));
}

}  // namespace
}  // namespace archiver::test
