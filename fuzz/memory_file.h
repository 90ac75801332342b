#pragma once
#include <algorithm>
#include <cstring>
#include <span>

#include "archivers/formats/input_file.h"

namespace archiver::fuzz {

/// The fuzzer's bytes as a file.
class MemoryFile final : public InputFile {
public:
    MemoryFile(const std::uint8_t* bytes, std::size_t size) : bytes_(bytes, size) {}

    [[nodiscard]] std::uint64_t size() const noexcept override { return bytes_.size(); }
    [[nodiscard]] Moment modified() const noexcept override { return {}; }
    [[nodiscard]] std::optional<std::size_t> readAt(std::uint64_t offset,
                                                    std::span<char> into) const noexcept override {
        if (offset >= bytes_.size()) return 0;
        const std::size_t count = std::min(into.size(), bytes_.size() - static_cast<std::size_t>(offset));
        std::memcpy(into.data(), bytes_.data() + offset, count);
        return count;
    }

private:
    std::span<const std::uint8_t> bytes_;
};

}  // namespace archiver::fuzz
