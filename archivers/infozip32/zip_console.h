#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "archivers/convention/return_codes.h"
#include "archivers/convention/text_codec.h"
#include "archivers/convention/zip_abi.h"

namespace archiver::infozip {

/// The callbacks of a run, with the library's console texts in the pieces that callers read.
class ZipConsole {
public:
    ZipConsole(const zip_abi::Callbacks& callbacks, const TextCodec& codec) : callbacks_(callbacks), codec_(codec) {}

    bool quiet = false;    ///< only warnings and errors
    bool verbose = false;  ///< sizes, progress and totals as well

    /// "  adding: NAME", "updating: NAME", "freshening: NAME".
    enum class Verb : std::uint8_t { kAdding, kUpdating, kFreshening };
    void begin(Verb verb, std::string_view name);
    /// A part of a large member is done.
    void dot();
    /// The tail of the line that `begin` started: " (deflated 52%)", " (stored 0%)".
    void end(std::uint64_t original, std::uint64_t packed, bool deflated);
    void deleting(std::string_view name);
    void totals(std::uint64_t original, std::uint64_t packed);
    /// @param text  with what parts it from the name
    void warning(std::string_view text, std::string_view name);
    /// A warning whose name comes first.
    void warningOf(std::string_view name, std::string_view text);
    /// @param cause   kOk, or what the system answered: it is told first
    /// @param detail  UTF-8
    void error(std::int32_t result, std::string_view detail, ReturnCode cause);

    /// A member is done. @return whether to go on
    [[nodiscard]] bool service(std::string_view name, std::uint64_t size);
    /// Asks for a password twice. @param name  of the archive
    /// @return kOk; zip_abi::result::kInterrupted when the user gave none; kParameters for an empty one, and for two
    ///         that differ: `detail` tells which
    [[nodiscard]] std::int32_t password(std::string_view name, std::string& password, std::string& detail);
    /// Has the user change a comment. @param comment  bytes as the archive has them, or is to have
    void comment(std::string& comment);

    /// In the form of the caller's texts.
    [[nodiscard]] std::string encoded(std::string_view utf8) const;

private:
    void print(std::string_view text);

    zip_abi::Callbacks callbacks_;
    const TextCodec& codec_;
};

/// Per cent that packing saved, as the texts have it: 0 when nothing was.
unsigned savedPerCent(std::uint64_t original, std::uint64_t packed) noexcept;

/// The text of a result, without a name; empty for those that have none.
std::string_view textOf(std::int32_t result) noexcept;

}  // namespace archiver::infozip
