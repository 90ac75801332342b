#pragma once
#include <cstdint>

#include "archivers/convention/abi.h"
#include "archivers/convention/library_description.h"
#include "archivers/convention/text_codec.h"
#include "archivers/formats/archive_reader.h"

namespace archiver {

/// 0xFFFFFFFF for what does not fit; the 64-bit queries tell the truth then.
[[nodiscard]] constexpr std::uint32_t clampToDword(std::uint64_t value) noexcept {
    return value > 0xFFFFFFFFU ? 0xFFFFFFFFU : static_cast<std::uint32_t>(value);
}

/// Packed size per mille of the original one.
/// @return 0 when `original` is 0; at most 0x7FFF, since callers read the field as a signed one
[[nodiscard]] std::uint16_t ratioOf(std::uint64_t packed, std::uint64_t original) noexcept;

/// Writes a member's name as the library gives it; see TextCodec::encode.
TextCodec::Written writeName(const Member& member, char separator, const TextCodec& codec, char* buffer,
                             std::size_t size) noexcept;

/// Writes the four letters of the attribute text, and zeros behind them.
void fillAttributes(std::uint8_t bits, AttributeStyle style, char (&field)[8]) noexcept;

/// Fills every byte of the record.
void fillRecord(const Member& member, const LibraryDescription& library, const TextCodec& codec,
                IndividualInfo& info) noexcept;

}  // namespace archiver
