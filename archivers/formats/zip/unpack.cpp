#include "archivers/formats/zip/unpack.h"

#include <zip.h>

#include <algorithm>
#include <array>
#include <memory>

#include "archivers/formats/little_endian.h"
#include "archivers/formats/zip/member_archive.h"
#include "archivers/formats/zip/signatures.h"

namespace archiver::zip {
namespace {

template <auto Close>
struct CloseWith {
    template <class Object>
    void operator()(Object* object) const noexcept {
        Close(object);
    }
};
using UniqueSource = std::unique_ptr<zip_source_t, CloseWith<&zip_source_free>>;
using UniqueArchive = std::unique_ptr<zip_t, CloseWith<&zip_discard>>;
using UniqueFile = std::unique_ptr<zip_file_t, CloseWith<&zip_fclose>>;

/// Shows a MemberArchive to the library. Lives as long as the library's objects do.
struct SourceState {
    const MemberArchive& archive;
    std::uint64_t position = 0;
    zip_error_t error{};
};

zip_int64_t sourceRead(SourceState& state, void* data, zip_uint64_t length) noexcept {
    std::size_t got = 0;
    const auto wanted = static_cast<std::size_t>(std::min<zip_uint64_t>(length, std::size_t{1} << 30));
    if (!state.archive.readAt(state.position, {static_cast<char*>(data), wanted}, got)) {
        zip_error_set(&state.error, ZIP_ER_READ, 0);
        return -1;
    }
    state.position += got;
    return static_cast<zip_int64_t>(got);
}

zip_int64_t sourceSeek(SourceState& state, void* data, zip_uint64_t length) noexcept {
    const auto size = state.archive.size();
    const zip_int64_t position = zip_source_seek_compute_offset(state.position, size, data, length, &state.error);
    if (position < 0) return -1;
    state.position = static_cast<std::uint64_t>(position);
    return 0;
}

zip_int64_t sourceStat(SourceState& state, void* data, zip_uint64_t length) noexcept {
    if (length < sizeof(zip_stat_t)) {
        zip_error_set(&state.error, ZIP_ER_INVAL, 0);
        return -1;
    }
    auto* const status = static_cast<zip_stat_t*>(data);
    zip_stat_init(status);
    status->size = state.archive.size();
    status->valid = ZIP_STAT_SIZE;
    return sizeof(zip_stat_t);
}

zip_int64_t sourceCall(void* user, void* data, zip_uint64_t length, zip_source_cmd_t command) noexcept {
    auto& state = *static_cast<SourceState*>(user);
    switch (command) {
        case ZIP_SOURCE_SUPPORTS:
            return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                                  ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL,
                                                  ZIP_SOURCE_SUPPORTS, -1);
        case ZIP_SOURCE_OPEN:
            state.position = 0;
            return 0;
        case ZIP_SOURCE_READ:
            return sourceRead(state, data, length);
        case ZIP_SOURCE_SEEK:
            return sourceSeek(state, data, length);
        case ZIP_SOURCE_TELL:
            return static_cast<zip_int64_t>(state.position);
        case ZIP_SOURCE_STAT:
            return sourceStat(state, data, length);
        case ZIP_SOURCE_ERROR:
            return zip_error_to_data(&state.error, data, length);
        case ZIP_SOURCE_CLOSE:
        case ZIP_SOURCE_FREE:
            return 0;
        default:
            zip_error_set(&state.error, ZIP_ER_OPNOTSUPP, 0);
            return -1;
    }
}

ReturnCode codeOf(const zip_error_t* error) noexcept {
    switch (zip_error_code_zip(error)) {
        case ZIP_ER_COMPNOTSUPP:
        case ZIP_ER_ENCRNOTSUPP:
            return kMethod;
        case ZIP_ER_NOPASSWD:
        case ZIP_ER_WRONGPASSWD:
            return kPasswordFile;
        case ZIP_ER_CRC:
        case ZIP_ER_ZLIB:
        case ZIP_ER_COMPRESSED_DATA:
            return kFileCrc;
        case ZIP_ER_MEMORY:
            return kEnoughMemory;
        default:
            return kCannotRead;
    }
}

/// Finds the packed bytes by the local header. Its other fields are not looked at: the directory's count.
ReturnCode findPackedBytes(const InputFile& file, std::uint64_t localHeader, const MemberData& data,
                           std::uint64_t& packed) {
    std::array<char, kLocalSize> local{};
    if (localHeader >= file.size() || file.size() - localHeader < local.size()) return kHeaderBroken;
    if (!file.readAll(localHeader, local)) return kCannotRead;
    if (little_endian::load32(local.data()) != kLocalSignature) return kHeaderBroken;
    packed =
        localHeader + kLocalSize + little_endian::load16(local.data() + 26) + little_endian::load16(local.data() + 28);
    if (packed > file.size() || file.size() - packed < data.packedSize) return kCannotRead;
    return kOk;
}

/// Hands the member's bytes to the sink; at its end the library compares size and checksum.
ReturnCode copyBytes(zip_file_t* member, std::uint64_t originalSize, const DataSink& sink) {
    constexpr std::size_t kPiece = std::size_t{64} * 1024;
    const auto buffer = std::make_unique_for_overwrite<char[]>(kPiece);
    std::uint64_t total = 0;
    for (;;) {
        const zip_int64_t got = zip_fread(member, buffer.get(), kPiece);
        if (got < 0) return codeOf(zip_file_get_error(member));
        if (got == 0) return total == originalSize ? kOk : kCannotRead;
        total += static_cast<std::uint64_t>(got);
        if (total > originalSize) return kFileCrc;  // a small claim must not let a large file through
        if (!sink(buffer.get(), static_cast<std::size_t>(got))) return kUserCancel;
    }
}

}  // namespace

ReturnCode unpackMember(const InputFile& file, std::uint64_t localHeader, const MemberData& data,
                        const DataSink& sink) {
    if (data.encrypted) return kPasswordFile;
    if (zip_compression_method_supported(data.method, 0) == 0) return kMethod;
    std::uint64_t packed = 0;
    if (const ReturnCode code = findPackedBytes(file, localHeader, data, packed); code != kOk) return code;

    const MemberArchive single(file, packed, data);
    SourceState state{single};
    zip_error_t error;
    zip_error_init(&error);
    UniqueSource source(zip_source_function_create(&sourceCall, &state, &error));
    if (!source) return kEnoughMemory;
    const UniqueArchive archive(zip_open_from_source(source.get(), ZIP_RDONLY, &error));
    if (!archive) return codeOf(&error);
    static_cast<void>(source.release());  // the archive's now
    const UniqueFile member(zip_fopen_index(archive.get(), 0, 0));
    if (!member) return codeOf(zip_get_error(archive.get()));
    return copyBytes(member.get(), data.originalSize, sink);
}

}  // namespace archiver::zip
