#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "archivers/packing/source_item.h"

namespace archiver {

/// What became of a member that was packed.
struct PackedMember {
    std::string name;  ///< UTF-8, as it is stored
    std::uint64_t originalSize = 0;
    std::uint64_t packedSize = 0;
    bool stored = false;  ///< not compressed
};

/// Why a source is not packed, or not as it should be.
enum class PackWarning : std::uint8_t {
    kNotFound,    ///< no file has the name, and the pattern chooses none
    kNotOpened,   ///< it is there and cannot be read, or vanished
    kChanged,     ///< it became shorter while it was packed; it is as long as what could be read
    kHidden,      ///< it is hidden or the system's, and the command takes no such files
    kNotRemoved,  ///< it is in the archive and could not be removed after the move
};

/// Follows a packer. All calls come from the thread that packs, one at a time.
class PackEvents {
public:
    virtual ~PackEvents() = default;

    /// A member is next. @return false to cancel: the packer then answers kUserCancel and nothing is changed
    virtual bool beginMember(const SourceItem& item) = 0;
    /// So many more bytes of sources were taken in. @return as above
    virtual bool taken(std::uint64_t bytes) = 0;
    /// The member begun last is in the new archive. @return as above
    virtual bool endMember(const PackedMember& member) = 0;
    /// @param name  as it is or would be in the archive; as given when nothing has it
    virtual void warning(PackWarning kind, std::string_view name) = 0;
};

}  // namespace archiver
