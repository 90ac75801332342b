#include "shell/win32/message_breather.h"

#include "shell/win32/pending_messages.h"

namespace tovar {
namespace {

constexpr std::chrono::milliseconds kInterval{20};

}  // namespace

// Work that follows close upon other work does not begin a new interval.
void MessageBreather::begin() {
    const auto now = Clock::now();
    if (now - last_ > kInterval) last_ = now;
}

bool MessageBreather::breathe() {
    if (Clock::now() - last_ < kInterval) return true;
    runPendingMessages();
    last_ = Clock::now();
    return true;
}

}  // namespace tovar
