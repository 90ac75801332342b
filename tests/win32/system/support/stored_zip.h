#pragma once
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace tovar::test {

/// Writes a ZIP archive of stored members, as many as wanted. Dates are 2001-05-17 17:30:58.
/// Source: PKWARE APPNOTE 6.3.10, 4.3
class StoredZip {
public:
    /// Throws std::runtime_error when the file cannot be made.
    explicit StoredZip(const std::filesystem::path& file);

    /// @param name  bytes of a code page of MS-DOS
    void add(std::string_view name, std::string_view content);
    /// Writes the directory; with Zip64 records when there are more members than the classic one can count.
    /// @return size of the file
    std::uint64_t finish();

private:
    struct CloseFile {
        void operator()(std::FILE* file) const noexcept { std::fclose(file); }
    };

    void write(std::string_view bytes);

    std::unique_ptr<std::FILE, CloseFile> file_;
    std::string directory_;
    std::uint64_t size_ = 0, members_ = 0;
};

}  // namespace tovar::test
