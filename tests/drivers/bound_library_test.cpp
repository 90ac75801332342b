#include "drivers/bound_library.h"

#include <gtest/gtest.h>

#include <new>

#include "drivers/common_driver.h"
#include "drivers/fakes/fake_module.h"
#include "shell/fakes/fake_file_system.h"
#include "shell/fakes/fake_message_boxes.h"
#include "shell/fakes/fake_system_paths.h"
#include "shell/fakes/fake_text_codec.h"

namespace tovar {
namespace {

using test::FakeModule;
using Calls = std::vector<std::string>;

class BoundLibraryTest : public testing::Test {
protected:
    std::unique_ptr<BoundLibrary> bind(std::unique_ptr<FakeModule> module) {
        return std::make_unique<BoundLibrary>(std::move(module), description, ansi, paths);
    }
    std::unique_ptr<BoundLibrary> plain() { return bind(FakeModule::plain("Some")); }
    std::unique_ptr<BoundLibrary> full() { return bind(FakeModule::full("Some")); }

    std::unique_ptr<BoundLibrary> withProgress() {
        auto module = FakeModule::full("Some");
        module->addProgress("Some");
        return bind(std::move(module));
    }

    const DriverDescription description{.library = L"Some32.dll", .prefix = "Some", .messageTitle = L"Some Message"};
    test::FakeExports exports;
    test::FakeTextCodec ansi;
    test::FakeFileSystem files;
    test::FakeSystemPaths paths{files};
    std::wstring output = L"old";
    archiver::IndividualInfo info{};
};

TEST_F(BoundLibraryTest, CallsEachFunctionByItsPrefixedName) {
    const auto library = plain();
    int window = 0;
    EXPECT_EQ(library->version(), 540);
    EXPECT_TRUE(library->running());
    EXPECT_TRUE(library->backGroundMode());
    EXPECT_TRUE(library->setBackGroundMode(true));
    EXPECT_TRUE(library->setBackGroundMode(false));
    EXPECT_TRUE(library->cursorMode());
    EXPECT_TRUE(library->setCursorMode(true));
    EXPECT_TRUE(library->setCursorMode(false));
    EXPECT_EQ(library->checkArchive(L"a.zip", 2), 1);
    EXPECT_EQ(library->configDialog(&window, 1), 1);
    EXPECT_EQ(library->openArchive(&window, L"a.zip", 0), exports.handle);
    EXPECT_EQ(library->findFirst(exports.handle, L"*.*", info), -1);
    EXPECT_EQ(library->findNext(exports.handle, info), -1);
    EXPECT_EQ(library->closeArchive(exports.handle), 0);
    EXPECT_EQ(library->run(&window, L"-l a.zip", 324, output), 0);
    EXPECT_EQ(exports.calls,
              (Calls{"GetVersion", "GetRunning", "GetBackGroundMode", "SetBackGroundMode 1", "SetBackGroundMode 0",
                     "GetCursorMode", "SetCursorMode 1", "SetCursorMode 0", "CheckArchive a.zip 2", "ConfigDialog 1",
                     "OpenArchive a.zip 0", "FindFirst *.*", "FindNext", "CloseArchive", "Run -l a.zip into 324"}));
    EXPECT_EQ(exports.owners, (std::vector<void*>{&window, &window, &window}));
}

TEST_F(BoundLibraryTest, TakesNoFunctionOfAnotherPrefix) {
    const auto library = bind(FakeModule::full("some"));
    EXPECT_EQ(library->version(), 1);
    EXPECT_EQ(library->openArchive(nullptr, L"a.zip", 0), nullptr);
    EXPECT_EQ(exports.calls, Calls{});
}

TEST_F(BoundLibraryTest, AnswersForMissingFunctionsLikeFailingOnes) {
    const auto library = bind(std::make_unique<FakeModule>());
    EXPECT_EQ(library->version(), 1) << "that of an unusable library";
    EXPECT_FALSE(library->running());
    EXPECT_FALSE(library->backGroundMode());
    EXPECT_FALSE(library->setBackGroundMode(true));
    EXPECT_FALSE(library->cursorMode());
    EXPECT_FALSE(library->setCursorMode(true));
    EXPECT_EQ(library->run(nullptr, L"-l a.zip", 324, output), 0x8023);
    EXPECT_EQ(output, L"");
    EXPECT_EQ(library->checkArchive(L"a.zip", 0), 0);
    EXPECT_EQ(library->configDialog(nullptr, 1), 0x8023);
    EXPECT_EQ(library->openArchive(nullptr, L"a.zip", 0), nullptr);
    EXPECT_EQ(library->findFirst(this, L"*.*", info), 0x8023);
    EXPECT_EQ(library->findNext(this, info), 0x8023);
    EXPECT_EQ(library->closeArchive(this), 0x8023);
    EXPECT_FALSE(library->originalSize(this));
    EXPECT_FALSE(library->compressedSize(this));
}

TEST_F(BoundLibraryTest, ReadsOnlyTheLowerHalfOfTheVersion) {
    const auto library = plain();
    exports.versionRegister = 0xABCD004E;
    EXPECT_EQ(library->version(), 78);
    exports.versionRegister = 0xFFFF0001;
    EXPECT_EQ(library->version(), 1);
}

TEST_F(BoundLibraryTest, TakesAnyBooleanButZeroForTrue) {
    const auto library = plain();
    for (const archiver::Bool answer : {1, -1, 256, 65536}) {
        exports.boolAnswer = answer;
        EXPECT_TRUE(library->running()) << answer;
        EXPECT_TRUE(library->backGroundMode()) << answer;
        EXPECT_TRUE(library->cursorMode()) << answer;
    }
    exports.boolAnswer = 0;
    EXPECT_FALSE(library->running());
    EXPECT_FALSE(library->backGroundMode());
    EXPECT_FALSE(library->setBackGroundMode(true));
    EXPECT_FALSE(library->cursorMode());
    EXPECT_FALSE(library->setCursorMode(true));
}

// Texts

TEST_F(BoundLibraryTest, SpeaksAnsiToALibraryThatKnowsNoUtf8) {
    const auto library = plain();
    exports.written = "sch\xF6n";
    EXPECT_EQ(library->checkArchive(L"\xE4.zip", 0), 1);
    EXPECT_EQ(library->run(nullptr, L"-l \xE4.zip", 10, output), 0);
    EXPECT_EQ(exports.calls, (Calls{"CheckArchive \xE4.zip 0", "Run -l \xE4.zip into 10"}));
    EXPECT_EQ(output, std::wstring(L"sch\xF6n") + std::wstring(5, L'\0'));
}

TEST_F(BoundLibraryTest, SpeaksUtf8ForTheTimeOfACall) {
    const auto library = full();
    exports.written = "\xE8\xA1\xA8";
    EXPECT_EQ(library->checkArchive(L"\x8868.zip", 0), 1);
    EXPECT_EQ(library->run(nullptr, L"-l \x8868.zip", 5, output), 0);
    EXPECT_EQ(library->configDialog(nullptr, 1), 1);
    EXPECT_EQ(exports.calls, (Calls{"SetUnicodeMode 1", "CheckArchive \xE8\xA1\xA8.zip 0", "SetUnicodeMode 0",
                                    "SetUnicodeMode 1", "Run -l \xE8\xA1\xA8.zip into 5", "SetUnicodeMode 0",
                                    "SetUnicodeMode 1", "ConfigDialog 1", "SetUnicodeMode 0"}));
    EXPECT_EQ(output, std::wstring(L"\x8868") + std::wstring(2, L'\0'));
}

TEST_F(BoundLibraryTest, LeavesTheModeAloneWhereNoTextIsPassed) {
    const auto library = full();
    static_cast<void>(library->version());
    static_cast<void>(library->running());
    static_cast<void>(library->backGroundMode());
    library->setBackGroundMode(true);
    static_cast<void>(library->cursorMode());
    library->setCursorMode(true);
    for (const std::string& call : exports.calls) EXPECT_FALSE(call.starts_with("SetUnicodeMode")) << call;
    EXPECT_EQ(exports.calls.size(), 6U);
}

TEST_F(BoundLibraryTest, SpeaksUtf8FromOpenToClose) {
    const auto library = full();
    const auto archive = library->openArchive(nullptr, L"\x8868.zip", 0);
    ASSERT_EQ(archive, exports.handle);
    EXPECT_EQ(exports.calls, (Calls{"SetUnicodeMode 1", "OpenArchive \xE8\xA1\xA8.zip 0"}));
    library->findFirst(archive, L"*.*", info);
    library->findNext(archive, info);
    std::wstring text;
    library->decodeTo("\xE8\xA1\xA8", text);
    EXPECT_EQ(text, L"\x8868");
    exports.calls.clear();
    library->closeArchive(archive);
    EXPECT_EQ(exports.calls, (Calls{"CloseArchive", "SetUnicodeMode 0"}));
    text.clear();
    library->decodeTo("\xE4", text);
    EXPECT_EQ(text, L"\xE4");
}

TEST_F(BoundLibraryTest, LeavesUtf8WhenAnArchiveDoesNotOpen) {
    const auto library = full();
    exports.handle = nullptr;
    EXPECT_EQ(library->openArchive(nullptr, L"a.zip", 0), nullptr);
    EXPECT_EQ(exports.calls, (Calls{"SetUnicodeMode 1", "OpenArchive a.zip 0", "SetUnicodeMode 0"}));
}

TEST_F(BoundLibraryTest, StaysInUtf8WhileAnArchiveIsOpen) {
    const auto library = full();
    const auto archive = library->openArchive(nullptr, L"a.zip", 0);
    library->checkArchive(L"b.zip", 0);
    library->closeArchive(archive);
    EXPECT_EQ(exports.calls, (Calls{"SetUnicodeMode 1", "OpenArchive a.zip 0", "CheckArchive b.zip 0", "CloseArchive",
                                    "SetUnicodeMode 0"}));
}

TEST_F(BoundLibraryTest, CountsNoCloseWithoutAnOpen) {
    const auto library = full();
    library->closeArchive(this);
    library->checkArchive(L"a.zip", 0);
    EXPECT_EQ(exports.calls, (Calls{"CloseArchive", "SetUnicodeMode 1", "CheckArchive a.zip 0", "SetUnicodeMode 0"}));
}

TEST_F(BoundLibraryTest, SpeaksAnsiWhereTheLibraryRefusesUtf8) {
    const auto library = full();
    exports.unicodeAnswer = 0;
    EXPECT_EQ(library->checkArchive(L"\xE4.zip", 0), 1);
    EXPECT_EQ(exports.calls, (Calls{"SetUnicodeMode 1", "CheckArchive \xE4.zip 0", "SetUnicodeMode 0"}));
}

TEST_F(BoundLibraryTest, NamesAFileByItsShortPathWhereTheCodePageHasNoName) {
    const auto library = plain();
    paths.shortNames[L"C:\\\x8868.zip"] = LR"(C:\~1.ZIP)";
    EXPECT_EQ(library->checkArchive(L"C:\\\x8868.zip", 0), 1);
    EXPECT_EQ(library->openArchive(nullptr, L"C:\\\x8868.zip", 0), exports.handle);
    EXPECT_EQ(exports.calls, (Calls{R"(CheckArchive C:\~1.ZIP 0)", R"(OpenArchive C:\~1.ZIP 0)"}));
}

TEST_F(BoundLibraryTest, DoesNotCallForAFileThatCannotBeNamed) {
    const auto library = plain();
    paths.shortNames[L"C:\\\x65E5.zip"] = L"C:\\\x65E5~1.ZIP";  // short, but no better
    for (const wchar_t* name : {L"C:\\\x8868.zip", L"C:\\\x65E5.zip"}) {
        EXPECT_EQ(library->checkArchive(name, 0), 0);
        EXPECT_EQ(library->openArchive(nullptr, name, 0), nullptr);
    }
    EXPECT_EQ(exports.calls, Calls{});
}

TEST_F(BoundLibraryTest, KeepsAnsiNamesToTheConventionsLength) {
    const auto library = plain();
    const std::wstring fits = L"C:\\" + std::wstring(509, L'a');
    const std::wstring tooLong = fits + L'a';
    const std::wstring shortened = fits + L'b';
    paths.shortNames[shortened] = LR"(C:\SHORT)";
    EXPECT_EQ(library->checkArchive(fits, 0), 1);
    EXPECT_EQ(library->checkArchive(tooLong, 0), 0);
    EXPECT_EQ(library->checkArchive(shortened, 0), 1);
    EXPECT_EQ(library->checkArchive(std::wstring(32'000, L'a'), 0), 0);
    EXPECT_EQ(exports.calls, (Calls{"CheckArchive C:\\" + std::string(509, 'a') + " 0", R"(CheckArchive C:\SHORT 0)"}));
}

TEST_F(BoundLibraryTest, PassesLongNamesInUtf8) {
    const auto library = full();
    EXPECT_EQ(library->checkArchive(std::wstring(32'000, L'a'), 0), 1);
    EXPECT_EQ(exports.calls.at(1), "CheckArchive " + std::string(32'000, 'a') + " 0");
}

TEST_F(BoundLibraryTest, RefusesACommandThatTheCodePageCannotHold) {
    const auto library = plain();
    EXPECT_EQ(library->run(nullptr, L"-x a.zip \x8868.txt", 324, output), 0x801C);
    EXPECT_EQ(output, L"");
    EXPECT_EQ(exports.calls, Calls{});
}

TEST_F(BoundLibraryTest, RefusesTextsWithANulInside) {
    const auto library = full();
    const std::wstring_view name(L"a.zip\0.exe", 10);
    EXPECT_EQ(library->run(nullptr, name, 324, output), 0x801C);
    EXPECT_EQ(library->checkArchive(name, 0), 0);
    EXPECT_EQ(library->openArchive(nullptr, name, 0), nullptr);
    EXPECT_EQ(library->findFirst(this, name, info), 0x801C);
    for (const std::string& call : exports.calls) EXPECT_TRUE(call.starts_with("SetUnicodeMode")) << call;
}

// Buffers

TEST_F(BoundLibraryTest, GivesTheWholeBufferBack) {
    const auto library = plain();
    exports.written = std::string("a\0b", 3);
    EXPECT_EQ(library->run(nullptr, L"", 6, output), 0);
    EXPECT_EQ(output, std::wstring(L"a\0b\0\0\0", 6));
}

TEST_F(BoundLibraryTest, ReadsAFullBufferWithoutANul) {
    const auto library = plain();
    exports.written = std::string(500, 'x');
    EXPECT_EQ(library->run(nullptr, L"", 324, output), 0);
    EXPECT_EQ(output, std::wstring(324, L'x'));
}

TEST_F(BoundLibraryTest, SurvivesALibraryThatWritesANulBehindTheBuffer) {
    const auto library = plain();
    exports.written = std::string(324, 'x') + std::string(2, '\0');
    exports.cutToBuffer = false;
    EXPECT_EQ(library->run(nullptr, L"", 324, output), 0);
    EXPECT_EQ(output, std::wstring(324, L'x'));
}

TEST_F(BoundLibraryTest, ReplacesWhatTheBuffersEndCutInTwo) {
    const auto library = full();
    exports.written = "ab\xE8\xA1\xA8";
    EXPECT_EQ(library->run(nullptr, L"", 4, output), 0);
    ASSERT_GE(output.size(), 3U);
    EXPECT_EQ(output.substr(0, 3), L"ab\xFFFD");
}

TEST_F(BoundLibraryTest, PassesFailureCodesOn) {
    const auto library = plain();
    for (const std::int32_t code : {0x8018, -1, 3}) {
        exports.runAnswer = code;
        EXPECT_EQ(library->run(nullptr, L"", 324, output), code);
    }
    exports.checkAnswer = -5;
    EXPECT_EQ(library->checkArchive(L"a.zip", 0), -5);
    exports.dialogAnswer = 0x801F;
    EXPECT_EQ(library->configDialog(nullptr, 1), 0x801F);
}

TEST_F(BoundLibraryTest, ClearsTheRecordBeforeTheLibraryFillsIt) {
    const auto library = plain();
    exports.members = {{.name = "x"}, {.name = "y"}};
    exports.writesRecord = false;
    info = test::infoOf({.name = "old", .original = 1, .crc = 2});
    EXPECT_EQ(library->findFirst(exports.handle, L"*.*", info), 0);
    EXPECT_EQ(info.originalSize, 0U);
    EXPECT_EQ(info.fileName[0], '\0');
    info = test::infoOf({.name = "old", .original = 1, .crc = 2});
    EXPECT_EQ(library->findNext(exports.handle, info), 0);
    EXPECT_EQ(info.crc, 0U);
    EXPECT_EQ(info.attribute[0], '\0');
}

TEST_F(BoundLibraryTest, Asks64BitSizes) {
    const auto library = full();
    exports.original64 = 5'000'000'000;
    exports.packed64 = 0;
    EXPECT_EQ(library->originalSize(this), 5'000'000'000U);
    EXPECT_EQ(library->compressedSize(this), 0U);
    exports.original64 = -1;
    EXPECT_FALSE(library->originalSize(this)) << "a negative size is none";
    exports.sizeAnswer = 0;
    EXPECT_FALSE(library->compressedSize(this)) << "the library does not know";
    EXPECT_FALSE(plain()->originalSize(this));
    EXPECT_FALSE(plain()->compressedSize(this));
}

/// A codec on which memory runs out.
class ExhaustedCodec final : public TextCodec {
public:
    [[nodiscard]] std::optional<std::string> encode(std::wstring_view) const override { throw std::bad_alloc(); }
    void decodeTo(std::string_view, std::wstring&) const override { throw std::bad_alloc(); }
};

TEST_F(BoundLibraryTest, LetsNoExceptionPass) {
    const ExhaustedCodec exhausted;
    BoundLibrary library(FakeModule::plain("Some"), description, exhausted, paths);
    EXPECT_EQ(library.run(nullptr, L"-l", 324, output), 0x801D);
    EXPECT_EQ(library.checkArchive(L"a.zip", 0), 0);
    EXPECT_EQ(library.openArchive(nullptr, L"a.zip", 0), nullptr);
    EXPECT_EQ(library.findFirst(this, L"*.*", info), 0x801D);
    EXPECT_EQ(exports.calls, Calls{});
}

// Together with the driver

TEST_F(BoundLibraryTest, ListsALibraryThatTakesTheRecordForUnpacked) {
    const auto library = full();
    exports.members = {{.name = "dir/\xE8\xA1\xA8.txt", .original = 5}, {.name = "b"}};
    exports.unpackedRecord = true;
    exports.original64 = 5;
    test::FakeMessageBoxes messages;
    const RegionalSettings regional;
    CommonDriver driver(description, *library, messages, regional);
    ASSERT_EQ(driver.SetArcFile(L"a.zip"), 2U);
    EXPECT_EQ(driver.FileName(0), L"\x8868.txt");
    EXPECT_EQ(driver.FilePath(0), LR"(dir\)");
    EXPECT_EQ(driver.FileOriginal(0), L"5");
    EXPECT_EQ(exports.calls, (Calls{"SetUnicodeMode 1", "OpenArchive a.zip 0", "FindFirst *.*", "FindNext", "FindNext",
                                    "CloseArchive", "SetUnicodeMode 0"}));
}

/// A corner of code page 932: U+8868 is 0x95 0x5C, whose second byte is that of "\".
class Japanese final : public TextCodec {
public:
    [[nodiscard]] std::optional<std::string> encode(std::wstring_view text) const override {
        std::string bytes;
        for (const wchar_t each : text) {
            if (each == L'\x8868') {
                bytes += "\x95\x5C";
            } else {
                bytes += static_cast<char>(each);
            }
        }
        return bytes;
    }
    void decodeTo(std::string_view bytes, std::wstring& text) const override {
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            if (bytes.substr(at, 2) == "\x95\x5C") {
                text += L'\x8868';
                ++at;
            } else {
                text += static_cast<wchar_t>(bytes[at]);
            }
        }
    }
};

TEST_F(BoundLibraryTest, TakesNoSecondByteForASeparator) {
    const Japanese japanese;
    BoundLibrary library(FakeModule::plain("Some"), description, japanese, paths);
    exports.members = {{.name = "\x95\x5C/\x95\x5C.txt"}, {.name = "\x95\x5C"}};
    test::FakeMessageBoxes messages;
    const RegionalSettings regional;
    CommonDriver driver(description, library, messages, regional);
    ASSERT_EQ(driver.SetArcFile(L"C:\\\x8868.lzh"), 2U);
    EXPECT_EQ(exports.calls.front(), "OpenArchive C:\\\x95\x5C.lzh 0");
    EXPECT_EQ(driver.FileName(0), L"\x8868.txt");
    EXPECT_EQ(driver.FilePath(0), L"\x8868\\");
    EXPECT_EQ(driver.FileName(1), L"\x8868");
    EXPECT_EQ(driver.FilePath(1), L"\\");
}

// Progress

TEST_F(BoundLibraryTest, TellsHowACommandGetsOn) {
    const auto library = withProgress();
    exports.events = {{.state = 3},
                      {.state = 0, .source = "\xC3\xA4.txt", .destination = "C:\\out\\\xC3\xA4.txt", .size = 10},
                      {.state = 1, .source = std::string(513, 'n'), .size = 10, .written = 7},
                      {.state = 2, .withoutRecord = true},
                      {.state = 99}};
    std::vector<ExtractProgress> told;
    library->setProgress([&](const ExtractProgress& progress) {
        told.push_back(progress);
        return told.size() != 3;
    });
    int window = 0;
    EXPECT_EQ(library->run(&window, L"x", 100, output), 0);
    using State = ExtractProgress::State;
    ASSERT_EQ(told.size(), 5U);
    EXPECT_EQ(told[0].state, State::Open);
    EXPECT_EQ(told[1].state, State::Begin);
    EXPECT_EQ(told[1].member, L"\xE4.txt");
    EXPECT_EQ(told[1].file, L"C:\\out\\\xE4.txt");
    EXPECT_EQ(told[1].size, 10U);
    EXPECT_EQ(told[2].state, State::Working);
    EXPECT_EQ(told[2].member, std::wstring(513, L'n')) << "a text without a NUL ends with its field";
    EXPECT_EQ(told[2].written, 7U);
    EXPECT_EQ(told[3].state, State::End);
    EXPECT_EQ(told[3].member, L"");
    EXPECT_EQ(told[4].state, State::Working) << "of a state that nobody knows";
    EXPECT_EQ(exports.callbackAnswers, (std::vector<archiver::Bool>{0, 0, 1, 0, 0})) << "1 cancels";
    EXPECT_EQ(exports.calls, (Calls{"SetUnicodeMode 1", "SetOwnerWindowEx", "Run x into 100", "KillOwnerWindowEx",
                                    "SetUnicodeMode 0"}));
    EXPECT_EQ(exports.owners, (std::vector<void*>{&window, &window, &window}));
}

TEST_F(BoundLibraryTest, CancelsWhenWhoIsToldThrows) {
    const auto library = withProgress();
    exports.events = {{.state = 0}};
    library->setProgress([](const ExtractProgress&) -> bool { throw std::bad_alloc(); });
    EXPECT_EQ(library->run(nullptr, L"x", 100, output), 0);
    EXPECT_EQ(exports.callbackAnswers, (std::vector<archiver::Bool>{1}));
}

TEST_F(BoundLibraryTest, SetsNoCallbackWhenNobodyListens) {
    const auto library = withProgress();
    library->setProgress([](const ExtractProgress&) { return true; });
    library->setProgress({});
    EXPECT_EQ(library->run(nullptr, L"x", 100, output), 0);
    EXPECT_EQ(exports.calls, (Calls{"SetUnicodeMode 1", "Run x into 100", "SetUnicodeMode 0"}));
}

TEST_F(BoundLibraryTest, TakesNoCallbackAwayThatWasNotTaken) {
    const auto library = withProgress();
    exports.callbackTaken = 0;
    library->setProgress([](const ExtractProgress&) { return true; });
    EXPECT_EQ(library->run(nullptr, L"x", 100, output), 0);
    EXPECT_EQ(exports.calls, (Calls{"SetUnicodeMode 1", "SetOwnerWindowEx", "Run x into 100", "SetUnicodeMode 0"}));
}

// Their callbacks may take the answers the other way round.
TEST_F(BoundLibraryTest, SetsNoCallbackInOlderLibraries) {
    auto module = FakeModule::full("Some");
    module->addProgress("Some");
    module->functions.erase("SomeGetWriteTimeEx");
    const auto library = bind(std::move(module));
    library->setProgress([](const ExtractProgress&) { return true; });
    EXPECT_EQ(library->run(nullptr, L"x", 100, output), 0);
    EXPECT_EQ(exports.calls, (Calls{"SetUnicodeMode 1", "Run x into 100", "SetUnicodeMode 0"}));
}

TEST_F(BoundLibraryTest, HasAPasswordForTheTimeOfACommand) {
    auto module = FakeModule::full("Some");
    module->addPassword("Some");
    const auto library = bind(std::move(module));
    EXPECT_TRUE(library->setPassword(L"Schl\x00FCssel"));
    EXPECT_EQ(exports.calls, Calls{});
    EXPECT_EQ(library->run(nullptr, L"-x a.zip", 10, output), 0);
    EXPECT_EQ(exports.calls, (Calls{"SetUnicodeMode 1", "SetCommandPassword Schl\xC3\xBCssel", "Run -x a.zip into 10",
                                    "SetCommandPassword none", "SetUnicodeMode 0"}));
    exports.calls.clear();
    EXPECT_TRUE(library->setPassword(L""));
    EXPECT_EQ(library->run(nullptr, L"-x a.zip", 10, output), 0);
    EXPECT_EQ(exports.calls, (Calls{"SetUnicodeMode 1", "Run -x a.zip into 10", "SetUnicodeMode 0"}));
}

TEST_F(BoundLibraryTest, TakesNoPasswordAwayThatWasNotTaken) {
    auto module = FakeModule::plain("Some");
    module->addPassword("Some");
    exports.passwordTaken = 0;
    const auto library = bind(std::move(module));
    EXPECT_TRUE(library->setPassword(L"secret"));
    EXPECT_EQ(library->run(nullptr, L"-x a.zip", 10, output), 0);
    EXPECT_EQ(exports.calls, (Calls{"SetCommandPassword secret", "Run -x a.zip into 10"}));
}

TEST_F(BoundLibraryTest, GivesNoPasswordThatTheCodePageCannotHold) {
    auto module = FakeModule::plain("Some");
    module->addPassword("Some");
    const auto library = bind(std::move(module));
    EXPECT_TRUE(library->setPassword(L"\x8868"));
    EXPECT_EQ(library->run(nullptr, L"-x a.zip", 10, output), 0);
    EXPECT_EQ(exports.calls, (Calls{"Run -x a.zip into 10"}));
}

TEST_F(BoundLibraryTest, TellsThatALibraryCannotBeGivenAPassword) {
    const auto library = full();
    EXPECT_FALSE(library->setPassword(L"secret"));
    EXPECT_EQ(library->run(nullptr, L"-x a.zip", 10, output), 0);
    EXPECT_EQ(exports.calls, (Calls{"SetUnicodeMode 1", "Run -x a.zip into 10", "SetUnicodeMode 0"}));
}

TEST_F(BoundLibraryTest, KnowsTheCodeOfListFiles) {
    const auto utf8 = full();
    EXPECT_EQ(utf8->commandCodec().encode(L"\xE4"), "\xC3\xA4");
    EXPECT_EQ(exports.calls, (Calls{"SetUnicodeMode 1", "SetUnicodeMode 0"}));
    exports.unicodeAnswer = 0;
    EXPECT_EQ(&utf8->commandCodec(), &ansi) << "a library that has the function but refuses";
    EXPECT_EQ(&plain()->commandCodec(), &ansi);
}

}  // namespace
}  // namespace tovar
