#include "host/sample/disk_folder_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace tovar::host {
namespace {

TEST(DiskFolderReader, ReadsFilesWithTheirSizesAndFolders) {
    const auto folder = std::filesystem::temp_directory_path() / "tovarex-folder-reader";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder / "inner");
    std::ofstream(folder / "five.txt") << "12345";

    std::vector<FolderItem> items;
    EXPECT_TRUE(DiskFolderReader().read(folder, items));
    std::filesystem::remove_all(folder);

    std::sort(items.begin(), items.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0].name, L"five.txt");
    EXPECT_EQ(items[0].size, 5u);
    EXPECT_FALSE(items[0].isFolder);
    EXPECT_EQ(items[1].name, L"inner");
    EXPECT_TRUE(items[1].isFolder);
}

TEST(DiskFolderReader, SaysThatAMissingFolderCannotBeRead) {
    std::vector<FolderItem> items;
    EXPECT_FALSE(DiskFolderReader().read(std::filesystem::temp_directory_path() / "tovarex-no-such-folder", items));
}

}  // namespace
}  // namespace tovar::host
