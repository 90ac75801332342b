#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "archivers/convention/abi.h"
#include "shell/system_paths.h"
#include "shell/text_codec.h"

namespace tovar {

/// The 8-bit texts of a library: UTF-8 where it exports a function that switches to it, else the ANSI code page. The
/// mode belongs to the whole process, and the host may use the library too: it is on only while somebody here uses it.
class LibraryTexts {
public:
    /// @param setUnicodeMode  null where the library has no such function
    /// @param ansi            codec of the ANSI code page; outlives the object, as `system` does
    /// @param system          gives short names to files whose own name the code page cannot hold
    LibraryTexts(archiver::fn::SetBool* setUnicodeMode, const TextCodec& ansi, const SystemPaths& system)
        : setUnicodeMode_(setUnicodeMode), ansi_(ansi), system_(system) {}

    /// Users may lie within each other.
    void enter();
    void leave();

    /// While a user is there: the codec of the library's texts.
    [[nodiscard]] const TextCodec& codec() const;

    /// @return nullopt for a text that the code cannot hold, or that a NUL would cut
    [[nodiscard]] std::optional<std::string> encode(std::wstring_view text) const;

    /// Likewise for a file's name; its short name stands in where that helps.
    /// @param ansiLimit  bytes that a library takes which knows the code page only
    [[nodiscard]] std::optional<std::string> encodeFileName(std::wstring_view fileName, std::size_t ansiLimit) const;

    /// Keeps the library in UTF-8 while a call runs.
    class Use {
    public:
        explicit Use(LibraryTexts& texts) : texts_(texts) { texts_.enter(); }
        ~Use() { texts_.leave(); }
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;

    private:
        LibraryTexts& texts_;
    };

private:
    archiver::fn::SetBool* setUnicodeMode_;
    const TextCodec& ansi_;
    const SystemPaths& system_;
    Utf8Codec utf8_;
    int users_ = 0;
    bool speaksUtf8_ = false;
};

}  // namespace tovar
