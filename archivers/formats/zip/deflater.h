#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <string>

struct libdeflate_compressor;

namespace archiver::zip {

/// CRC-32 of bytes that follow others. @param crc  of those; 0 for none
std::uint32_t crcOf(std::uint32_t crc, std::span<const char> bytes) noexcept;
/// CRC-32 of two texts, one behind the other. @param size  bytes of the second
std::uint32_t combinedCrc(std::uint32_t first, std::uint32_t second, std::uint64_t size) noexcept;

/// Deflates in memory, one thread at a time.
///
/// libdeflate is twice as fast as zlib at every level and packs tighter, but works on whole texts. Parts of a large
/// member are whole texts of their own, put together afterwards: each but the last loses its mark of the end and gets
/// an empty stored block behind it, which fills up its last byte. What a part cannot refer to before its start costs
/// less than libdeflate gains.
class Deflater {
public:
    /// @param level  1 to 9
    /// @throws std::bad_alloc
    explicit Deflater(int level);
    ~Deflater();
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    [[nodiscard]] int level() const noexcept { return level_; }

    /// @param last  false: another part follows
    /// @return the packed bytes, until the next call
    std::span<const char> pack(std::span<const char> plain, bool last);

private:
    struct Free {
        void operator()(libdeflate_compressor* compressor) const noexcept;
    };
    int level_;
    std::unique_ptr<libdeflate_compressor, Free> compressor_;
    std::unique_ptr<char[]> packed_;
    std::size_t capacity_ = 0;
};

}  // namespace archiver::zip
