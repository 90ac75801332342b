#include "archivers/commands/command_paths.h"

#include <system_error>
#include <type_traits>

#include "archivers/convention/text_codec.h"
#include "archivers/formats/utf8.h"

namespace archiver {

namespace {

template <class Character>
void appendNative(std::basic_string_view<Character> text, std::string& utf8) {
    if constexpr (std::is_same_v<Character, wchar_t>) {
        appendUtf8(text, utf8);
    } else {
        utf8 += utf8Codec().decode(text);
    }
}

/// Makes "C:\docs" of "\\?\C:\docs", and "\\server\docs" of "\\?\UNC\server\docs".
void dropLongForm(std::string& path) {
    constexpr std::string_view kLong = R"(\\?\)", kNetwork = R"(\\?\UNC\)";
    if (path.starts_with(kNetwork)) {
        path.replace(0, kNetwork.size(), R"(\\)");
    } else if (path.starts_with(kLong) && path.size() > kLong.size() + 1 && path[kLong.size() + 1] == ':') {
        path.erase(0, kLong.size());
    }
}

}  // namespace

std::filesystem::path pathOf(std::string_view utf8) {
    utf8 = utf8.substr(0, utf8.find('\0'));
    return std::u8string(utf8.begin(), utf8.end());
}

std::filesystem::path folderOf(std::string_view utf8) {
    std::string text(utf8);
    if (text.ends_with('\\')) text.back() = '/';
    std::filesystem::path folder = pathOf(text);
    // "C:\" is a drive's root, "C:" its current folder: there the separator counts.
    if (!folder.has_filename() && folder.has_relative_path()) folder = folder.parent_path();
    return folder.make_preferred();
}

std::filesystem::path archiveOf(std::string_view utf8, std::string_view extension) {
    std::filesystem::path archive = pathOf(utf8);
    if (!extension.empty() && !archive.has_extension() && archive.has_filename() && !isFile(archive)) {
        archive += pathOf(extension);
    }
    return archive;
}

bool isFile(const std::filesystem::path& file) noexcept {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    return !error && std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

std::string utf8Of(const std::filesystem::path& path) {
    std::string utf8;
    appendNative(std::basic_string_view<std::filesystem::path::value_type>(path.native()), utf8);
    if constexpr (std::filesystem::path::preferred_separator == '\\') dropLongForm(utf8);
    return utf8;
}

}  // namespace archiver
