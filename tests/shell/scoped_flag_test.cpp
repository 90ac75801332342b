#include "shell/scoped_flag.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tovar {
namespace {

TEST(ScopedFlag, IsSetWhileItLives) {
    bool flag = false;
    {
        const ScopedFlag scope(flag);
        EXPECT_TRUE(flag);
    }
    EXPECT_FALSE(flag);
}

TEST(ScopedFlag, IsTakenBackByAnException) {
    bool flag = false;
    try {
        const ScopedFlag scope(flag);
        throw std::runtime_error("scripted");
    } catch (const std::runtime_error&) {
        EXPECT_FALSE(flag);
    }
    EXPECT_FALSE(flag);
}

}  // namespace
}  // namespace tovar
