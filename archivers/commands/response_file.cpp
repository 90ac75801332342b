#include "archivers/commands/response_file.h"

#include <span>
#include <utility>

#include "archivers/commands/command_words.h"
#include "archivers/formats/input_file.h"
#include "archivers/formats/utf8.h"

namespace archiver {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";

/// UTF-16 with the low byte first; lone surrogates become U+FFFD.
std::string utf8OfUtf16(std::string_view bytes) {
    const auto unitAt = [bytes](std::size_t at) {
        return static_cast<char32_t>(static_cast<unsigned char>(bytes[at]) | static_cast<unsigned char>(bytes[at + 1])
                                                                                 << 8);
    };
    std::string utf8;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t character = unitAt(at);
        const bool pair = character >= 0xD800 && character < 0xDC00 && at + 3 < bytes.size();
        if (pair && unitAt(at + 2) >= 0xDC00 && unitAt(at + 2) < 0xE000) {
            at += 2;
            character = 0x10000 + ((character - 0xD800) << 10) + (unitAt(at) - 0xDC00);
        }
        appendUtf8(character, utf8);
    }
    return utf8;
}

std::string textOf(std::string_view bytes, const TextCodec& codec) {
    if (bytes.starts_with(kUtf8Mark)) return utf8Codec().decode(bytes.substr(kUtf8Mark.size()));
    if (bytes.starts_with(kUtf16Mark)) return utf8OfUtf16(bytes.substr(kUtf16Mark.size()));
    return codec.decode(bytes);
}

}  // namespace

std::vector<std::string> responseWords(std::string_view bytes, const TextCodec& codec) {
    std::vector<std::string> names;
    for (CommandWord& word : commandWords(textOf(bytes, codec))) {
        if (!word.text.empty()) names.push_back(std::move(word.text));
    }
    return names;
}

std::variant<std::vector<std::string>, ReturnCode> readResponseFile(const std::filesystem::path& file,
                                                                    const TextCodec& codec) {
    const InputFileResult opened = openInputFile(file);
    if (opened.file == nullptr || opened.file->size() > kLargestResponseFile) return kResponseRead;
    std::string bytes(static_cast<std::size_t>(opened.file->size()), '\0');
    if (!opened.file->readAll(0, bytes)) return kResponseRead;
    return responseWords(bytes, codec);
}

}  // namespace archiver
