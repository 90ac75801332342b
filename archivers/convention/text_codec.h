#pragma once
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace archiver {

/// How texts pass the exported functions. Inside, names are UTF-8; outside, they are 8-bit texts of one code page.
/// Stateless: one object may serve many threads.
class TextCodec {
public:
    virtual ~TextCodec() = default;

    /// Writes a text as a NUL-terminated one, without allocating.
    /// A character that the code page has no exact form for becomes "_", never a look-alike: a look-alike of a
    /// separator would move the member to another folder. So does a NUL inside the text. Bytes that form no character
    /// become "_".
    /// @param size  bytes that `buffer` holds, at least 1; a longer text is cut at a character boundary
    /// @return the bytes written without the NUL, and whether the text was written to its end
    struct Written {
        std::size_t length = 0;
        bool whole = true;
    };
    virtual Written encode(std::string_view utf8, char* buffer, std::size_t size) const noexcept = 0;

    /// The text in UTF-8; bytes that form no character become U+FFFD.
    [[nodiscard]] virtual std::string decode(std::string_view text) const = 0;

    /// The file that the text names.
    [[nodiscard]] virtual std::filesystem::path decodePath(std::string_view text) const = 0;
};

/// For callers that switched the library to UTF-8.
const TextCodec& utf8Codec() noexcept;

/// The process's ANSI code page. On systems without one, texts are UTF-8 and file names the bytes they are.
const TextCodec& ansiCodec() noexcept;

}  // namespace archiver
