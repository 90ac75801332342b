#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "archivers/commands/command.h"

namespace archiver {

/// What differs between the libraries that word their output by MemberLog.
struct MemberLogStyle {
    bool checksums = true;  ///< rows of a listing end with the CRC-32
    /// In front of the archive's name, in the first line.
    std::string_view unpacking = "Extracting from ";
    std::string_view testing = "Testing ";
    std::string_view packing = "Creating ";
};

/// The output of libraries whose members' lines begin with what was done, "Extracting NAME   OK", and whose listings
/// are tables with one row a member. Names have "\" between their folders. Lines end with CR LF.
///
/// A quiet command's output has lines for what went wrong only. With kPrint nothing but the members' bytes and what
/// went wrong is given, so that a caller gets a member as it is.
class MemberLog final : public CommandTexts {
public:
    explicit MemberLog(const MemberLogStyle& style) : style_(style) {}

    void begin(const Command& command, std::string& out) override;
    void member(const MemberReport& report, std::string& out) override;
    void row(const Member& member, std::string& out) override;
    void printed(const Member& member, std::string& out) override;
    void packed(const PackedMember& member, std::string& out) override;
    void warned(PackWarning warning, std::string_view name, std::string& out) override;
    void end(const Command& command, const UnpackSummary& summary, std::string& out) override;

private:
    MemberLogStyle style_;
    bool lists_ = false;
    bool namesAbove_ = false;  ///< a row's name has a line of its own
    bool testing_ = false;
    bool told_ = true;  ///< lines for what went well
    std::uint64_t rows_ = 0;
    std::uint64_t leftOut_ = 0;  ///< sources that are not packed
};

/// A member's name for a line of text, with "\" between its folders.
[[nodiscard]] std::string backslashedName(std::string_view utf8Name);

/// "Error(0x8017): a header is damaged", with its line end: why a run ended that no member's line tells about. Nothing
/// for a run that came to its end.
void appendRunError(const UnpackSummary& summary, std::string& out);

}  // namespace archiver
