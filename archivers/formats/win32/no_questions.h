#pragma once
#include <windows.h>

namespace archiver {

/// Keeps the system from asking for a disk in a window while it lives; the calling thread only.
class NoQuestions {
public:
    NoQuestions() noexcept { ::SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &before_); }
    ~NoQuestions() { ::SetThreadErrorMode(before_, nullptr); }
    NoQuestions(const NoQuestions&) = delete;
    NoQuestions& operator=(const NoQuestions&) = delete;

private:
    DWORD before_ = 0;
};

}  // namespace archiver
