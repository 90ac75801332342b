#pragma once
#include <cstdint>
#include <memory>
#include <string>

#include "archivers/formats/tar/byte_stream.h"
#include "archivers/formats/tar/entry_path.h"
#include "archivers/formats/tar/tar_walker.h"
#include "archivers/formats/tar/utf8_locale.h"

namespace archiver::tar {

/// Gives the names of a tar's entries, and of what they link to, in UTF-8; the result is always valid.
///
/// The walk reads names as UTF-8, as today's systems write them and pax headers must hold them. An entry whose name is
/// none has no name at all then, and libarchive does not give the stored bytes. They come from a second walk that reads
/// names as ISO-8859-1, in which every byte is the character of its own number; only archives with such names pay for
/// it. The bytes are then read in the system's ANSI code page. (libarchive gives accented letters in their composed
/// form, however they were stored.)
class TarNames {
public:
    TarNames(const InputFile& file, Compression compression) : file_(file), compression_(compression) {}

    /// @param walker  whose current entry's name is wanted; it only ever goes forward
    /// @param name    replaced
    void nameOf(const TarWalker& walker, std::string& name);

    /// The name of the file that the walker's current entry is a link to.
    /// @param which   kSymbolicLink or kHardLink
    /// @param target  replaced; empty when there is none
    /// @return false when the entry is no such link
    bool targetOf(const TarWalker& walker, EntryText which, std::string& target);

    /// To be held while libarchive reads headers.
    [[nodiscard]] Utf8Locale::Scope useLocale() const noexcept { return Utf8Locale::Scope(locale_); }

private:
    /// The stored text of the entry that is the `count`th; only ever asked for the same or later ones.
    /// @return false when it has none
    bool storedText(std::uint64_t count, EntryText which, std::string& text);

    const InputFile& file_;
    Compression compression_;
    Utf8Locale locale_;
    std::unique_ptr<TarWalker> second_;
};

}  // namespace archiver::tar
