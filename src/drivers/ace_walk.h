#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "drivers/ace_library.h"

namespace tovar {

/// An archive of an AceLibrary, gone through from its first member to its last; closed with the object.
class AceWalk {
public:
    /// @param mode  archiver::ace_abi::kOpenList or kOpenExtract
    AceWalk(AceLibrary& library, std::wstring_view archive, std::uint32_t mode);
    ~AceWalk();
    AceWalk(const AceWalk&) = delete;
    AceWalk& operator=(const AceWalk&) = delete;

    [[nodiscard]] bool isOpen() const noexcept { return handle_ != nullptr; }
    /// Of opening, or of the call that ended the walk; kEnd behind the last member.
    [[nodiscard]] std::int32_t code() const noexcept { return code_; }
    [[nodiscard]] bool atEnd() const noexcept { return code_ == archiver::ace_abi::result::kEnd; }

    /// Goes to the next member, past the current one where nothing was done with it.
    bool next();
    [[nodiscard]] const AceMember& member() const noexcept { return member_; }

    /// Tests or unpacks the current member.
    /// @param data  may be empty
    std::int32_t process(std::int32_t operation, std::wstring_view destination = {}, const AceDataSink& data = {});
    std::int32_t setPassword(std::wstring_view password);

    /// Makes the current member one that can be processed once more: the archive is opened anew and gone through up to
    /// it, as not every library stays at a member that it failed to unpack.
    bool again();

private:
    void open();
    void close() noexcept;
    bool step();

    AceLibrary& library_;
    std::wstring archive_;
    std::uint32_t mode_;
    archiver::ArchiveHandle handle_ = nullptr;
    std::int32_t code_ = 0;
    std::uint64_t members_ = 0;  ///< up to and with the current one
    bool processed_ = true;      ///< the library wants a header read next
    AceMember member_;
};

}  // namespace tovar
