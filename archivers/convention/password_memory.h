#pragma once
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>

#include "archivers/formats/archive_reader.h"

namespace archiver {

/// What tells one archive file from another, and from what it was before it changed.
struct ArchiveStamp {
    std::filesystem::path file;
    std::uint64_t size = 0;
    std::optional<Moment> written;
};

/// The password that opened an archive, so that the next command for the same archive does not ask again. One archive
/// at a time; the password of another one is forgotten with it. Several threads may call at once.
class PasswordMemory {
public:
    PasswordMemory() = default;
    PasswordMemory(const PasswordMemory&) = delete;
    PasswordMemory& operator=(const PasswordMemory&) = delete;
    ~PasswordMemory();

    /// @return UTF-8; empty when none is known
    [[nodiscard]] std::string find(const ArchiveStamp& archive);
    void keep(const ArchiveStamp& archive, const std::string& utf8);

private:
    void forget() noexcept;

    std::mutex mutex_;
    ArchiveStamp archive_;
    std::string password_;
};

/// The password that a caller gave for its commands. Several threads may call at once.
class GivenPassword {
public:
    GivenPassword() = default;
    GivenPassword(const GivenPassword&) = delete;
    GivenPassword& operator=(const GivenPassword&) = delete;
    ~GivenPassword();

    /// @return UTF-8; empty when none is given
    [[nodiscard]] std::string get();
    void set(const std::string& utf8);

private:
    std::mutex mutex_;
    std::string password_;
};

/// Overwrites a text's bytes and empties it.
void wipePassword(std::string& text) noexcept;

}  // namespace archiver
