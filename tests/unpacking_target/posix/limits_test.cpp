#include <gtest/gtest.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <functional>
#include <string>

#include "archivers/unpacking/posix/error_codes.h"
#include "unpacking_target/support/scratch.h"

namespace archiver {
namespace {

using test::openTarget;
using test::Scratch;
using test::writeFile;

using Names = std::vector<std::string>;

constexpr int kCannotTry = 77;

/// Runs a part of a test in a process of its own, whose limits and rights it may change.
/// @return what `part` answers: 0 when all was right, kCannotTry, or the number of what was wrong
int inOtherProcess(const std::function<int()>& part) {
    const pid_t child = ::fork();
    if (child == 0) {
        const int result = part();
        ::_exit(result);
    }
    int status = -1;
    if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

TEST(PosixLimits, AFileThatMayNotGrowFailsAlone) {
    const Scratch scratch;
    scratch.write("old", "old");
    const auto target = openTarget(scratch.path());
    const int result = inOtherProcess([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{100'000, 100'000};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return kCannotTry;
        const std::string bytes(60'000, 'b');
        for (const char* name : {"new", "old"}) {
            std::unique_ptr<OutputFile> file;
            if (target->createFile(name, 0, true, file) != kOk) return 1;
            if (file->write(bytes) != kOk) return 2;
            if (file->write(bytes) != kCannotWrite) return 3;
        }
        return writeFile(*target, "small", bytes) == kOk ? 0 : 4;
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(scratch.read("old"), "old");
    EXPECT_EQ(scratch.names(), (Names{"old", "small"}));
}

// A file system of 64 KiB in memory, in name spaces of this process alone: needs no rights where users may have such.
TEST(PosixLimits, AFullDiskIsTold) {
    const Scratch scratch;
    const int result = inOtherProcess([&] {
        if (::unshare(CLONE_NEWNS) != 0 && ::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return kCannotTry;
        if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("none", scratch.path().c_str(), "tmpfs", 0, "size=64k,nr_inodes=6") != 0) {
            return kCannotTry;
        }
        scratch.write("old", "old");
        const auto target = openTarget(scratch.path());
        if (!target || target->freeSpace().value_or(1 << 20) > 65'536) return 1;
        const std::string bytes(40'000, 'b');
        for (const char* name : {"new", "old"}) {
            std::unique_ptr<OutputFile> file;
            if (target->createFile(name, 1 << 30, true, file) != kOk) return 2;
            if (file->write(bytes) != kOk) return 3;
            if (file->write(bytes) != kDiskSpace) return 4;
        }
        if (scratch.names() != Names{"old"} || scratch.read("old") != "old") return 5;
        // No room for names either: the root, "old", and four more.
        bool made = false;
        for (const char* name : {"a", "b", "c", "d"}) {
            if (target->makeFolder(name, made) != kOk) return 6;
        }
        if (target->makeFolder("e", made) != kDiskSpace || made) return 7;
        if (writeFile(*target, "f", "") != kDiskSpace) return 8;
        return target->makeSymbolicLink("g", "a", false) == kDiskSpace ? 0 : 9;
    });
    if (result == kCannotTry) GTEST_SKIP() << "no small file system may be mounted here";
    EXPECT_EQ(result, 0);
}

TEST(PosixLimits, AFolderThatMayNotBeWrittenIsTold) {
    const Scratch scratch;
    scratch.makeFolder("kept");
    scratch.write("kept/file", "old");
    ::chmod(scratch.path().c_str(), 0755);
    ::chmod((scratch.path() / "kept").c_str(), 0555);
    const int result = inOtherProcess([&] {
        if (::geteuid() == 0 && ::seteuid(65534) != 0) return kCannotTry;
        const auto target = openTarget(scratch.path() / "kept");
        bool made = false;
        if (!target) return 1;
        if (writeFile(*target, "new", "x") != kReadOnly) return 2;
        if (writeFile(*target, "file", "x", true) != kReadOnly) return 3;
        if (target->makeFolder("folder", made) != kMakeDirectory) return 4;
        std::unique_ptr<TargetFolder> other;
        return systemTarget().open(scratch.path() / "kept" / "target", other) == kMakeDirectory ? 0 : 5;
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(scratch.read("kept/file"), "old");
    ::chmod((scratch.path() / "kept").c_str(), 0755);
}

TEST(PosixLimits, AFolderThatMayNotBeReadIsWritten) {
    const Scratch scratch;
    ::chmod(scratch.path().c_str(), 0777);
    ASSERT_EQ(::mkdir((scratch.path() / "d").c_str(), 0777), 0);
    ::chmod((scratch.path() / "d").c_str(), 0333);
    const int result = inOtherProcess([&] {
        if (::geteuid() == 0 && ::seteuid(65534) != 0) return kCannotTry;
        const auto target = openTarget(scratch.path());
        return writeFile(*target, "d/x", "x") == kOk ? 0 : 1;
    });
    ::chmod((scratch.path() / "d").c_str(), 0777);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(scratch.read("d/x"), "x");
}

TEST(PosixLimits, ModesFollowTheUsersMask) {
    const Scratch scratch;
    const int result = inOtherProcess([&] {
        ::umask(027);
        const auto target = openTarget(scratch.path());
        ItemProperties kept;
        kept.attributes = attribute::kReadOnly;
        bool made = false;
        if (writeFile(*target, "file", "x") != kOk || writeFile(*target, "kept", "x", false, kept) != kOk) return 1;
        return target->makeFolder("folder", made) == kOk ? 0 : 2;
    });
    ASSERT_EQ(result, 0);
    const auto modeOf = [&](const char* name) {
        struct stat facts {};
        EXPECT_EQ(::stat((scratch.path() / name).c_str(), &facts), 0);
        return facts.st_mode & 07777;
    };
    EXPECT_EQ(modeOf("file"), 0640U);
    EXPECT_EQ(modeOf("kept"), 0440U);
    EXPECT_EQ(modeOf("folder"), 0750U);
}

struct ErrorCase {
    int error;
    ReturnCode creating, folder, writing, linking;
};
constexpr std::array kErrors = {
    ErrorCase{ENOSPC, kDiskSpace, kDiskSpace, kDiskSpace, kDiskSpace},
    ErrorCase{EDQUOT, kDiskSpace, kDiskSpace, kDiskSpace, kDiskSpace},
    ErrorCase{EEXIST, kSameNameFile, kMakeDirectory, kSameNameFile, kSameNameFile},
    ErrorCase{EISDIR, kSameNameFile, kMakeDirectory, kSameNameFile, kSameNameFile},
    ErrorCase{EROFS, kReadOnly, kMakeDirectory, kCannotWrite, kReadOnly},
    ErrorCase{EACCES, kReadOnly, kMakeDirectory, kCannotWrite, kReadOnly},
    ErrorCase{EPERM, kReadOnly, kMakeDirectory, kCannotWrite, kNotSupport},
    ErrorCase{EOPNOTSUPP, kFileOpen, kMakeDirectory, kCannotWrite, kNotSupport},
    ErrorCase{EMLINK, kFileOpen, kMakeDirectory, kCannotWrite, kNotSupport},
    ErrorCase{EXDEV, kFileOpen, kMakeDirectory, kCannotWrite, kNotSupport},
    ErrorCase{ENAMETOOLONG, kLongFileName, kLongFileName, kCannotWrite, kLongFileName},
    ErrorCase{EFBIG, kFileOpen, kMakeDirectory, kCannotWrite, kFileOpen},
    ErrorCase{EIO, kFileOpen, kMakeDirectory, kCannotWrite, kFileOpen},
    ErrorCase{ELOOP, kFileOpen, kMakeDirectory, kCannotWrite, kFileOpen},
    ErrorCase{ENOTDIR, kFileOpen, kMakeDirectory, kCannotWrite, kFileOpen},
    ErrorCase{ENOENT, kFileOpen, kMakeDirectory, kCannotWrite, kFileOpen},
    ErrorCase{EMFILE, kFileOpen, kMakeDirectory, kCannotWrite, kFileOpen},
};

TEST(PosixErrors, BecomeCodes) {
    for (const ErrorCase& each : kErrors) {
        EXPECT_EQ(codeOfCreating(each.error), each.creating) << each.error;
        EXPECT_EQ(codeOfFolder(each.error), each.folder) << each.error;
        EXPECT_EQ(codeOfWriting(each.error), each.writing) << each.error;
        EXPECT_EQ(codeOfLinking(each.error), each.linking) << each.error;
    }
}

}  // namespace
}  // namespace archiver
