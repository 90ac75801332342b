#include "archivers/formats/zip/decryption.h"

#include <zip.h>

#include <algorithm>
#include <utility>

#include "archivers/formats/legacy_text.h"
#include "archivers/formats/utf8.h"
#include "archivers/formats/zip/member_archive.h"

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
    MemberArchive archive;
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
            return kFileCrc;
        case ZIP_ER_MEMORY:
            return kEnoughMemory;
        default:
            return kCannotRead;
    }
}

class LibraryError {
public:
    LibraryError() noexcept { zip_error_init(&error_); }
    ~LibraryError() { zip_error_fini(&error_); }
    LibraryError(const LibraryError&) = delete;
    LibraryError& operator=(const LibraryError&) = delete;

    zip_error_t* get() noexcept { return &error_; }

private:
    zip_error_t error_{};
};

class LibrarySource final : public PackedSource {
public:
    LibrarySource(const InputFile& file, std::uint64_t packed, const MemberData& data)
        : state_{MemberArchive(file, packed, data)}, buffer_(std::make_unique_for_overwrite<char[]>(kPiece)) {}

    ReturnCode openArchive() {
        LibraryError error;
        UniqueSource source(zip_source_function_create(&sourceCall, &state_, error.get()));
        if (!source) return kEnoughMemory;
        archive_.reset(zip_open_from_source(source.get(), ZIP_RDONLY, error.get()));
        if (!archive_) return codeOf(error.get());
        static_cast<void>(source.release());  // the archive's now
        return kOk;
    }

    ReturnCode openMember(const std::string& password) {
        member_.reset(zip_fopen_index_encrypted(archive_.get(), 0, ZIP_FL_COMPRESSED, password.c_str()));
        return member_ ? kOk : codeOf(zip_get_error(archive_.get()));
    }

    ReturnCode next(std::span<const char>& piece) override {
        const zip_int64_t got = zip_fread(member_.get(), buffer_.get(), kPiece);
        if (got < 0) return codeOf(zip_file_get_error(member_.get()));
        piece = {buffer_.get(), static_cast<std::size_t>(got)};
        return kOk;
    }

private:
    static constexpr std::size_t kPiece = std::size_t{64} * 1024;

    SourceState state_;
    std::unique_ptr<char[]> buffer_;
    UniqueArchive archive_;
    UniqueFile member_;
};

/// What encryption adds to the packed bytes. The library takes less for a member it does not know.
std::uint64_t encryptionOverhead(const MemberData& data) noexcept {
    constexpr std::uint64_t kTraditionalHeader = 12;
    constexpr std::uint64_t kProofAndCode = 2 + 10;
    return data.encryption == Encryption::kTraditional ? kTraditionalHeader
                                                       : kProofAndCode + 4 + 4 * std::uint64_t{data.aes.strength};
}

}  // namespace

std::vector<std::string> passwordForms(std::string_view utf8) {
    std::vector<std::string> forms;
    if (utf8.empty() || utf8.find('\0') != std::string_view::npos) return forms;
    forms.emplace_back(utf8);
    if (isAscii(utf8)) return forms;
    for (const LegacyPage page : {LegacyPage::kOem, LegacyPage::kAnsi}) {
        std::string bytes;
        const bool exact = appendLegacyBytes(utf8, page, bytes);
        if (exact && std::find(forms.begin(), forms.end(), bytes) == forms.end()) forms.push_back(std::move(bytes));
    }
    return forms;
}

DecryptedSource decrypt(const InputFile& file, std::uint64_t packed, const MemberData& data,
                        std::span<const std::string> passwords) {
    if (data.packedSize < encryptionOverhead(data)) return {nullptr, kCannotRead};
    auto source = std::make_unique<LibrarySource>(file, packed, data);
    ReturnCode code = source->openArchive();
    if (code != kOk) return {nullptr, code};
    code = kPasswordFile;
    for (const std::string& password : passwords) {
        code = source->openMember(password);
        if (code == kOk) return {std::move(source), kOk};
        if (code != kPasswordFile) break;
    }
    return {nullptr, code};
}

}  // namespace archiver::zip
