// The queries of the archive and of the member that the last search gave.
#include <algorithm>

#include "archivers/convention/library_core.h"
#include "archivers/convention/moment_forms.h"
#include "archivers/convention/system.h"

namespace archiver {

namespace {

constexpr std::uint16_t kNoWord = 0xFFFF;

/// A claim beyond 63 bits becomes the highest number that the caller's type holds.
Bool storeSize(std::uint64_t value, std::int64_t* size) noexcept {
    *size = static_cast<std::int64_t>(std::min<std::uint64_t>(value, INT64_MAX));
    return 1;
}

/// The moment of the last change; what the format keeps as local time alone is turned into UTC.
std::optional<Moment> writtenOf(const Member& member) noexcept {
    return member.written.has_value() ? member.written : utcOfLocal({member.dosDate, member.dosTime});
}

std::uint32_t secondsOrNone(const std::optional<Moment>& moment) noexcept {
    return moment.has_value() ? secondsOf(*moment) : kNoDword;
}

Bool storeTime(const std::optional<Moment>& moment, FileTime* time) noexcept {
    const std::optional<FileTime> form = moment.has_value() ? fileTimeOf(*moment) : std::nullopt;
    if (!form.has_value()) {
        return 0;
    }
    *time = *form;
    return 1;
}

}  // namespace

template <class Result, class Query>
Result LibraryCore::onArchive(ArchiveHandle archive, Result error, Query query) noexcept {
    try {
        const HandleTable::Access access = handles_.find(archive);
        return access ? static_cast<Result>(query(*access)) : error;
    } catch (...) {
        return error;
    }
}

template <class Result, class Query>
Result LibraryCore::onSearched(ArchiveHandle archive, Result error, Query query) noexcept {
    return onArchive(archive, error, [&](const OpenedArchive& opened) {
        return opened.searched() ? static_cast<Result>(query(opened)) : error;
    });
}

template <class Result, class Query>
Result LibraryCore::onMember(ArchiveHandle archive, Result error, Query query) noexcept {
    return onArchive(archive, error, [&](const OpenedArchive& opened) {
        const Member* member = opened.current();
        return member != nullptr ? static_cast<Result>(query(*member)) : error;
    });
}

std::int32_t LibraryCore::arcFileName(ArchiveHandle archive, char* buffer, std::int32_t size) noexcept {
    return onArchive<std::int32_t>(archive, kHarcIsNotOpened, [&](const OpenedArchive& opened) {
        if (buffer == nullptr || size <= 0) {
            return kLongFileName;
        }
        const std::u8string name = opened.file().u8string();
        const std::string_view utf8(reinterpret_cast<const char*>(name.data()), name.size());
        return codec().encode(utf8, buffer, static_cast<std::size_t>(size)).whole ? kOk : kLongFileName;
    });
}

std::uint32_t LibraryCore::arcFileSize(ArchiveHandle archive) noexcept {
    return onArchive(archive, kNoDword,
                     [](const OpenedArchive& opened) { return clampToDword(opened.facts().fileSize); });
}

std::uint32_t LibraryCore::arcOriginalSize(ArchiveHandle archive) noexcept {
    return onSearched(archive, kNoDword,
                      [](const OpenedArchive& opened) { return clampToDword(opened.originalTotal()); });
}

std::uint32_t LibraryCore::arcCompressedSize(ArchiveHandle archive) noexcept {
    return onSearched(archive, kNoDword,
                      [](const OpenedArchive& opened) { return clampToDword(opened.packedTotal()); });
}

Bool LibraryCore::arcFileSizeEx(ArchiveHandle archive, std::int64_t* size) noexcept {
    return size == nullptr ? 0 : onArchive<Bool>(archive, 0, [size](const OpenedArchive& opened) {
        return storeSize(opened.facts().fileSize, size);
    });
}

Bool LibraryCore::arcOriginalSizeEx(ArchiveHandle archive, std::int64_t* size) noexcept {
    return size == nullptr ? 0 : onSearched<Bool>(archive, 0, [size](const OpenedArchive& opened) {
        return storeSize(opened.originalTotal(), size);
    });
}

Bool LibraryCore::arcCompressedSizeEx(ArchiveHandle archive, std::int64_t* size) noexcept {
    return size == nullptr ? 0 : onSearched<Bool>(archive, 0, [size](const OpenedArchive& opened) {
        return storeSize(opened.packedTotal(), size);
    });
}

std::uint16_t LibraryCore::arcRatio(ArchiveHandle archive) noexcept {
    return onSearched(archive, kNoWord, [](const OpenedArchive& opened) {
        return ratioOf(opened.packedTotal(), opened.originalTotal());
    });
}

std::uint16_t LibraryCore::arcDate(ArchiveHandle archive) noexcept {
    return onArchive(archive, kNoWord, [](const OpenedArchive& opened) {
        const std::optional<Moment> changed = lastWriteTime(opened.file());
        return changed.has_value() ? dosStampOf(*changed).date : kNoWord;
    });
}

std::uint16_t LibraryCore::arcTime(ArchiveHandle archive) noexcept {
    return onArchive(archive, kNoWord, [](const OpenedArchive& opened) {
        const std::optional<Moment> changed = lastWriteTime(opened.file());
        return changed.has_value() ? dosStampOf(*changed).time : kNoWord;
    });
}

std::uint32_t LibraryCore::arcOsType(ArchiveHandle archive) noexcept {
    return onArchive(archive, kNoDword, [](const OpenedArchive& opened) { return opened.facts().osType; });
}

std::int32_t LibraryCore::isSfxFile(ArchiveHandle archive) noexcept {
    return onArchive<std::int32_t>(archive, -1,
                                   [](const OpenedArchive& opened) { return opened.facts().selfExtracting ? 1 : 0; });
}

template <class Write>
std::int32_t LibraryCore::textOfMember(ArchiveHandle archive, char* buffer, std::int32_t size, Write write) noexcept {
    return onArchive<std::int32_t>(archive, kHarcIsNotOpened, [&](const OpenedArchive& opened) {
        if (opened.current() == nullptr) {
            return kNotSearchMode;
        }
        if (buffer == nullptr || size <= 0) {
            return kLongFileName;
        }
        const TextCodec::Written written = write(*opened.current(), buffer, static_cast<std::size_t>(size));
        return written.whole ? kOk : kLongFileName;
    });
}

std::int32_t LibraryCore::fileName(ArchiveHandle archive, char* buffer, std::int32_t size) noexcept {
    return textOfMember(archive, buffer, size, [this](const Member& member, char* text, std::size_t room) {
        return writeName(member, description_.separator, codec(), text, room);
    });
}

std::int32_t LibraryCore::method(ArchiveHandle archive, char* buffer, std::int32_t size) noexcept {
    return textOfMember(archive, buffer, size, [this](const Member& member, char* text, std::size_t room) {
        return codec().encode(member.method, text, room);
    });
}

std::uint32_t LibraryCore::originalSize(ArchiveHandle archive) noexcept {
    return onMember(archive, kNoDword, [](const Member& member) { return clampToDword(member.originalSize); });
}

std::uint32_t LibraryCore::compressedSize(ArchiveHandle archive) noexcept {
    return onMember(archive, kNoDword, [](const Member& member) { return clampToDword(member.packedSize); });
}

Bool LibraryCore::originalSizeEx(ArchiveHandle archive, std::int64_t* size) noexcept {
    return size == nullptr ? 0 : onMember<Bool>(archive, 0, [size](const Member& member) {
        return storeSize(member.originalSize, size);
    });
}

Bool LibraryCore::compressedSizeEx(ArchiveHandle archive, std::int64_t* size) noexcept {
    return size == nullptr ? 0 : onMember<Bool>(archive, 0, [size](const Member& member) {
        return storeSize(member.packedSize, size);
    });
}

std::uint16_t LibraryCore::ratio(ArchiveHandle archive) noexcept {
    return onMember(archive, kNoWord,
                    [](const Member& member) { return ratioOf(member.packedSize, member.originalSize); });
}

std::uint16_t LibraryCore::date(ArchiveHandle archive) noexcept {
    return onMember(archive, kNoWord, [](const Member& member) { return member.dosDate; });
}

std::uint16_t LibraryCore::time(ArchiveHandle archive) noexcept {
    return onMember(archive, kNoWord, [](const Member& member) { return member.dosTime; });
}

std::uint32_t LibraryCore::crc(ArchiveHandle archive) noexcept {
    return onMember(archive, kNoDword, [](const Member& member) { return member.crc; });
}

std::int32_t LibraryCore::attribute(ArchiveHandle archive) noexcept {
    return onMember<std::int32_t>(archive, -1, [](const Member& member) { return member.attributes; });
}

std::uint32_t LibraryCore::osType(ArchiveHandle archive) noexcept {
    return onMember(archive, kNoDword, [](const Member& member) { return member.osType; });
}

std::uint32_t LibraryCore::writeTime(ArchiveHandle archive) noexcept {
    return onMember(archive, kNoDword, [](const Member& member) { return secondsOrNone(writtenOf(member)); });
}

std::uint32_t LibraryCore::createTime(ArchiveHandle archive) noexcept {
    return onMember(archive, kNoDword, [](const Member& member) { return secondsOrNone(member.created); });
}

std::uint32_t LibraryCore::accessTime(ArchiveHandle archive) noexcept {
    return onMember(archive, kNoDword, [](const Member& member) { return secondsOrNone(member.accessed); });
}

Bool LibraryCore::writeTimeEx(ArchiveHandle archive, FileTime* time) noexcept {
    return time == nullptr ? 0 : onMember<Bool>(archive, 0, [time](const Member& member) {
        return storeTime(writtenOf(member), time);
    });
}

Bool LibraryCore::createTimeEx(ArchiveHandle archive, FileTime* time) noexcept {
    return time == nullptr
               ? 0
               : onMember<Bool>(archive, 0, [time](const Member& member) { return storeTime(member.created, time); });
}

Bool LibraryCore::accessTimeEx(ArchiveHandle archive, FileTime* time) noexcept {
    return time == nullptr
               ? 0
               : onMember<Bool>(archive, 0, [time](const Member& member) { return storeTime(member.accessed, time); });
}

}  // namespace archiver
