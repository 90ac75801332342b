#pragma once

#ifdef _WIN32
#include <windows.h>
// windows.h first
#include <psapi.h>
#else
#include <sys/resource.h>
#include <time.h>
#endif

namespace bench {

/// Processor time of the calling thread, in milliseconds; 0 when the system does not tell.
inline double processorTimeMs() {
#ifdef _WIN32
    FILETIME created{}, ended{}, kernel{}, user{};
    if (::GetThreadTimes(::GetCurrentThread(), &created, &ended, &kernel, &user) == FALSE) return 0;
    const auto ticks = [](const FILETIME& time) { return time.dwHighDateTime * 4294967296.0 + time.dwLowDateTime; };
    return (ticks(kernel) + ticks(user)) / 10'000;
#else
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_nsec) / 1'000'000;
#endif
}

/// The most physical memory that the process has had so far.
inline double peakMemoryMib() {
#ifdef _WIN32
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    if (::GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters) == FALSE) return 0;
    return static_cast<double>(counters.PeakWorkingSetSize) / (1024 * 1024);
#else
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
#endif
}

}  // namespace bench
