// A full disk and a folder without rights, through the exported functions.

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <iostream>

#include "formats/support/tar_builder.h"
#include "formats/support/zip_builder.h"
#include "languages/support/library_run.h"

namespace archiver::testing {
namespace {

constexpr int kCannotTry = 77;

/// Runs a part of a test in a process of its own, whose rights and file systems it may change.
/// @return what `part` answers: 0 when all was right, kCannotTry, or the number of what was wrong
int inOtherProcess(const std::function<int()>& part) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(part());
    int status = -1;
    if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

/// A file system of 64 KiB in memory, in name spaces of this process alone: needs no rights where users may have such.
bool mountSmallDisk(const std::filesystem::path& folder) {
    if (::unshare(CLONE_NEWNS) != 0 && ::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("none", folder.c_str(), "tmpfs", 0, "size=64k,nr_inodes=20") == 0;
}

/// A gzip file of stored blocks. Source: RFC 1952
std::string gzipStored(const std::string& bytes) {
    return std::string("\x1F\x8B\x08\0\0\0\0\0\0\xFF", 10) + test::ZipBuilder::deflateStored(bytes) +
           test::ZipBuilder::number32(test::ZipBuilder::crcOf(bytes)) + test::ZipBuilder::number32(bytes.size());
}

constexpr std::int32_t kDiskIsFull = 0x8005;
constexpr std::int32_t kNoRight = 0x8006;

/// Tells what differs: the process has no other way to.
bool matches(const Files& files, const Files& expected) {
    for (const auto& [name, content] : files) {
        if (expected.count(name) == 0 || expected.at(name) != content) {
            std::cerr << name << " with " << content.size() << " bytes\n";
        }
    }
    return files == expected;
}

struct DiskCase {
    const char* title;
    const char* module;
    const char* prefix;
    const char* line;
    const char* archive;
    Files files;  ///< that have room, or are unpacked before it is known that there is none
};

class FullDisk : public ::testing::TestWithParam<DiskCase> {};

TEST_P(FullDisk, EndsTheCommandAndKeepsWhatWasThere) {
    LibraryRun run(GetParam().module, GetParam().prefix, "full-disk");
    run.archive = fixture(GetParam().archive);
    std::filesystem::create_directory(run.target());
    const int result = inOtherProcess([&] {
        if (!mountSmallDisk(run.target())) return kCannotTry;
        run.scratch.write("out/mine", "mine");
        if (run(GetParam().line) != kDiskIsFull) return 1;
        Files expected = GetParam().files;
        expected["mine"] = "mine";
        if (run.text().find("rror") == std::string::npos) return 2;
        return matches(run.unpacked(), expected) ? 0 : 3;
    });
    if (result == kCannotTry) GTEST_SKIP() << "no small file system may be mounted here";
    EXPECT_EQ(result, 0);
}

// The archives hold 300,000 bytes and more, which their headers say: it is known before the first byte.
INSTANTIATE_TEST_SUITE_P(Libraries, FullDisk,
                         ::testing::Values(DiskCase{"Arj", "UnArj32j", "Unarj", "x ARC OUT", "arj/methods.arj", {}},
                                           DiskCase{
                                               "Zip", "UnZip32", "UnZip", "-x -o ARC OUT", "samples/welcome.zip", {}}),
                         [](const auto& each) { return std::string(each.param.title); });

// What a compressed tar holds is not known before its end, so that the disk fills on the way.
TEST(FullDiskOnTheWay, KeepsWhatHadRoom) {
    LibraryRun run("Tar32", "Tar", "full-disk");
    run.archive = run.scratch
                      .write("a.tar.gz", gzipStored(test::tarMember("first", std::string(20'000, '1')) +
                                                    test::tarMember("mine", std::string(100'000, '2')) +
                                                    test::tarMember("last", "3") + test::tarEnd()))
                      .string();
    std::filesystem::create_directory(run.target());
    const int result = inOtherProcess([&] {
        if (!mountSmallDisk(run.target())) return kCannotTry;
        run.scratch.write("out/mine", "mine");
        if (run("-xvfo ARC OUT") != kDiskIsFull) return 1;
        if (run.text().find("mine : TAR32 Error(0x8005)") == std::string::npos) return 2;
        return matches(run.unpacked(), {{"first", std::string(20'000, '1')}, {"mine", "mine"}}) ? 0 : 3;
    });
    if (result == kCannotTry) GTEST_SKIP() << "no small file system may be mounted here";
    EXPECT_EQ(result, 0);
}

// Nobody asks beforehand: several threads write until one of them finds no room.
TEST(FullDiskOnTheWay, LeavesOnlyWholeFiles) {
    LibraryRun run("UnArj32j", "Unarj", "full-disk");
    run.archive = fixture("arj/methods.arj");
    const std::map<std::string, std::size_t> sizes = {{"mine", 4},
                                                      {"method1/novel.txt", 16004},
                                                      {"method2/main.c", 1160},
                                                      {"method4/main.c", 1160},
                                                      {"method4/novel.txt", 12005},
                                                      {"stored/readme.txt", 29},
                                                      {"stored/empty.txt", 0}};
    std::filesystem::create_directory(run.target());
    const int result = inOtherProcess([&] {
        if (!mountSmallDisk(run.target())) return kCannotTry;
        run.scratch.write("out/mine", "mine");
        if (run("x -y+ ARC OUT") != kDiskIsFull) return 1;
        if (run.text().find("Extracting method3\\zeros.bin   there is not enough room on the disk") ==
            std::string::npos) {
            return 2;
        }
        const Files files = run.unpacked();
        if (files.count("mine") == 0) return 3;
        for (const auto& [name, content] : files) {
            if (name.ends_with('/')) continue;
            if (sizes.count(name) == 0 || sizes.at(name) != content.size()) return 4;
        }
        return 0;
    });
    if (result == kCannotTry) GTEST_SKIP() << "no small file system may be mounted here";
    EXPECT_EQ(result, 0);
}

TEST(ReadOnlyFolder, IsTold) {
    constexpr uid_t kNobody = 65534;
    LibraryRun run("UnZip32", "UnZip", "read-only");
    run.archive = run.scratch.write("a.zip", test::ZipBuilder().add({.name = "new", .content = "1"}).build()).string();
    run.scratch.write("out/mine", "mine");
    ::chmod(run.scratch.path().c_str(), 0755);
    ::chmod(run.target().c_str(), 0555);
    const int result = inOtherProcess([&] {
        if (::geteuid() == 0 && ::seteuid(kNobody) != 0) return kCannotTry;
        if (run("-x -o ARC OUT") != kNoRight) return 1;
        if (run.text().find("error:  new  ") == std::string::npos) return 2;
        return run.unpacked() == Files{{"mine", "mine"}} ? 0 : 3;
    });
    ::chmod(run.target().c_str(), 0755);
    if (result == kCannotTry) GTEST_SKIP() << "this user cannot become another";
    EXPECT_EQ(result, 0);
}

}  // namespace
}  // namespace archiver::testing
