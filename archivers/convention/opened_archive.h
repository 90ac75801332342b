#pragma once
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>

#include "archivers/convention/entry_record.h"
#include "archivers/convention/library_description.h"
#include "archivers/convention/wildcard.h"

namespace archiver {

/// One archive between OpenArchive and CloseArchive: the walk over its members and what was found so far.
class OpenedArchive {
public:
    /// @param mode  flags of OpenArchive; those that choose what patterns are compared with are heeded
    OpenedArchive(std::unique_ptr<ArchiveReader> reader, std::filesystem::path file, std::uint32_t mode);

    /// Starts again from the first member, with new patterns and totals of 0.
    /// @return kOk for a member, kNoMoreEntries, or the error that ended the walk
    std::int32_t findFirst(std::string_view utf8Patterns);
    /// @return likewise; kNotSearchMode before findFirst
    std::int32_t findNext();

    [[nodiscard]] const ArchiveFacts& facts() const { return reader_->facts(); }
    [[nodiscard]] const std::filesystem::path& file() const noexcept { return file_; }

    /// The member that the last search gave; null before the first search and behind the last member.
    [[nodiscard]] const Member* current() const noexcept { return state_ == State::kOnMember ? &member_ : nullptr; }
    [[nodiscard]] bool searched() const noexcept { return state_ != State::kNotSearched; }

    /// Totals of the members found so far; at most 2^64 - 1.
    [[nodiscard]] std::uint64_t originalTotal() const noexcept { return originalTotal_; }
    [[nodiscard]] std::uint64_t packedTotal() const noexcept { return packedTotal_; }

private:
    enum class State : std::uint8_t { kNotSearched, kOnMember, kEnded };
    std::int32_t end(std::int32_t code) noexcept;

    std::unique_ptr<ArchiveReader> reader_;
    std::filesystem::path file_;
    PatternScope scope_;
    WildcardSet patterns_;
    Member member_;
    State state_ = State::kNotSearched;
    std::int32_t endCode_ = kOk;  ///< what further searches answer
    std::uint64_t originalTotal_ = 0;
    std::uint64_t packedTotal_ = 0;
};

}  // namespace archiver
