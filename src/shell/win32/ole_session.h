#pragma once
#include <windows.h>
// windows.h first
#include <ole2.h>

namespace tovar {

/// Keeps OLE ready on its thread, whatever the host does with it.
class OleSession {
public:
    OleSession() = default;
    ~OleSession() {
        if (started_) ::OleUninitialize();
    }
    OleSession(const OleSession&) = delete;
    OleSession& operator=(const OleSession&) = delete;

    /// @return false where the thread cannot have it: drag and drop needs one with a message loop of its own apartment
    bool start() noexcept {
        if (!started_) started_ = SUCCEEDED(::OleInitialize(nullptr));
        return started_;
    }

private:
    bool started_ = false;
};

}  // namespace tovar
