#pragma once
#include <string>
#include <vector>

#include "formats/support/listing.h"
#include "formats_rar/support/old_packer.h"
#include "formats_rar/support/rar_builder.h"

namespace archiver::test {

/// What the packer packed since the last call, as a member.
/// @param flags  kSolid for one that goes on with what the members before left
OldRarFile member(OldPacker& packer, const std::string& name = "a", std::uint16_t flags = 0);

inline constexpr std::uint16_t kSolid = 0x0010;

/// Unpacks the first member of an archive.
Unpacked unpackFirst(const std::vector<OldRarFile>& files);

/// Bytes without any order, always the same ones.
std::string noise(std::size_t size, unsigned seed);
/// Words, one after the other.
std::string prose(std::size_t size);

/// Five members; each but the first goes on with something of those before: the window, the codes, the last distances,
/// the model, a filter's program.
std::vector<OldRarFile> solidGroup();

}  // namespace archiver::test
