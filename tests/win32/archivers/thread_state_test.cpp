#include <gtest/gtest.h>
#include <windows.h>

#include "archivers/loaded_library.h"

namespace archiver {
namespace {

using testing::LoadedLibrary;

class ThreadState : public ::testing::TestWithParam<std::pair<const char*, const char*>> {};

// While a library looks for a file the system asks for no disk; what the caller set for itself is back afterwards.
TEST_P(ThreadState, IsTheCallersAgainAfterACall) {
    const LoadedLibrary library(GetParam().first, GetParam().second);
    ASSERT_TRUE(library.loaded());
    DWORD before = 0;
    ASSERT_TRUE(::SetThreadErrorMode(SEM_NOGPFAULTERRORBOX, &before));
    for (const std::string& file : {std::string("A:\\no disk.zip"), std::string("no such file"),
                                    testing::sample("listing.zip"), testing::sample("listing.tar")}) {
        library.call<fn::CheckArchive>("CheckArchive", file.c_str(), 2);
        EXPECT_EQ(::GetThreadErrorMode(), static_cast<DWORD>(SEM_NOGPFAULTERRORBOX)) << file;
    }
    ::SetThreadErrorMode(before, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Libraries, ThreadState,
                         ::testing::Values(std::pair{"UnZip32", "UnZip"}, std::pair{"Tar32", "Tar"}),
                         [](const auto& each) { return std::string(each.param.first); });

}  // namespace
}  // namespace archiver
