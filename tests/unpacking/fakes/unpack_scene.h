#pragma once
#include <string>
#include <vector>

#include "archivers/unpacking/unpacker.h"
#include "unpacking/fakes/fake_reader.h"
#include "unpacking/fakes/fake_target.h"
#include "unpacking/fakes/recording_events.h"

namespace archiver::test {

#ifdef _WIN32
inline constexpr const char* kFakeTargetPath = "T:\\target";
#else
inline constexpr const char* kFakeTargetPath = "/target";
#endif

/// An archive, a target and a user of a test's own.
struct UnpackScene {
    explicit UnpackScene(std::vector<FakeMember> members) : reader(std::move(members)) {
        options.target = kFakeTargetPath;
        options.existing = ExistingFiles::kReplace;
        options.threads = 1;
    }

    FakeReader reader;
    FakeTarget target;
    RecordingEvents events{kFakeTargetPath};
    UnpackOptions options;
    std::string password;
    MemberFilter chosen;
    UnpackSummary summary;

    ReturnCode unpack() {
        summary = unpackMembers(reader, chosen, options, password, target, events);
        return summary.code;
    }
    ReturnCode test() {
        summary = testMembers(reader, chosen, password, events);
        return summary.code;
    }
};

using Lines = std::vector<std::string>;

}  // namespace archiver::test
