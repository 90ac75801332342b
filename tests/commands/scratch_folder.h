#pragma once
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace archiver::testing {

/// An empty folder of its own in the temporary folder, which is the current one while the object lives; removed with
/// it.
class ScratchFolder {
public:
    explicit ScratchFolder(const char* name)
        : before_(std::filesystem::current_path()),
          path_(std::filesystem::temp_directory_path() / (std::string("tovarex-") + name)) {
        remove();
        std::filesystem::create_directories(path_);
        std::filesystem::current_path(path_);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::current_path(before_, ignored);
        remove();
    }

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// A file below the folder, with the folders that it needs.
    std::filesystem::path write(const std::filesystem::path& name, std::string_view bytes) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream file(path_ / name, std::ios::binary);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        EXPECT_TRUE(file.good());
        return path_ / name;
    }

private:
    /// With write-protected files too, which Windows does not remove as they are.
    void remove() {
        std::error_code ignored;
        for (std::filesystem::recursive_directory_iterator each(path_, ignored), end; each != end;
             each.increment(ignored)) {
            std::filesystem::permissions(each->path(), std::filesystem::perms::owner_write,
                                         std::filesystem::perm_options::add | std::filesystem::perm_options::nofollow,
                                         ignored);
        }
        std::filesystem::remove_all(path_, ignored);
        EXPECT_FALSE(std::filesystem::exists(path_));
    }

    std::filesystem::path before_, path_;
};

}  // namespace archiver::testing
