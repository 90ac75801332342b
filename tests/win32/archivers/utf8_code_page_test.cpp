#include <gtest/gtest.h>
#include <windows.h>

TEST(Utf8CodePage, IsThatOfThisProcess) { EXPECT_EQ(::GetACP(), static_cast<UINT>(CP_UTF8)); }
