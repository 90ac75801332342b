#include "archivers/formats/tar/tar_format.h"

#include <string>
#include <type_traits>
#include <utility>

#include "archivers/formats/legacy_text.h"
#include "archivers/formats/tar/gzip_stream.h"
#include "archivers/formats/tar/recognition.h"
#include "archivers/formats/tar/single_name.h"
#include "archivers/formats/tar/single_reader.h"
#include "archivers/formats/tar/tar_reader.h"
#include "archivers/formats/utf8.h"

namespace archiver {
namespace {

using tar::Compression;

/// Source: RFC 1952, 2.3.1, OS
std::uint32_t osTypeOfGzip(std::uint8_t system) noexcept {
    switch (system) {
        case 0:
            return os_type::kMsDos;
        case 3:
            return os_type::kUnix;
        case 7:
            return os_type::kMacOs;
        case 11:
            return os_type::kWindowsNtfs;
        default:
            return os_type::kUnknown;
    }
}

OpenResult openSingle(std::unique_ptr<InputFile> file, Compression compression, std::string_view fileName) {
    tar::SingleMember member{tar::nameWithoutExtension(fileName), file->modified(), os_type::kUnknown};
    if (compression == Compression::kCompress) member.osType = os_type::kUnix;
    if (compression == Compression::kGzip) {
        tar::GzipHeader header;
        if (!tar::readGzipHeader(*file, header)) return {nullptr, kHeaderBroken};
        if (std::string name = tar::nameFromHeader(header.name); !name.empty()) member.name = std::move(name);
        if (header.modified != 0) member.written = {header.modified, 0};
        member.osType = osTypeOfGzip(header.system);
    }
    return {std::make_unique<tar::SingleReader>(std::move(file), compression, std::move(member)), kOk};
}

/// The last part of a path in UTF-8.
std::string fileNameOf(const std::filesystem::path& file) {
    const std::filesystem::path last = file.filename();
    std::string name;
    if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>) {
        appendUtf8(std::wstring_view(reinterpret_cast<const wchar_t*>(last.c_str())), name);
    } else {
        const std::string_view bytes(reinterpret_cast<const char*>(last.c_str()));
        if (isUtf8(bytes)) {
            name.assign(bytes);
        } else {
            appendLegacyText(bytes, LegacyPage::kAnsi, name);
        }
    }
    return name;
}

}  // namespace

OpenResult openTar(std::unique_ptr<InputFile> file, std::string_view fileName) {
    const auto [code, compression] = tar::recogniseCompression(*file);
    if (code != kOk) return {nullptr, code};
    const auto stream = tar::makeStream(*file, compression);
    if (tar::recogniseContents(*stream) == tar::Contents::kTar) {
        return {std::make_unique<tar::TarReader>(std::move(file), compression), kOk};
    }
    if (compression == Compression::kNone) return {nullptr, kFileStyle};
    return openSingle(std::move(file), compression, fileName);
}

OpenResult openTar(const std::filesystem::path& file) {
    InputFileResult opened = openInputFile(file);
    if (!opened.file) return {nullptr, opened.code};
    return openTar(std::move(opened.file), fileNameOf(file));
}

}  // namespace archiver
