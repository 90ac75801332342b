#pragma once
#include <cstdint>
#include <fstream>
#include <string>

#include "archivers/commands/command.h"

namespace archiver {

/// The output of the library for LZH. Lines end with CR LF.
class LhaTexts final : public CommandTexts {
public:
    void begin(const Command& command, std::string& out) override;
    void member(const MemberReport& report, std::string& out) override;
    void row(const Member& member, std::string& out) override;
    void printed(const Member& member, std::string& out) override;
    void packed(const PackedMember& member, std::string& out) override;
    void deleted(const Member& member, std::string& out) override;
    void warned(PackWarning warning, std::string_view name, std::string& out) override;
    void end(const Command& command, const UnpackSummary& summary, std::string& out) override;

private:
    Command::Action action_ = Command::Action::kUnpack;
    std::ofstream log_;  ///< takes a copy; open when the command has one
    bool told_ = true;   ///< lines for what went well
    std::uint64_t rows_ = 0;
    std::uint64_t originalSize_ = 0;
    std::uint64_t packedSize_ = 0;
};

}  // namespace archiver
