#pragma once
#include <string>
#include <vector>

namespace tovar::test {

/// What happened, in order, over all fakes of a test.
using Journal = std::vector<std::wstring>;

}  // namespace tovar::test
