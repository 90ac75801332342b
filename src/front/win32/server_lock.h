#pragma once

namespace tovar {

/// Keeps the DLL in its process: held by every object, every lock of the class factory and everything that runs on its
/// own, such as windows.
class ServerLock {
public:
    ServerLock() noexcept;
    ~ServerLock();
    ServerLock(const ServerLock&) = delete;
    ServerLock& operator=(const ServerLock&) = delete;

    /// What IClassFactory::LockServer does: a lock without an owner, and its release.
    static void lock() noexcept;
    static void unlock() noexcept;

    [[nodiscard]] static bool any() noexcept;
};

}  // namespace tovar
