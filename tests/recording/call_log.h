#pragma once
#include <cstdint>
#include <string>
#include <type_traits>

#include "recording/files.h"

// The log of a recording archiver library: a text file, named by the environment variable TOVAREX_RECORDING_LOG, to
// which every call adds a line. It holds the function's name and its arguments, each behind a blank: numbers as
// decimals, windows and archives as hexadecimal addresses or "null", texts in double quotes with \xHH for bytes outside
// printable ASCII and for the quote and the backslash. Output arguments are left out.

namespace recording {

/// One line of the log, written when it is complete.
class CallLog {
public:
    CallLog(const char* prefix, const char* function);
    ~CallLog();
    CallLog(const CallLog&) = delete;
    CallLog& operator=(const CallLog&) = delete;

    CallLog& operator<<(const char* text);
    CallLog& operator<<(const void* address);
    template <class Number>
    requires std::is_integral_v<Number> CallLog& operator<<(Number number) {
        line_ += ' ' + std::to_string(number);
        return *this;
    }

private:
    UniqueFile file_;  ///< null when no log is kept
    std::string line_;
};

}  // namespace recording
