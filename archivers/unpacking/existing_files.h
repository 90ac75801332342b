#pragma once
#include <cstdint>
#include <filesystem>
#include <optional>

#include "archivers/unpacking/target_system.h"
#include "archivers/unpacking/unpack_events.h"
#include "archivers/unpacking/unpack_options.h"

namespace archiver {

/// When a member was written, in UTC, from whichever of its times it has.
std::optional<Moment> writtenOf(const Member& member) noexcept;

/// Decides about a member for whose file something, or nothing, is there already.
class ExistingFileRules {
public:
    enum class Step : std::uint8_t { kWrite, kReplace, kNumber, kSkip, kCancel };
    struct Decision {
        Step step = Step::kWrite;
        ReturnCode code = kOk;  ///< why it is skipped
    };

    ExistingFileRules(const UnpackOptions& options, UnpackEvents& events) : options_(options), events_(events) {}

    /// @param file      whole path, for the question
    /// @param existing  a file or a link
    Decision decide(const Member& member, const std::filesystem::path& file,
                    const std::optional<ExistingItem>& existing);

    /// Whether the member is passed over without a question.
    [[nodiscard]] std::optional<ReturnCode> skipOf(const Member& member,
                                                   const std::optional<ExistingItem>& existing) const;

private:
    const UnpackOptions& options_;
    UnpackEvents& events_;
    std::optional<ReplaceAnswer> remembered_;  ///< kAll or kNone
};

}  // namespace archiver
