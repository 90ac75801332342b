#pragma once
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "archivers/formats/input_file.h"
#include "archivers/formats/zip/member_fields.h"
#include "archivers/formats/zip/packed_source.h"

namespace archiver::zip {

/// A password's forms, as bytes: archivers do not agree on a code page. UTF-8 comes first, then, for one with
/// characters beyond ASCII, those of the system where it has a form there.
/// @return empty for an empty password, or one that holds a NUL
std::vector<std::string> passwordForms(std::string_view utf8);

/// Outcome of decrypting: a source, or why there is none.
struct DecryptedSource {
    std::unique_ptr<PackedSource> source;  ///< null on failure
    ReturnCode code = kOk;
};

/// Gives a member's packed bytes decrypted. Behind the last one the source answers kFileCrc when the authentication
/// code of AES is not theirs.
///
/// A password of the traditional encryption is proved by one byte, and of AES by two: a wrong one can pass, and the
/// data is damaged then.
/// @param packed     where the packed bytes start in `file`; all of them must be there
/// @param passwords  the first that passes is taken
/// @return kPasswordFile when none passes, kCannotRead, kMethod, kEnoughMemory
DecryptedSource decrypt(const InputFile& file, std::uint64_t packed, const MemberData& data,
                        std::span<const std::string> passwords);

}  // namespace archiver::zip
