#pragma once
#include "shell/text_codec.h"

namespace tovar::test {

/// ISO 8859-1: a code page that is the same on every system, and holds little.
class FakeTextCodec final : public TextCodec {
public:
    [[nodiscard]] std::optional<std::string> encode(std::wstring_view text) const override {
        std::string bytes;
        for (const wchar_t each : text) {
            if (static_cast<char32_t>(each) > 0xFF) return std::nullopt;
            bytes += static_cast<char>(each);
        }
        return bytes;
    }
    void decodeTo(std::string_view bytes, std::wstring& text) const override {
        for (const char each : bytes) text += static_cast<wchar_t>(static_cast<unsigned char>(each));
    }
};

}  // namespace tovar::test
