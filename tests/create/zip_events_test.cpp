#include <array>

#include "create/fakes/zip_fixture.h"

namespace tovar::test {
namespace {

class ZipEventsDuringRun : public ZipFixture {
protected:
    void during(std::wstring_view command, std::function<void(ZipEvents&)> work,
                std::wstring_view list = L"a.txt\r\nb.txt") {
        library.whileRunning = std::move(work);
        result = run(command, list);
    }
    static std::string given(const std::array<char, 64>& buffer) { return buffer.data(); }

    std::optional<bool> result;
};

TEST_F(ZipEventsDuringRun, AddUpEntriesAndShowThem) {
    during(L"a", [&](ZipEvents& events) {
        progress.log.clear();
        events.message("  adding: dir/c.txt");
        events.message(" (deflated 45%)\n");
        events.message("updating: a.txt (stored 0%)\r\n");
        events.message("freshening: b.txt\n");
        events.message("deleting: d\n");
        events.message("adding: e\n");
    });
    EXPECT_EQ(progress.log,
              (std::vector<std::wstring>{
                  LR"(file Adding... dir\c.txt)", L"summary 1 files added", L"file Updating... a.txt",
                  L"summary 1 files added, 1 files updated", L"file Freshening... b.txt",
                  L"summary 1 files added, 1 files updated, 1 files freshened", L"file Deleting... d",
                  L"summary 1 files added, 1 files updated, 1 files freshened, 1 files deleted", L"file Adding... e",
                  L"summary 2 files added, 1 files updated, 1 files freshened, 1 files deleted"}));
    EXPECT_EQ(engine.report().counts, (ZipCounts{2, 1, 1, 1}));
    EXPECT_EQ(engine.report().log,
              L"  adding: dir\\c.txt (deflated 45%)\r\n"
              L"updating: a.txt (stored 0%)\r\n"
              L"freshening: b.txt\r\n"
              L"deleting: d\r\n"
              L"adding: e\r\n"
              L"2 files are added\r\n1 files are updated\r\n1 files are deleted");
}

TEST_F(ZipEventsDuringRun, BeginLinesThatTheLibraryDoesNotEnd) {
    during(L"a", [](ZipEvents& events) {
        events.message("adding: a");
        events.message("adding: b");
        events.message("zip warning: name not matched: x");
        events.message(".");
    });
    EXPECT_EQ(engine.report().log,
              L"adding: a\r\nadding: b\r\nzip warning: name not matched: x\r\n"
              L"2 files are added\r\n0 files are updated\r\n0 files are deleted");
}

TEST_F(ZipEventsDuringRun, StartAnewWithEachRun) {
    during(L"a", [](ZipEvents& events) { events.message("adding: a\n"); });
    during(L"a", [](ZipEvents&) {});
    EXPECT_EQ(engine.report().counts, ZipCounts{});
    EXPECT_EQ(engine.report().log, L"0 files are added\r\n0 files are updated\r\n0 files are deleted");
}

TEST_F(ZipEventsDuringRun, KeepTheLogOfAFailedRun) {
    library.answers = {11};
    during(L"a", [](ZipEvents& events) { events.message("adding: a\n"); });
    EXPECT_EQ(result, false);
    EXPECT_EQ(engine.report().log, L"adding: a\r\nRead Or Seek Error");
}

TEST_F(ZipEventsDuringRun, MoveTheBarByTheFilesThatAreThere) {
    std::vector<float> shown;
    during(
        L"a -r",
        [&](ZipEvents& events) {
            for (const char* name : {"a.txt", "dir/c.txt", "gone.txt", "dir/"}) {
                EXPECT_FALSE(events.service(name, 1));
                shown.push_back(progress.processed);
            }
        },
        L"a.txt\r\nb.txt\r\ndir");
    EXPECT_EQ(shown, (std::vector<float>{5, 12, 12, 12}));
    EXPECT_EQ(progress.total, 17.0F);
}

TEST_F(ZipEventsDuringRun, MoveTheBarWithFolderInformationToo) {
    during(L"a -d", [&](ZipEvents& events) { EXPECT_FALSE(events.service("base/a.txt", 5)); });
    EXPECT_EQ(progress.processed, 5.0F);
}

TEST_F(ZipEventsDuringRun, KeepWholeNumbersOfBytes) {
    files.addFileOfSize(LR"(C:\base\big)", 1ULL << 40U);
    during(
        L"a",
        [&](ZipEvents& events) {
            static_cast<void>(events.service("big", 0));
            // In single precision each of these would vanish beside the first.
            for (int each = 0; each < 40000; ++each) static_cast<void>(events.service("a.txt", 0));
        },
        L"big");
    EXPECT_EQ(progress.processed, static_cast<float>((1ULL << 40U) + 200000));
    EXPECT_NE(progress.processed, static_cast<float>(1ULL << 40U));
}

TEST_F(ZipEventsDuringRun, LeaveTheBarToTheMessagesOfAVerboseRun) {
    std::vector<float> shown;
    files.addFileOfSize(LR"(C:\base\a.txt)", 70000);
    during(
        L"a -v",
        [&](ZipEvents& events) {
            events.message("adding: a.txt");
            for (int each = 0; each < 3; ++each) {
                events.message(".");
                shown.push_back(progress.processed);
            }
            events.message(" (deflated 1%)\n");
            shown.push_back(progress.processed);
            EXPECT_FALSE(events.service("a.txt", 70000));
            shown.push_back(progress.processed);
        },
        L"a.txt");
    EXPECT_EQ(shown, (std::vector<float>{32768, 65536, 70000, 70000, 70000}));
}

TEST_F(ZipEventsDuringRun, CountNamesWhenDeleting) {
    during(L"d", [&](ZipEvents& events) {
        events.message("deleting: a.txt\n");
        EXPECT_FALSE(events.service("a.txt", 5));
        EXPECT_EQ(progress.processed, 1.0F);
        events.message("deleting: b.txt\n");
    });
    EXPECT_EQ(progress.processed, 2.0F);
    EXPECT_EQ(progress.total, 2.0F);
}

TEST_F(ZipEventsDuringRun, StopTheLibraryWhenTheUserGivesUp) {
    library.answers = {9};
    during(L"a", [&](ZipEvents& events) {
        progress.cancelled = true;
        EXPECT_TRUE(events.service("a.txt", 5));
    });
    EXPECT_EQ(result, false);
    EXPECT_EQ(boxes(), L"[Compression Error|User Interrupted Or Abnormal Termination]");
}

TEST_F(ZipEventsDuringRun, HandOverTheComment) {
    comments.answer = L"caf\u00e9";
    during(L"a -c", [&](ZipEvents& events) {
        std::array<char, 64> buffer{};
        buffer.fill('x');
        EXPECT_TRUE(events.comment(buffer));
        EXPECT_EQ(given(buffer), "caf\xe9");
    });
    EXPECT_EQ(library.calls.at(0).options.comment, 1);
}

TEST_F(ZipEventsDuringRun, TellThatThereIsNoComment) {
    during(L"a -c", [&](ZipEvents& events) {
        std::array<char, 64> buffer{};
        EXPECT_FALSE(events.comment(buffer));
    });
    EXPECT_EQ(boxes(), L"");
}

TEST_F(ZipEventsDuringRun, RefuseACommentThatDoesNotFit) {
    comments.answer = std::wstring(64, L'c');
    during(L"a -c", [&](ZipEvents& events) {
        std::array<char, 64> buffer{};
        EXPECT_FALSE(events.comment(buffer));
        EXPECT_EQ(given(buffer), "");
    });
    EXPECT_EQ(boxes(), L"[Zip Message|The comment is too long, or has characters that the archive cannot take.]");
    comments.answer = std::wstring(63, L'c');
    during(L"a -c", [&](ZipEvents& events) {
        std::array<char, 64> buffer{};
        EXPECT_TRUE(events.comment(buffer));
        EXPECT_EQ(given(buffer), std::string(63, 'c'));
    });
}

TEST_F(ZipEventsDuringRun, AskForThePasswordAsOftenAsTheLibraryDoes) {
    passwords.answers = {L"secret", L"other"};
    during(L"a -p", [&](ZipEvents& events) {
        std::array<char, 64> first{}, second{};
        EXPECT_TRUE(events.password(first, "Enter password: ", "new.zip"));
        EXPECT_TRUE(events.password(second, "Verify password: ", ""));
        EXPECT_EQ(given(first), "secret");
        EXPECT_EQ(given(second), "other");
    });
    EXPECT_EQ(passwords.labels, (std::vector<std::wstring>{L"Enter password: new.zip", L"Verify password"}));
    EXPECT_EQ(engine.report().log.find(L"secret"), std::wstring::npos);
}

TEST_F(ZipEventsDuringRun, TellThatThereIsNoPassword) {
    passwords.answers = {std::nullopt, L""};
    during(L"a -p", [&](ZipEvents& events) {
        std::array<char, 64> buffer{};
        EXPECT_FALSE(events.password(buffer, "", ""));
        EXPECT_FALSE(events.password(buffer, "", ""));
    });
    EXPECT_EQ(passwords.labels.size(), 2U);
}

TEST_F(ZipEventsDuringRun, NeverWriteBeyondThePasswordsBuffer) {
    passwords.answers = {L"12345678", L"1234567", L"\u65e5"};
    during(L"a -p", [&](ZipEvents& events) {
        std::array<char, 64> buffer{};
        buffer.fill('x');
        buffer[0] = '\0';
        EXPECT_FALSE(events.password(std::span(buffer).first(8), "", "")) << "half of it would be another password";
        EXPECT_EQ(given(buffer), "");
        EXPECT_TRUE(events.password(std::span(buffer).first(8), "", ""));
        EXPECT_EQ(given(buffer), "1234567");
        EXPECT_EQ(buffer[8], 'x');
        EXPECT_FALSE(events.password(buffer, "", ""));
    });
    EXPECT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown.at(0).text, L"The password is too long, or has characters that the archive cannot take.");
}

TEST_F(ZipEventsDuringRun, AskOnceForAllCallsOfARun) {
    passwords.answers = {L"secret", L"secret"};
    comments.answer = L"words";
    int filled = 0;
    during(
        L"a -p -c",
        [&](ZipEvents& events) {
            std::array<char, 64> buffer{};
            for (int each = 0; each < 2; ++each) {
                if (events.password(buffer, "", "") && given(buffer) == "secret") ++filled;
            }
            if (events.comment(buffer) && given(buffer) == "words") ++filled;
        },
        manyNames(4001));
    EXPECT_EQ(library.calls.size(), 2U);
    EXPECT_EQ(filled, 6);
    EXPECT_EQ(passwords.labels.size(), 2U);
    EXPECT_EQ(comments.asked, 1);
}

}  // namespace
}  // namespace tovar::test
