// From the dialog to the real library: what the user enters opens the members of an encrypted archive.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "archivers/formats/ace/cipher.h"
#include "archivers/formats/little_endian.h"
#include "browser/win32/dialog_passwords.h"
#include "drivers/archiver_libraries.h"
#include "drivers/un_ace.h"
#include "formats_ace/support/ace_builder.h"
#include "shell/paths.h"
#include "shell/win32/ansi_codec.h"
#include "shell/win32/system_calls.h"
#include "shell/win32/system_message_boxes.h"
#include "shell/win32/windows_file_system.h"
#include "shell/win32/windows_system_paths.h"
#include "win32/dialogs/conversation.h"
#include "win32/shell/temporary_folder.h"

namespace tovar::test {
namespace {

/// Enciphers bytes, filled up with zeros to whole blocks.
std::string enciphered(std::string bytes, const std::string& password) {
    const archiver::ace::Cipher cipher(archiver::ace::keyOf(password));
    bytes.resize((bytes.size() + 7) / 8 * 8);
    std::uint32_t left = 0, right = 0;
    std::string result;
    for (std::size_t at = 0; at < bytes.size(); at += 8) {
        left ^= archiver::little_endian::load32(bytes.data() + at);
        right ^= archiver::little_endian::load32(bytes.data() + at + 4);
        cipher.encrypt(left, right);
        result += archiver::test::littleEndian(left, 4) + archiver::test::littleEndian(right, 4);
    }
    return result;
}

const std::string kFirst = "The quick brown fox jumps over the lazy dog";
const std::string kSecond = "Pack my box with five dozen liquor jugs";
const std::string kPlain = "for everybody";

/// A member without a password between two that have the same.
std::string encryptedArchive(const std::string& password) {
    constexpr std::uint16_t kEncrypted = 0x4001;
    return archiver::test::aceArchive(
        {}, {{.name = "first.txt", .content = kFirst, .packed = enciphered(kFirst, password), .flags = kEncrypted},
             {.name = "plain.txt", .content = kPlain},
             {.name = "docs\\second.txt",
              .content = kSecond,
              .packed = enciphered(kSecond, password),
              .flags = kEncrypted}});
}

struct OwnFolder final : LibraryFolders {
    std::vector<std::wstring> searchOrder() const override { return {}; }
};

Conversation::Step enter(const std::wstring& password) {
    return [password](HWND dialog) {
        EXPECT_EQ(textOf(dialog), L"Password");
        EXPECT_EQ(itemText(dialog, IDC_TXT_PASSWORD), L"") << "what was wrong before is not offered again";
        ::SetWindowTextW(item(dialog, IDC_TXT_PASSWORD), password.c_str());
        ::PostMessageW(item(dialog, IDOK), BM_CLICK, 0, 0);
    };
}
Conversation::Step pressCancel() {
    return [](HWND dialog) {
        EXPECT_EQ(textOf(dialog), L"Password");
        ::PostMessageW(item(dialog, IDCANCEL), BM_CLICK, 0, 0);
    };
}
Conversation::Step readBox(const std::wstring& text) {
    return [text](HWND dialog) {
        EXPECT_EQ(textOf(dialog), L"ACE Message");
        EXPECT_EQ(Conversation::boxText(dialog), text);
        ::PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    };
}
Conversation::Step readRefusal() { return readBox(L"Password is not correct ! Try it again."); }

class AcePasswordTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(archives_.pathOf(L"UnAce.dll"), ParentPath(moduleFile(nullptr)) + L"UnAce.dll"); }

    void write(const std::string& password) const {
        const std::string bytes = encryptedArchive(password);
        std::ofstream stream{std::filesystem::path(archive_), std::ios::binary};
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        ASSERT_TRUE(stream.flush().good());
    }
    ExtractResult extract(std::deque<Conversation::Step> steps) {
        cUnAce driver(archives_.getAceOrMissing(cUnAce::kDescription), messages_, regional_, files_, passwords_);
        const Conversation user(std::move(steps));
        return driver.extract({.owner = host_.child(),
                               .command = L"-d",
                               .archive = archive_,
                               .folder = folder_ / L"out",
                               .members = L"*.*"});
    }
    /// "-" for a file that is not there.
    std::string unpacked(const std::wstring& name) const {
        std::ifstream stream(std::filesystem::path(folder_ / (L"out\\" + name)), std::ios::binary);
        if (!stream.is_open()) return "-";
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
    void expectUnpacked() const {
        EXPECT_EQ(unpacked(L"first.txt"), kFirst);
        EXPECT_EQ(unpacked(L"plain.txt"), kPlain);
        EXPECT_EQ(unpacked(L"docs\\second.txt"), kSecond);
    }
    void expectPlainMemberOnly() const {
        EXPECT_EQ(unpacked(L"first.txt"), "-");
        EXPECT_EQ(unpacked(L"plain.txt"), kPlain);
        EXPECT_EQ(unpacked(L"docs\\second.txt"), "-");
    }

    const TemporaryFolder folder_;
    const std::wstring archive_ = folder_ / L"secret.ace";
    HostWindow host_;
    WindowsFileSystem files_;
    WindowsSystemPaths systemPaths_;
    SystemMessageBoxes messages_;
    RegionalSettings regional_;
    AnsiCodec ansi_;
    OwnFolder folders_;
    LibraryFinder finder_{systemPaths_, files_, folders_, ParentPath(moduleFile(nullptr))};
    std::unique_ptr<ModuleLoader> loader_ = systemModuleLoader();
    ArchiverLibraries archives_{*loader_, finder_, ansi_, systemPaths_};
    DialogPasswords passwords_{[] { return std::wstring(); }};
};

TEST_F(AcePasswordTest, OpensTheMembers) {
    write("secret");
    const ExtractResult result = extract({[this](HWND dialog) {
        EXPECT_EQ(itemText(dialog, IDC_LBL_ARCHIVE), archive_);
        EXPECT_EQ(::GetWindow(dialog, GW_OWNER), host_.window());
        enter(L"secret")(dialog);
    }});
    EXPECT_FALSE(result.failed);
    expectUnpacked();
    EXPECT_TRUE(::IsWindowEnabled(host_.window()));
}

TEST_F(AcePasswordTest, IsAskedForAgainWhenItIsWrong) {
    write("secret");
    const ExtractResult result = extract({enter(L"Secret"), readRefusal(), enter(L"secret")});
    EXPECT_FALSE(result.failed);
    expectUnpacked();
}

TEST_F(AcePasswordTest, IsAskedForUntilTheUserGivesUp) {
    write("secret");
    const ExtractResult result = extract(
        {enter(L"1"), readRefusal(), enter(L"2"), readRefusal(), enter(L"3"), readRefusal(), enter(L"4"), readRefusal(),
         enter(L"5"), readRefusal(), pressCancel(), readBox(L"Can not extract:\r\nfirst.txt\r\ndocs\\second.txt")});
    EXPECT_TRUE(result.failed);
    expectPlainMemberOnly();
}

TEST_F(AcePasswordTest, IsNotAskedForAgainAfterACancel) {
    write("secret");
    const ExtractResult result =
        extract({pressCancel(), readBox(L"Can not extract:\r\nfirst.txt\r\ndocs\\second.txt")});
    EXPECT_TRUE(result.failed);
    expectPlainMemberOnly();
}

TEST_F(AcePasswordTest, MayHaveLettersBeyondTheCodePage) {
    write("p\xC3\xA4ss\xD0\xBF");
    const ExtractResult result = extract({enter(L"pass"), readRefusal(), enter(L"p\x00E4ss\x043F")});
    EXPECT_FALSE(result.failed);
    expectUnpacked();
}

}  // namespace
}  // namespace tovar::test
