#include "archivers/convention/handle_table.h"

#include <gtest/gtest.h>

#include <future>
#include <set>
#include <thread>

#include "convention/fake_archive.h"

namespace archiver {
namespace {

using testing::FakeDisk;

class HandleTableTest : public ::testing::Test {
protected:
    HandleTableTest() { disk.add("a.zip"); }

    ArchiveHandle add() {
        const std::filesystem::path path = std::filesystem::current_path() / "a.zip";
        return table.add(std::make_unique<OpenedArchive>(FakeDisk::open(path).reader, path, 0));
    }
    static std::uintptr_t number(ArchiveHandle handle) { return reinterpret_cast<std::uintptr_t>(handle); }
    static ArchiveHandle handleOf(std::uintptr_t number) { return reinterpret_cast<ArchiveHandle>(number); }

    FakeDisk disk;
    HandleTable table;
};

TEST_F(HandleTableTest, FindsWhatWasAdded) {
    const ArchiveHandle handle = add();
    ASSERT_NE(handle, nullptr);
    EXPECT_TRUE(table.find(handle));
    EXPECT_TRUE(table.close(handle));
    EXPECT_EQ(disk.readers, 0);
}

TEST_F(HandleTableTest, GivesHandlesThatReadAsPositiveNumbers) {
    for (int count = 0; count < 3000; ++count) {
        const ArchiveHandle handle = add();
        ASSERT_GT(number(handle), 0U);
        ASSERT_LE(number(handle), 0x7FFFFFFFU);
        table.close(handle);
    }
}

TEST_F(HandleTableTest, RefusesHandlesThatAreNotOpen) {
    const ArchiveHandle handle = add();
    for (const std::uintptr_t wrong :
         {std::uintptr_t{0}, std::uintptr_t{1}, number(handle) + 1, number(handle) + 0x1000,
          number(handle) | 0x80000000U, std::uintptr_t{0x7FFFFFFF}, UINTPTR_MAX, std::uintptr_t{0xDEADBEEF}}) {
        EXPECT_FALSE(table.find(handleOf(wrong))) << wrong;
        EXPECT_FALSE(table.close(handleOf(wrong))) << wrong;
    }
    EXPECT_TRUE(table.find(handle));
}

TEST_F(HandleTableTest, RefusesAHandleWhosePlaceIsTakenAgain) {
    const ArchiveHandle old = add();
    ASSERT_TRUE(table.close(old));
    EXPECT_FALSE(table.close(old));
    const ArchiveHandle recent = add();
    EXPECT_NE(old, recent);
    EXPECT_FALSE(table.find(old));
    EXPECT_TRUE(table.find(recent));
}

TEST_F(HandleTableTest, HasAnEnd) {
    std::set<ArchiveHandle> handles;
    for (int count = 0; count < 4095; ++count) {
        handles.insert(add());
    }
    EXPECT_EQ(handles.size(), 4095U);
    EXPECT_EQ(handles.count(nullptr), 0U);
    EXPECT_EQ(add(), nullptr);
    EXPECT_EQ(disk.readers, 4095) << "what has no place is closed";
    ASSERT_TRUE(table.close(*handles.begin()));
    EXPECT_NE(add(), nullptr);
}

TEST_F(HandleTableTest, ClosesWhatIsLeft) {
    {
        HandleTable other;
        const std::filesystem::path path = std::filesystem::current_path() / "a.zip";
        other.add(std::make_unique<OpenedArchive>(FakeDisk::open(path).reader, path, 0));
        ASSERT_EQ(disk.readers, 1);
    }
    EXPECT_EQ(disk.readers, 0);
}

TEST_F(HandleTableTest, LetsClosingWaitForUse) {
    const ArchiveHandle handle = add();
    std::future<bool> closed;
    {
        const HandleTable::Access access = table.find(handle);
        std::promise<void> started;
        closed = std::async(std::launch::async, [&] {
            started.set_value();
            return table.close(handle);
        });
        started.get_future().wait();
        EXPECT_FALSE(access->searched()) << "still there";
        EXPECT_EQ(disk.readers, 1);
    }
    EXPECT_TRUE(closed.get());
    EXPECT_EQ(disk.readers, 0);
}

TEST_F(HandleTableTest, ServesManyThreads) {
    std::vector<std::thread> threads;
    std::atomic<int> wrong = 0;
    const std::filesystem::path path = std::filesystem::current_path() / "a.zip";
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int count = 0; count < 500; ++count) {
                const ArchiveHandle handle = table.add(std::make_unique<OpenedArchive>(nullptr, path, 0));
                const bool found = static_cast<bool>(table.find(handle));
                const bool closed = table.close(handle);
                const bool foundAgain = static_cast<bool>(table.find(handle));
                if (!found || !closed || foundAgain) {
                    ++wrong;
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace archiver
