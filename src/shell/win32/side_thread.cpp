#include "shell/win32/side_thread.h"

namespace tovar {
namespace {

constexpr DWORD kBetweenTries = 20;  // milliseconds: the work may be about to wait for the next thing

}  // namespace

SideThread::SideThread(std::function<void()> work) : work_(std::move(work)) {
    thread_.reset(::CreateThread(nullptr, 0, &SideThread::run, this, 0, nullptr));
    if (!thread_) run(this);
}

SideThread::~SideThread() {
    while (!isDone()) {
        interrupt();
        if (isDone(kBetweenTries)) break;
    }
}

bool SideThread::isDone(DWORD milliseconds) const noexcept {
    return !thread_ || ::WaitForSingleObject(thread_.get(), milliseconds) != WAIT_TIMEOUT;
}

void SideThread::interrupt() noexcept {
    if (thread_) ::CancelSynchronousIo(thread_.get());
}

DWORD WINAPI SideThread::run(void* self) noexcept {
    try {
        static_cast<SideThread*>(self)->work_();
    } catch (...) {
        // The answer remains the one for a failure.
    }
    return 0;
}

}  // namespace tovar
