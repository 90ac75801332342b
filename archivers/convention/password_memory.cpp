#include "archivers/convention/password_memory.h"

namespace archiver {

namespace {

bool isSame(const ArchiveStamp& one, const ArchiveStamp& other) {
    return one.file == other.file && one.size == other.size && one.written.has_value() && other.written.has_value() &&
           one.written->seconds == other.written->seconds && one.written->nanoseconds == other.written->nanoseconds;
}

}  // namespace

PasswordMemory::~PasswordMemory() { forget(); }

std::string PasswordMemory::find(const ArchiveStamp& archive) {
    const std::lock_guard lock(mutex_);
    return isSame(archive_, archive) ? password_ : std::string();
}

void PasswordMemory::keep(const ArchiveStamp& archive, const std::string& utf8) {
    const std::lock_guard lock(mutex_);
    forget();
    archive_ = archive;
    password_ = utf8;
}

void PasswordMemory::forget() noexcept { wipePassword(password_); }

GivenPassword::~GivenPassword() { wipePassword(password_); }

std::string GivenPassword::get() {
    const std::lock_guard lock(mutex_);
    return password_;
}

void GivenPassword::set(const std::string& utf8) {
    const std::lock_guard lock(mutex_);
    wipePassword(password_);
    password_ = utf8;
}

void wipePassword(std::string& text) noexcept {
    // Through a pointer to volatile, or the compiler leaves out what nobody reads.
    volatile char* const bytes = text.data();
    for (std::size_t at = 0; at < text.size(); ++at) bytes[at] = '\0';
    text.clear();
}

}  // namespace archiver
