#pragma once
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/zip/decoding.h"
#include "archivers/formats/zip/member_fields.h"

struct libdeflate_decompressor;

namespace archiver::zip {

/// Unpacks members that fit in memory whole: twice as fast as in pieces. Any number of threads share one.
class InMemoryUnpacker {
public:
    /// Packed and original size of one member, together. What unpacks without a pause must not keep a user who cancels
    /// waiting.
    static constexpr std::uint64_t kMostOfOne = std::uint64_t{32} << 20;
    /// Of all members that are being unpacked at a time. However many threads there are, a 32-bit process keeps most of
    /// its 256 MiB; who finds this taken goes on in pieces.
    static constexpr std::size_t kMostOfAll = std::size_t{96} << 20;
    /// Deflate packs no better than this. Source: RFC 1951, 258 bytes in two bits; zlib's technical details
    static constexpr std::uint64_t kBestRatio = 1032;

    /// Memory that a member may take until this goes.
    class Share {
    public:
        Share() = default;
        Share(std::atomic<std::size_t>& taken, std::size_t size) noexcept : taken_(&taken), size_(size) {}
        ~Share() {
            if (taken_ != nullptr) *taken_ -= size_;
        }
        Share(Share&& other) noexcept : taken_(std::exchange(other.taken_, nullptr)), size_(other.size_) {}
        Share& operator=(Share&&) = delete;

        explicit operator bool() const noexcept { return taken_ != nullptr; }

    private:
        std::atomic<std::size_t>* taken_ = nullptr;
        std::size_t size_ = 0;
    };

    InMemoryUnpacker();
    ~InMemoryUnpacker();
    InMemoryUnpacker(const InMemoryUnpacker&) = delete;
    InMemoryUnpacker& operator=(const InMemoryUnpacker&) = delete;

    /// Takes the memory for a member's packed and original bytes.
    /// @return none when it is not deflated, is encrypted, is too large, claims more bytes than can be in its packed
    ///         ones, or when the others have taken the memory
    [[nodiscard]] Share reserve(const MemberData& data) noexcept;

    /// Unpacks a deflated member whose share was reserved.
    /// @return nullopt when there is no memory: nothing was handed on yet
    std::optional<ReturnCode> unpack(std::span<const char> packed, const MemberData& data, const DataSink& sink);

private:
    struct FreeDecompressor {
        void operator()(libdeflate_decompressor* decompressor) const noexcept;
    };
    using UniqueDecompressor = std::unique_ptr<libdeflate_decompressor, FreeDecompressor>;

    UniqueDecompressor take();
    void giveBack(UniqueDecompressor decompressor);

    std::atomic<std::size_t> taken_{0};
    std::mutex mutex_;
    std::vector<UniqueDecompressor> idle_;
};

}  // namespace archiver::zip
