#include "archivers/formats/zip/in_memory.h"

#include <libdeflate.h>

#include <algorithm>
#include <new>
#include <utility>

namespace archiver::zip {
namespace {

constexpr std::uint16_t kDeflated = 8;

}  // namespace

InMemoryUnpacker::InMemoryUnpacker() = default;
InMemoryUnpacker::~InMemoryUnpacker() = default;

void InMemoryUnpacker::FreeDecompressor::operator()(libdeflate_decompressor* decompressor) const noexcept {
    ::libdeflate_free_decompressor(decompressor);
}

InMemoryUnpacker::Share InMemoryUnpacker::reserve(const MemberData& data) noexcept {
    if (data.method != kDeflated || data.encryption != Encryption::kNone) return {};
    if (data.packedSize > kMostOfOne || data.originalSize > kMostOfOne - data.packedSize) return {};
    if (data.originalSize > data.packedSize * kBestRatio) return {};
    const auto size = static_cast<std::size_t>(data.packedSize + data.originalSize);
    std::size_t taken = taken_;
    do {
        if (size > kMostOfAll - taken) return {};
    } while (!taken_.compare_exchange_weak(taken, taken + size));
    return {taken_, size};
}

std::optional<ReturnCode> InMemoryUnpacker::unpack(std::span<const char> packed, const MemberData& data,
                                                   const DataSink& sink) {
    constexpr std::size_t kPiece = std::size_t{1} << 20;  // between two of which the sink can stop
    const auto size = static_cast<std::size_t>(data.originalSize);
    const std::unique_ptr<char[]> original(new (std::nothrow) char[std::max<std::size_t>(size, 1)]);
    UniqueDecompressor decompressor = take();
    if (!original || !decompressor) return std::nullopt;
    const libdeflate_result result = ::libdeflate_deflate_decompress_ex(
        decompressor.get(), packed.data(), packed.size(), original.get(), size, nullptr, nullptr);
    giveBack(std::move(decompressor));
    if (result == LIBDEFLATE_SHORT_OUTPUT) return kCannotRead;
    if (result != LIBDEFLATE_SUCCESS) return kFileCrc;
    if (::libdeflate_crc32(0, original.get(), size) != data.crc) return kFileCrc;
    for (std::size_t done = 0; done < size;) {
        const std::size_t piece = std::min(kPiece, size - done);
        if (!sink(original.get() + done, piece)) return kUserCancel;
        done += piece;
    }
    return kOk;
}

InMemoryUnpacker::UniqueDecompressor InMemoryUnpacker::take() {
    {
        const std::lock_guard lock(mutex_);
        if (!idle_.empty()) {
            UniqueDecompressor decompressor = std::move(idle_.back());
            idle_.pop_back();
            return decompressor;
        }
    }
    return UniqueDecompressor(::libdeflate_alloc_decompressor());
}

void InMemoryUnpacker::giveBack(UniqueDecompressor decompressor) {
    const std::lock_guard lock(mutex_);
    idle_.push_back(std::move(decompressor));
}

}  // namespace archiver::zip
