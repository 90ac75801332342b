#include "front/automation/given_password.h"

#include <gtest/gtest.h>

namespace tovar {
namespace {

TEST(GivenPassword, IsGivenWithoutAQuestion) {
    GivenPassword password;
    EXPECT_EQ(password.ask(nullptr, L"a.zip"), std::nullopt);
    password.give(L"secret");
    EXPECT_EQ(password.ask(nullptr, L"a.zip"), L"secret");
    EXPECT_EQ(password.ask(nullptr, L"a.zip"), L"secret");
}

TEST(GivenPassword, IsGivenOnceWhereAskingAgainMeansThatItIsWrong) {
    GivenPassword password;
    password.giveOnce(L"secret");
    EXPECT_EQ(password.ask(nullptr, L"a.ace"), L"secret");
    EXPECT_EQ(password.ask(nullptr, L"a.ace"), std::nullopt);
}

TEST(GivenPassword, IsForgotten) {
    GivenPassword password;
    password.give(L"secret");
    password.forget();
    EXPECT_EQ(password.ask(nullptr, L"a.zip"), std::nullopt);
}

}  // namespace
}  // namespace tovar
