#pragma once
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "archivers/formats/input_file.h"
#include "archivers/formats/legacy_text.h"

namespace archiver::test {

/// The folder this program lies in. Implemented in win32/ and posix/.
std::filesystem::path programFolder();

/// The code page that texts without a charset are read in: that of the system, or the one that stands for it.
/// Implemented in win32/ and posix/.
unsigned codePageOf(LegacyPage page);

/// Whether those are 437 and 1252, which most tests of such texts are written for.
inline bool westernCodePages() { return codePageOf(LegacyPage::kOem) == 437 && codePageOf(LegacyPage::kAnsi) == 1252; }

/// One of the files of tests/data, which lie beside this program.
/// @param name  with its folder, such as "zip/zip.zip"
std::filesystem::path dataFile(std::string_view name);

/// A file's bytes; fails the running test when there is no such file.
std::string readFile(const std::filesystem::path& file);

/// Bytes in memory as a file.
class MemoryFile final : public InputFile {
public:
    explicit MemoryFile(std::string bytes) : bytes_(std::move(bytes)) {}

    [[nodiscard]] std::uint64_t size() const noexcept override { return bytes_.size(); }
    [[nodiscard]] Moment modified() const noexcept override { return {1'000'000'000, 0}; }
    [[nodiscard]] std::optional<std::size_t> readAt(std::uint64_t offset, std::span<char> into) const noexcept override;

private:
    std::string bytes_;
};

std::unique_ptr<InputFile> inMemory(std::string bytes);

/// A file of any size that holds zeros except for some texts at some offsets.
class SparseFile final : public InputFile {
public:
    SparseFile(std::map<std::uint64_t, std::string> texts, std::uint64_t size)
        : texts_(std::move(texts)), size_(size) {}

    [[nodiscard]] std::uint64_t size() const noexcept override { return size_; }
    [[nodiscard]] Moment modified() const noexcept override { return {}; }
    [[nodiscard]] std::optional<std::size_t> readAt(std::uint64_t offset, std::span<char> into) const noexcept override;

private:
    std::map<std::uint64_t, std::string> texts_;
    std::uint64_t size_;
};

/// A folder of this test's own; goes with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
    /// Writes a file into it.
    std::filesystem::path write(const std::filesystem::path& name, std::string_view bytes) const;

private:
    std::filesystem::path path_;
};

/// The time zone of this process while it lives, in the form of POSIX: "JST-9" is nine hours ahead.
class TimeZone {
public:
    explicit TimeZone(const char* zone);
    ~TimeZone();
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

private:
    static void set(const char* zone);
    std::string previous_;
};

}  // namespace archiver::test
