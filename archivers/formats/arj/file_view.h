#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "archivers/formats/input_file.h"

namespace archiver::arj {

/// A file's bytes through a small window, for headers that stand here and there.
class FileView {
public:
    /// Bytes that one call can give.
    static constexpr std::size_t kCapacity = 4096;

    explicit FileView(std::shared_ptr<const InputFile> file) noexcept : file_(std::move(file)) {}

    [[nodiscard]] const std::shared_ptr<const InputFile>& file() const noexcept { return file_; }
    [[nodiscard]] std::uint64_t size() const noexcept { return file_->size(); }

    /// Gives bytes from `offset` on. They stay until the next call.
    /// @param wanted  at most kCapacity
    /// @return fewer bytes than wanted only at the end of the file; nullopt when the system reports an error
    [[nodiscard]] std::optional<std::string_view> at(std::uint64_t offset, std::size_t wanted) noexcept;

    /// Likewise, with what happens to be there behind them.
    /// @param least  bytes that are needed, at most kCapacity
    [[nodiscard]] std::optional<std::string_view> from(std::uint64_t offset, std::size_t least) noexcept;

private:
    std::shared_ptr<const InputFile> file_;
    std::array<char, kCapacity> bytes_{};
    std::uint64_t start_ = 0;
    std::size_t filled_ = 0;
};

}  // namespace archiver::arj
