#include <gtest/gtest.h>

#include <windows.h>

#include <exception>

#include "win32/system/support/staged_program.h"

namespace {

/// Long tests that would only say the same again.
constexpr const char* kSameInEveryCodePage =
    "-ManySessions.*:LargeArchive.*:ResourceMarks.*:*/Running.*:Cancelled.*:BadInput.*:OpenMember.*:*/RealExtraction.*";

}  // namespace

int main(int count, char** arguments) {
    if (!tovar::test::staged::isStaged()) {
        try {
            return tovar::test::staged::runCopy();
        } catch (const std::exception& error) {
            std::fprintf(stderr, "the tests have no folder of their own: %s\n", error.what());
            return 1;
        }
    }
    if (::GetACP() == 932) testing::GTEST_FLAG(filter) = kSameInEveryCodePage;
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
