#pragma once
#include <cstdint>
#include <memory>
#include <string>

#include "archivers/formats/tar/byte_stream.h"
#include "archivers/formats/tar/tar_walker.h"
#include "archivers/formats/tar/utf8_locale.h"

namespace archiver::tar {

/// Gives the names of a tar's entries in UTF-8; the result is always valid.
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

    /// To be held while libarchive reads headers.
    [[nodiscard]] Utf8Locale::Scope useLocale() const noexcept { return Utf8Locale::Scope(locale_); }

private:
    /// The stored name of the entry that is the `count`th; only ever asked for later ones.
    std::string storedName(std::uint64_t count);

    const InputFile& file_;
    Compression compression_;
    Utf8Locale locale_;
    std::unique_ptr<TarWalker> second_;
};

}  // namespace archiver::tar
