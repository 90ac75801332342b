#pragma once
#include <cstddef>

namespace archiver::test {

/// How often this program took memory by `new`, in all threads.
std::size_t allocationCount() noexcept;

}  // namespace archiver::test
