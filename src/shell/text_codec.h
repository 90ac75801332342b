#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace tovar {

/// Converts between the wide texts used inside and the 8-bit texts of an archiver or system boundary.
/// Wide texts are UTF-16 where wchar_t has 16 bits and UTF-32 where it has 32.
class TextCodec {
public:
    virtual ~TextCodec() = default;

    /// @return the 8-bit form, or nullopt when a character has none. Nothing is replaced by a look-alike: a character
    ///         that turns into "\" on the way would change the path it stands in.
    [[nodiscard]] virtual std::optional<std::string> encode(std::wstring_view text) const = 0;

    /// Appends the wide form of the bytes to `text`; bytes that form no character become U+FFFD.
    virtual void decodeTo(std::string_view bytes, std::wstring& text) const = 0;

    [[nodiscard]] std::wstring decode(std::string_view bytes) const {
        std::wstring text;
        decodeTo(bytes, text);
        return text;
    }
};

/// UTF-8 by RFC 3629: overlong forms, surrogates and values above U+10FFFF are no characters.
class Utf8Codec final : public TextCodec {
public:
    [[nodiscard]] std::optional<std::string> encode(std::wstring_view text) const override;
    void decodeTo(std::string_view bytes, std::wstring& text) const override;
};

}  // namespace tovar
