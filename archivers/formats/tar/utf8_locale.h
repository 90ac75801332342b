#pragma once
#include <memory>

namespace archiver::tar {

/// Makes libarchive convert names to UTF-8 on the calling thread, while a `Scope` lives; the process's locale stays as
/// it is. In Windows names are converted without any locale, and there is nothing to do. Implemented in win32/ and
/// posix/.
class Utf8Locale {
public:
    Utf8Locale();
    ~Utf8Locale();
    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;

    class Scope {
    public:
        explicit Scope(const Utf8Locale& locale) noexcept;
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        void* previous_ = nullptr;
    };

private:
    void* locale_ = nullptr;  ///< null when the system has no UTF-8 locale: names then pass as far as they can
};

}  // namespace archiver::tar
