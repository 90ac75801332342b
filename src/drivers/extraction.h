#pragma once
#include <cstdint>
#include <functional>
#include <string>

#include "shell/window_handle.h"

namespace tovar {

/// One extraction, for the driver of the archive's kind.
struct ExtractRequest {
    WindowHandle owner = nullptr;  ///< of the library's windows
    std::wstring command = {};     ///< extractCommand(): the kind's words, blanks and all
    std::wstring archive = {};     ///< full path
    std::wstring folder = {};      ///< what is unpacked goes below it
    /// "*.*", a pattern, one member's path, or "@" and the path of a list file. Goes over as it is: who builds it
    /// quotes it.
    std::wstring members = {};
    bool keepExisting = false;  ///< for kinds whose libraries have no command line, where no word can say it
};

/// What came of it.
struct ExtractResult {
    std::int32_t code = 0;       ///< the library's; 0 = success
    std::wstring message = {};   ///< for the user; empty on success, and where the driver has shown its own
    std::wstring text = {};      ///< what the library wrote, also about a failure; line ends as it writes them
    bool cut = false;            ///< the text was longer
    bool failed = false;         ///< a member, or all of it; skipped ones do not count
    bool nothingChosen = false;  ///< no member is called so
};

/// How far an extraction is, as far as a library tells it.
struct ExtractProgress {
    enum class State { Begin, Working, End, Open, Copy };
    State state = State::Working;
    std::wstring member = {};
    std::wstring file = {};     ///< where it goes
    std::uint32_t size = 0;     ///< of the member, bytes; the convention has no more than 32 bits for it
    std::uint32_t written = 0;  ///< bytes
    std::uint64_t done = 0;     ///< of all members, bytes
    std::uint64_t total = 0;    ///< likewise; 0 where the library does not tell
};

/// @return false to cancel. Must not throw; an exception cancels.
using ExtractProgressSink = std::function<bool(const ExtractProgress& progress)>;

}  // namespace tovar
