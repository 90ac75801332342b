#include "archivers/formats/tar/tar_reader.h"

#include <utility>

#include "archivers/formats/moments.h"

namespace archiver::tar {
namespace {

int archiveTypeOf(Compression compression) noexcept {
    switch (compression) {
        case Compression::kGzip:
            return 2;
        case Compression::kCompress:
            return 3;
        case Compression::kBzip2:
            return 6;
        case Compression::kNone:
            break;
    }
    return 1;
}

const char* methodTextOf(Compression compression) noexcept {
    switch (compression) {
        case Compression::kGzip:
            return "-tgz-";
        case Compression::kCompress:
            return "-taz-";
        case Compression::kBzip2:
            return "-tbz-";
        case Compression::kNone:
            break;
    }
    return "-tar-";
}

}  // namespace

TarReader::TarReader(std::unique_ptr<InputFile> file, Compression compression)
    : file_(std::move(file)), compression_(compression) {
    facts_.fileSize = file_->size();
    facts_.osType = os_type::kUnix;
    facts_.archiveType = archiveTypeOf(compression);
    facts_.listedByHeaders = compression == Compression::kNone;
    TarReader::restart();
}

ReturnCode TarReader::restart() {
    readable_ = false;
    names_ = std::make_unique<TarNames>(*file_, compression_);
    const Utf8Locale::Scope scope = names_->useLocale();  // libarchive looks at it once, when it is told the charset
    walker_ = std::make_unique<TarWalker>(makeStream(*file_, compression_), "UTF-8");
    return kOk;
}

ReturnCode TarReader::next(Member& member) {
    const Utf8Locale::Scope scope = names_->useLocale();
    readable_ = false;
    ReturnCode code = walker_->next();
    if (code == kNoMoreEntries && compression_ != Compression::kNone) {
        const ReturnCode end = walker_->finish();
        if (end != kOk) code = end;
    }
    if (code != kOk) return code;
    fill(member);
    readable_ = true;
    return kOk;
}

void TarReader::fill(Member& member) {
    constexpr unsigned kOwnerWrites = 0200;
    struct archive_entry* const entry = walker_->entry();
    member.kind = kindOf(member.linkTarget);
    const bool folder = member.kind == MemberKind::kFolder;

    names_->nameOf(*walker_, member.name);
    if (folder && !member.name.ends_with('/')) member.name += '/';
    hasBytes_ = member.kind == MemberKind::kFile;
    const la_int64_t size = hasBytes_ ? ::archive_entry_size(entry) : 0;
    member.originalSize = member.packedSize = static_cast<std::uint64_t>(size > 0 ? size : 0);
    member.crc = 0;
    member.osType = os_type::kUnix;
    member.attributes = folder ? attribute::kFolder : 0;
    if ((::archive_entry_perm(entry) & kOwnerWrites) == 0) member.attributes |= attribute::kReadOnly;
    member.method = methodTextOf(compression_);
    member.encrypted = false;

    const Moment written{::archive_entry_mtime(entry), static_cast<std::uint32_t>(::archive_entry_mtime_nsec(entry))};
    const DosStamp stamp = dosStampOf(written);
    member.dosDate = stamp.date;
    member.dosTime = stamp.time;
    member.written = written;
    member.created.reset();
    member.accessed.reset();
    if (::archive_entry_birthtime_is_set(entry) != 0) {
        member.created =
            Moment{::archive_entry_birthtime(entry), static_cast<std::uint32_t>(::archive_entry_birthtime_nsec(entry))};
    }
    if (::archive_entry_atime_is_set(entry) != 0) {
        member.accessed =
            Moment{::archive_entry_atime(entry), static_cast<std::uint32_t>(::archive_entry_atime_nsec(entry))};
    }
}

MemberKind TarReader::kindOf(std::string& linkTarget) {
    if (names_->targetOf(*walker_, EntryText::kHardLink, linkTarget)) return MemberKind::kHardLink;
    switch (::archive_entry_filetype(walker_->entry())) {
        case AE_IFREG:
            return MemberKind::kFile;
        case AE_IFDIR:
            return MemberKind::kFolder;
        case AE_IFLNK:
            names_->targetOf(*walker_, EntryText::kSymbolicLink, linkTarget);
            return MemberKind::kSymbolicLink;
        default:
            return MemberKind::kSpecial;
    }
}

ReturnCode TarReader::read(const DataSink& sink) {
    if (!std::exchange(readable_, false)) return kNotSearchMode;
    return hasBytes_ ? walker_->read(sink) : kOk;
}

}  // namespace archiver::tar
