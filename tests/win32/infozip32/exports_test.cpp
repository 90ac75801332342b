#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "archivers/convention/zip_abi.h"
#include "archivers/module.h"
#include "formats/support/files.h"

namespace archiver {
namespace {

/// What a call of a function by its bare address did.
struct CallResult {
    std::uint32_t answer = 0;
    std::int32_t left = 0;  ///< bytes that the stack is off by; 0 when the function took its arguments off
};

/// Calls as a compiler without a declaration would: the arguments pushed from the last on.
CallResult callByAddress(void* function, const std::vector<std::uint32_t>& arguments) {
    CallResult result;
    auto count = static_cast<std::int32_t>(arguments.size());
    asm volatile(
        "movl %%esp, %%ebx\n"
        "1: decl %%ecx\n"
        "js 2f\n"
        "pushl (%%esi,%%ecx,4)\n"
        "jmp 1b\n"
        "2: call *%%edi\n"
        "movl %%esp, %%edx\n"
        "movl %%ebx, %%esp\n"
        "subl %%ebx, %%edx\n"
        : "=a"(result.answer), "=d"(result.left), "+c"(count)
        : "S"(arguments.data()), "D"(function)
        : "ebx", "memory", "cc");
    return result;
}

std::uint32_t wordOf(const void* pointer) { return reinterpret_cast<std::uint32_t>(pointer); }

std::vector<std::string> messages;
int passwordsAsked = 0;

std::uint32_t ARCHIVER_CALL onMessage(const char* text, std::uint32_t length) {
    messages.emplace_back(text, length);
    return length;
}
std::int32_t ARCHIVER_CALL onComment(char* buffer) {
    std::strcpy(buffer, "by hand");
    return 0;
}
std::int32_t ARCHIVER_CALL onPassword(char* buffer, std::int32_t size, const char*, const char*) {
    ++passwordsAsked;
    EXPECT_GE(size, 16);
    std::strcpy(buffer, "secret");
    return 0;
}
std::int32_t ARCHIVER_CALL onService(const char*, std::uint32_t) { return 0; }

class InfoZipExports : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(library_.loaded());
        messages.clear();
        passwordsAsked = 0;
        folder_.write("a.txt", "contents");
    }
    CallResult call(const char* name, const std::vector<std::uint32_t>& arguments) {
        void* const function = library_.find(name);
        EXPECT_NE(function, nullptr) << name;
        return function == nullptr ? CallResult{} : callByAddress(function, arguments);
    }

    testing::Module library_{"InfoZip32"};
    test::TemporaryFolder folder_;
};

TEST_F(InfoZipExports, TakeTheCommandByValueAndTheirArgumentsOffTheStack) {
    const zip_abi::Callbacks callbacks{&onMessage, &onComment, &onPassword, &onService};
    const CallResult init = call("ZpInit", {wordOf(&callbacks)});
    EXPECT_EQ(init.answer, 1U);
    EXPECT_EQ(init.left, 0);

    const std::string root = folder_.path().string() + "\\";
    alignas(4) char record[128] = {};  // by its offsets, as a caller without our header has it
    const auto put = [&record](std::size_t offset, std::uint32_t value) { std::memcpy(record + offset, &value, 4); };
    put(4, wordOf(root.c_str()));
    put(20, 1);   // encrypt
    put(48, 1);   // verbose
    put(100, 1);  // comment
    record[124] = '9';
    const CallResult options = call("ZpSetOptions", {wordOf(record)});
    EXPECT_EQ(options.answer, 1U);
    EXPECT_EQ(options.left, 0);

    const std::string archive = (folder_.path() / "made.zip").string();
    const char* names[] = {"a.txt", "a.txt"};
    const CallResult made = call("ZpArchive", {2, wordOf(archive.c_str()), wordOf(names)});
    EXPECT_EQ(made.answer, 0U);
    EXPECT_EQ(made.left, 0);
    EXPECT_EQ(passwordsAsked, 2);
    ASSERT_FALSE(messages.empty());
    EXPECT_EQ(messages[0], "  adding: a.txt");
    EXPECT_TRUE(test::readFile(folder_.path() / "made.zip").ends_with("by hand"));
}

TEST_F(InfoZipExports, GiveTheOptionsThroughAHiddenPointer) {
    alignas(4) char record[128] = {};
    record[124] = '3';
    call("ZpSetOptions", {wordOf(record)});
    alignas(4) char answer[128 + 16];
    std::memset(answer, 0x55, sizeof answer);
    const CallResult given = call("ZpGetOptions", {wordOf(answer)});
    EXPECT_EQ(given.answer, wordOf(answer));
    EXPECT_EQ(given.left, 0);
    EXPECT_EQ(answer[124], '3');
    std::uint32_t encryption = 0;
    std::memcpy(&encryption, answer + 112, 4);
    EXPECT_EQ(encryption, 1U);
    EXPECT_EQ(answer[128], 0x55) << "nothing behind the record";
}

TEST_F(InfoZipExports, TellTheirVersion) {
    alignas(4) unsigned char record[60 + 4];
    std::memset(record, 0x55, sizeof record);
    const CallResult told = call("ZpVersion", {wordOf(record)});
    EXPECT_EQ(told.left, 0);
    std::uint32_t size = 0;
    std::memcpy(&size, record, 4);
    EXPECT_EQ(size, 60U);
    EXPECT_EQ(record[48], 2) << "major version";
    EXPECT_EQ(record[60], 0x55);
}

TEST_F(InfoZipExports, RefuseAnArchiveThatSomebodyHoldsAndLeaveOutAFileThatIsLocked) {
    const zip_abi::Callbacks callbacks{&onMessage, &onComment, &onPassword, &onService};
    call("ZpInit", {wordOf(&callbacks)});
    const std::string root = folder_.path().string() + "\\";
    zip_abi::Options options{};
    options.rootFolder = root.c_str();
    options.level = '6';
    call("ZpSetOptions", {wordOf(&options)});
    folder_.write("locked.txt", "locked");
    const HANDLE locked =
        ::CreateFileW((folder_.path() / "locked.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(locked, INVALID_HANDLE_VALUE);
    const std::string archive = (folder_.path() / "made.zip").string();
    const char* names[] = {"a.txt", "a.txt", "locked.txt"};
    EXPECT_EQ(call("ZpArchive", {3, wordOf(archive.c_str()), wordOf(names)}).answer, 18U);
    EXPECT_EQ(messages.back(), "\tzip warning: could not open for reading: locked.txt\n");
    ::CloseHandle(locked);

    const std::string before = test::readFile(folder_.path() / "made.zip");
    const HANDLE held = ::CreateFileW((folder_.path() / "made.zip").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_EQ(call("ZpArchive", {3, wordOf(archive.c_str()), wordOf(names)}).answer, 15U);
    ::CloseHandle(held);
    EXPECT_EQ(test::readFile(folder_.path() / "made.zip"), before);
}

}  // namespace
}  // namespace archiver
