#pragma once
#include <windows.h>

#include "shell/text_codec.h"

namespace tovar {

/// 8-bit texts in a code page of Windows, by default the process's own ANSI code page.
class AnsiCodec final : public TextCodec {
public:
    /// @param codePage  a single- or double-byte code page, CP_UTF8, or CP_ACP for what GetACP says now
    explicit AnsiCodec(UINT codePage = CP_ACP) noexcept : codePage_(codePage == CP_ACP ? ::GetACP() : codePage) {}

    [[nodiscard]] UINT codePage() const noexcept { return codePage_; }

    [[nodiscard]] std::optional<std::string> encode(std::wstring_view text) const override;
    void decodeTo(std::string_view bytes, std::wstring& text) const override;

private:
    void decodeDamaged(std::string_view bytes, std::wstring& text) const;

    UINT codePage_;
};

}  // namespace tovar
