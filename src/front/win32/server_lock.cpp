#include "front/win32/server_lock.h"

#include <atomic>

namespace tovar {
namespace {

std::atomic<long> locks = 0;

}  // namespace

ServerLock::ServerLock() noexcept { lock(); }
ServerLock::~ServerLock() { unlock(); }
void ServerLock::lock() noexcept { ++locks; }
void ServerLock::unlock() noexcept { --locks; }
bool ServerLock::any() noexcept { return locks != 0; }

}  // namespace tovar
