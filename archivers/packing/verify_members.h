#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "archivers/formats/archive_reader.h"

namespace archiver {

/// A member that an archive must hold, as it was packed.
struct ExpectedMember {
    std::string name;  ///< UTF-8; separators as the reader gives them
    std::uint64_t size = 0;
    std::optional<std::uint32_t> crc;  ///< CRC-32 of the source; none: the format's own checksum has to do
};

/// Opens an archive anew, unpacks every one of the members and compares them, so that their sources can be removed.
/// Members that are not expected are passed over; of several with one name the last counts.
/// @param password  UTF-8, for encrypted members; empty for none
/// @param goOn      asked at least once a MiB; false ends it with kUserCancel
/// @return kOk; kNotExist when one is missing, kFileCrc when one is different; what the reader answered
ReturnCode verifyMembers(OpenFunction open, const std::filesystem::path& archive,
                         std::span<const ExpectedMember> members, std::string_view password,
                         const std::function<bool()>& goOn);

}  // namespace archiver
