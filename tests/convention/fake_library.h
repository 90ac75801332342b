#pragma once
#include <gtest/gtest.h>

#include "archivers/convention/library_core.h"
#include "convention/fake_archive.h"

namespace archiver::testing {

inline constexpr LibraryDescription kFakeLibrary{
    .prefix = "Fake", .version = 123, .subVersion = 7, .open = &FakeDisk::open};

/// A library over fake archives, with one of three members on the disk.
class LibraryTest : public ::testing::Test {
protected:
    LibraryTest() : archive(disk.add("a.zip")) {
        archive.members = {file("docs/"), file("docs/a.txt"), file("b.txt")};
        archive.members[0].member.attributes = attribute::kFolder;
    }

    ArchiveHandle open(const char* name = "a.zip") { return library.openArchive(nullptr, name, 0); }

    /// Handles that no archive has: none, an invented one, a closed one.
    std::vector<ArchiveHandle> badHandles() {
        const ArchiveHandle closed = open();
        EXPECT_EQ(library.closeArchive(closed), kOk);
        return {nullptr, reinterpret_cast<ArchiveHandle>(std::uintptr_t{0xDEADBEEF}), closed};
    }

    FakeDisk disk;
    FakeArchive& archive;
    LibraryCore library{kFakeLibrary, utf8Codec()};
    IndividualInfo info{};
};

}  // namespace archiver::testing
