// Passwords that the console host asks for itself, on an encrypted archive and through the bundled library.

#include "host/console/terminal_passwords.h"

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "archivers/formats/ace/cipher.h"
#include "archivers/formats/little_endian.h"
#include "formats_ace/support/ace_builder.h"
#include "host/console/console.h"
#include "recording/session.h"

namespace tovar::host {
namespace {

namespace fs = std::filesystem;

/// What the user answers, one line after the other, and then the end of the input.
struct Script {
    std::deque<std::wstring> answers = {};
    std::vector<std::string> questions = {};
};

class ScriptedInput final : public SecretInput {
public:
    explicit ScriptedInput(Script& script) : script_(script) {}
    std::optional<std::wstring> ask(std::string_view question) override {
        script_.questions.emplace_back(question);
        if (script_.answers.empty()) return std::nullopt;
        std::wstring answer = script_.answers.front();
        script_.answers.pop_front();
        return answer;
    }

private:
    Script& script_;
};

TEST(TerminalPasswords, AreAskedForWithTheArchivesName) {
    Script script{.answers = {L"secret"}};
    TerminalPasswords passwords(std::make_unique<ScriptedInput>(script));
    int window = 0;
    EXPECT_EQ(passwords.ask(&window, L"C:\\docs\\a.ace"), L"secret");
    EXPECT_EQ(script.questions, (std::vector<std::string>{"C:\\docs\\a.ace: password: "}));
    EXPECT_EQ(passwords.ask(&window, L"C:\\docs\\a.ace"), std::nullopt) << "at the end of the input";
}

TEST(TerminalPasswords, AreNotAskedForWithoutAnOwner) {
    Script script{.answers = {L"secret"}};
    TerminalPasswords passwords(std::make_unique<ScriptedInput>(script));
    EXPECT_EQ(passwords.ask(nullptr, L"a.ace"), std::nullopt);
    EXPECT_TRUE(script.questions.empty());
}

TEST(TerminalPasswords, AreNotAskedForWithoutATerminal) {
    TerminalPasswords passwords(nullptr);
    int window = 0;
    EXPECT_EQ(passwords.ask(&window, L"a.ace"), std::nullopt);
}

TEST(TerminalPasswords, ShowNoControlCharactersOfAName) {
    Script script;
    TerminalPasswords passwords(std::make_unique<ScriptedInput>(script));
    int window = 0;
    EXPECT_EQ(passwords.ask(&window, L"a\x1B[2Jb.ace"), std::nullopt);
    ASSERT_EQ(script.questions.size(), 1U);
    EXPECT_EQ(script.questions[0].find('\x1B'), std::string::npos);
}

TEST(NewPasswords, AreAskedForTwice) {
    Script script{.answers = {L"secret", L"secret"}};
    TerminalPasswords passwords(std::make_unique<ScriptedInput>(script));
    EXPECT_EQ(passwords.askNew(L"a.zip"), L"secret");
    EXPECT_EQ(script.questions, (std::vector<std::string>{"a.zip: new password: ", "a.zip: once more: "}));
}

TEST(NewPasswords, AreRefusedWhenTheyDifferOrAreEmpty) {
    Script script{.answers = {L"secret", L"Secret", L"", L"secret"}};
    TerminalPasswords passwords(std::make_unique<ScriptedInput>(script));
    EXPECT_EQ(passwords.askNew(L"a.zip"), std::nullopt) << "another one the second time";
    EXPECT_EQ(passwords.askNew(L"a.zip"), std::nullopt) << "empty";
    EXPECT_EQ(passwords.askNew(L"a.zip"), std::nullopt) << "the input ends before it is given again";
    EXPECT_EQ(TerminalPasswords(nullptr).askNew(L"a.zip"), std::nullopt) << "no terminal";
}

// The whole way

constexpr char kSecretText[] = "The quick brown fox jumps over the lazy dog";

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

struct Recorder final : ConsoleOutput {
    std::string out, errors;
    void write(std::string_view text) override { out += text; }
    void writeError(std::string_view text) override { errors += text; }
    bool errorsAreSeen() const override { return true; }
};

class ConsolePassword : public testing::Test {
protected:
    ConsolePassword() : folder_(recording::makeTemporaryFolder()) {
        constexpr std::uint16_t kEncrypted = 0x4001;
        const std::string bytes = archiver::test::aceArchive({}, {{.name = "secret.txt",
                                                                   .content = kSecretText,
                                                                   .packed = enciphered(kSecretText, "p\xC3\xA4ss"),
                                                                   .flags = kEncrypted}});
        std::ofstream(folder_ / "a.ace", std::ios::binary) << bytes;
    }
    ~ConsolePassword() override {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    int run(const std::vector<std::wstring>& words) {
        SystemParts parts = systemParts();
        parts.secrets = std::make_unique<ScriptedInput>(script);
        ConsoleMessages messages(output);
        SystemServices system(messages, std::move(parts));
        return Console(output, system).run(parseArguments(words));
    }
    int extract(std::vector<std::wstring> options) {
        std::vector<std::wstring> words = {L"extract", L"--to", (folder_ / "out").wstring()};
        words.insert(words.end(), options.begin(), options.end());
        words.push_back((folder_ / "a.ace").wstring());
        return run(words);
    }
    /// "-" for a file that is not there.
    std::string unpacked() const {
        std::ifstream stream(folder_ / "out" / "secret.txt", std::ios::binary);
        if (!stream.is_open()) return "-";
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    [[nodiscard]] const fs::path& folder() const noexcept { return folder_; }

    Script script;
    Recorder output;

private:
    fs::path folder_;
};

TEST_F(ConsolePassword, OpensAnArchive) {
    script.answers = {L"p\x00E4ss"};
    EXPECT_EQ(extract({L"--ask"}), kGood) << output.errors;
    EXPECT_EQ(unpacked(), kSecretText);
    EXPECT_EQ(script.questions.size(), 1U);
}

TEST_F(ConsolePassword, IsAskedForAgainWhenItIsWrong) {
    script.answers = {L"pass", L"p\x00E4ss"};
    EXPECT_EQ(extract({L"--ask"}), kGood);
    EXPECT_EQ(unpacked(), kSecretText);
    EXPECT_NE(output.errors.find("ACE Message: Password is not correct ! Try it again.\n"), std::string::npos);
}

TEST_F(ConsolePassword, EndsTheQuestionsWithAnEmptyLine) {
    script.answers = {L"pass", L"", L"p\x00E4ss"};
    EXPECT_EQ(extract({L"--ask"}), kBadArchive);
    EXPECT_EQ(unpacked(), "-");
    EXPECT_EQ(script.questions.size(), 2U);
}

TEST_F(ConsolePassword, IsNotAskedForUnlessTheLineSaysSo) {
    script.answers = {L"p\x00E4ss"};
    EXPECT_EQ(extract({}), kBadArchive);
    EXPECT_EQ(unpacked(), "-");
    EXPECT_TRUE(script.questions.empty());
}

/// In the folder of the test, which names of sources are relative to.
class ConsoleEncryption : public ConsolePassword {
protected:
    ConsoleEncryption() : before_(fs::current_path()) {
        fs::current_path(folder());
        std::ofstream("plain.txt", std::ios::binary) << "PLAINTEXT PLAINTEXT PLAINTEXT";
    }
    ~ConsoleEncryption() override { fs::current_path(before_); }

    [[nodiscard]] std::string archive() const {
        std::ifstream stream(folder() / "new.zip", std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

private:
    fs::path before_;
};

TEST_F(ConsoleEncryption, AsksForThePasswordOfANewArchive) {
    script.answers = {L"secret", L"secret"};
    EXPECT_EQ(run({L"create", L"--password", L"--level", L"0", L"new.zip", L"plain.txt"}), kGood) << output.errors;
    const std::string bytes = archive();
    ASSERT_GT(bytes.size(), 30U);
    EXPECT_EQ(bytes[6] & 1, 1) << "the first member is marked as encrypted";
    EXPECT_EQ(bytes.find("PLAINTEXT"), std::string::npos);
    EXPECT_EQ((output.out + output.errors).find("secret"), std::string::npos);
}

TEST_F(ConsoleEncryption, MakesNothingWithoutAPassword) {
    script.answers = {L"secret", L"other"};
    EXPECT_EQ(run({L"create", L"--password", L"new.zip", L"plain.txt"}), kBadArchive);
    EXPECT_NE(output.errors.find("there is no password, or not the same one twice"), std::string::npos);
    EXPECT_FALSE(fs::exists("new.zip"));
}

}  // namespace
}  // namespace tovar::host
