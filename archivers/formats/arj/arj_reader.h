#pragma once
#include <filesystem>
#include <memory>
#include <string>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver {

/// What an ARJ archive can do beyond what every archive can.
class ArjArchive : public ArchiveReader {
public:
    /// Chapters are the states of an archive that keeps what was replaced or deleted.
    enum class Chapters : std::uint8_t {
        kNewest,  ///< the members of the last state: what the archive holds for whoever does not look back
        kAll,     ///< everything, with several members of one name
    };

    /// Chooses which members `next` gives; kNewest at first.
    virtual void setChapters(Chapters chapters) = 0;

    /// The archive's comment, in UTF-8, with the line ends as stored; empty when there is none.
    [[nodiscard]] virtual std::string comment() const = 0;

    /// Likewise, of the current member.
    [[nodiscard]] virtual std::string memberComment() const = 0;
};

/// Opens an ARJ archive: also behind a self-extracting program of up to 512 KiB, and also the first of several volumes,
/// the others of which lie beside it. The reader is an ArjArchive.
///
/// Its `next` gives files and folders; labels, chapter marks and UNIX devices are passed over. A member that goes on in
/// other volumes is one member with the sizes of all its parts, as far as they are there. kArcFileOpen stands in place
/// of the members of a volume that is missing, and `read` answers it for a member that is not complete; a member that
/// began in a volume before the one that was opened gives kCannotRead. Texts get the line ends of the system, so their
/// written size can differ from the one in the member.
///
/// Without a check value in the format, `read` answers kPasswordFile for a garbled member whose data turns out wrong;
/// bytes may have gone to the sink until then.
/// @return kNotFindArcFile, kArcFileOpen (also for folders), kFileStyle when it is no ARJ archive, kHeaderCrc and
///         kHeaderBroken when its main header is damaged, kCannotRead
OpenResult openArj(const std::filesystem::path& file);

/// Likewise, for a file that is open.
/// @param path  its name, beside which the other volumes are looked for; empty when it has none
OpenResult openArj(std::unique_ptr<InputFile> file, const std::filesystem::path& path);

}  // namespace archiver
