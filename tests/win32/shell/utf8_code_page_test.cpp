#include <gtest/gtest.h>
#include <windows.h>

namespace {

TEST(Utf8CodePage, IsTheProcesssOwn) { EXPECT_EQ(::GetACP(), static_cast<UINT>(CP_UTF8)); }

}  // namespace
