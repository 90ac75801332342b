#pragma once
#include <atomic>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "archivers/convention/library_description.h"
#include "archivers/formats/archive_reader.h"

namespace archiver::testing {

/// What a fake archive holds and how it answers.
struct FakeArchive {
    struct FakeMember {
        Member member;
        ReturnCode readCode = kOk;
    };
    std::vector<FakeMember> members;
    ArchiveFacts facts;
    ReturnCode openCode = kOk;
    ReturnCode endCode = kNoMoreEntries;  ///< what `next` answers behind the last member
    ReturnCode restartCode = kOk;
    bool throwOnNext = false;  ///< std::bad_alloc instead of the last member
};

/// The fake archives of one test by their file names. One at a time; `open` is what a description names.
class FakeDisk {
public:
    FakeDisk();
    FakeDisk(const FakeDisk&) = delete;
    FakeDisk& operator=(const FakeDisk&) = delete;
    ~FakeDisk();

    /// An archive below the current folder, under which a relative name finds it.
    FakeArchive& add(const std::string& utf8Name);
    static OpenResult open(const std::filesystem::path& file);

    int readers = 0;                 ///< open ones
    std::atomic<int> nextCalls = 0;  ///< of all readers
    int readCalls = 0;               ///< of all readers
    std::filesystem::path lastOpened;

private:
    std::map<std::filesystem::path, FakeArchive> archives_;
};

/// A member with an ordinary header; tests change what they look at.
FakeArchive::FakeMember file(const std::string& utf8Name);

}  // namespace archiver::testing
