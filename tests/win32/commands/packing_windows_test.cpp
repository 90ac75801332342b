#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <vector>

#include "archivers/commands/change_run.h"
#include "archivers/commands/owner_message.h"
#include "archivers/convention/command_output.h"
#include "archivers/convention/password_memory.h"
#include "archivers/formats/utf8.h"
#include "win32/commands/host_window.h"

/// What a command that packs shows and tells in windows.
namespace archiver {
namespace {

using testing::frontDialog;
using testing::HostWindow;

constexpr std::uint64_t kMega = 1024 * 1024;
constexpr LibraryDescription kLibrary{.prefix = "Unlha", .title = "UnLha32", .version = 100};

class NoTexts final : public CommandTexts {
    void begin(const Command&, std::string&) override {}
    void member(const MemberReport&, std::string&) override {}
    void row(const Member&, std::string&) override {}
    void printed(const Member&, std::string&) override {}
    void end(const Command&, const UnpackSummary&, std::string&) override {}
};

std::function<ReturnCode(ChangeEvents&)> packing;
ReturnCode pack(const Command&, unsigned, ChangeEvents& events) { return packing(events); }

/// A window that is told of a command's progress.
class OwnerListener {
public:
    OwnerListener()
        : window_(::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr)) {
        ::SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        ::SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&procedure));
    }
    ~OwnerListener() { ::DestroyWindow(window_); }
    OwnerListener(const OwnerListener&) = delete;
    OwnerListener& operator=(const OwnerListener&) = delete;

    [[nodiscard]] HWND window() const { return window_; }

    std::vector<WPARAM> states;
    std::vector<std::string> files;    ///< of the members that began
    std::vector<std::uint32_t> sizes;  ///< likewise
    int cancelAt = -1;                 ///< the state that is answered with "cancel"

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* const self = reinterpret_cast<OwnerListener*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message != ownerMessage()) return ::DefWindowProcW(window, message, wParam, lParam);
        self->states.push_back(wParam);
        if (wParam == static_cast<WPARAM>(OwnerState::kBegin)) {
            const auto* const info = reinterpret_cast<const ExtractingInfo*>(lParam);
            self->files.emplace_back(info->sourceFileName);
            self->sizes.push_back(info->fileSize);
        }
        return static_cast<int>(wParam) == self->cancelAt ? 1 : 0;
    }

    HWND window_;
};

class PackingWindows : public ::testing::Test {
protected:
    PackingWindows() {
        command.archive = L"C:\\archives\\photos.lzh";
        item.path = L"C:\\data\\docs\\read me.txt";
        item.name = "docs/read me.txt";
        item.facts.size = 40 * kMega;
    }
    ~PackingWindows() override {
        packing = nullptr;
        testing::runMessages();
    }

    ReturnCode run(std::function<ReturnCode(ChangeEvents&)> change) {
        packing = std::move(change);
        const CommandContext context{.window = owner,
                                     .progress = progress,
                                     .commandLine = {},
                                     .codec = utf8Codec(),
                                     .library = kLibrary,
                                     .passwords = passwords};
        CommandOutput output(utf8Codec(), nullptr, 0);
        return ChangeRun(context, command, texts, output).run(&pack);
    }

    /// Packs the member bit by bit until that is cancelled. Each step is followed by `after`.
    ReturnCode packUntilCancelled(ChangeEvents& events, const std::function<void()>& after) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        events.total(1, item.facts.size);
        if (!events.beginMember(item)) return kUserCancel;
        if (!events.taken(10 * kMega)) return kUserCancel;
        while (std::chrono::steady_clock::now() < end) {
            if (!events.taken(0)) return kUserCancel;
            after();
        }
        ADD_FAILURE() << "nothing has cancelled the command";
        return kOk;
    }

    /// Packs the member in one go.
    ReturnCode packAtOnce(ChangeEvents& events) {
        events.total(1, item.facts.size);
        const bool packed =
            events.beginMember(item) && events.taken(item.facts.size) && events.endMember({.name = item.name});
        return packed && events.replacing() ? kOk : kUserCancel;
    }

    HostWindow host;
    HWND owner = nullptr;
    ProgressOwner progress;
    PasswordMemory passwords;
    Command command;
    NoTexts texts;
    SourceItem item;
};

TEST_F(PackingWindows, TellTheOwnerWindowOfEachStep) {
    OwnerListener listener;
    progress.window = listener.window();
    EXPECT_EQ(run([this](ChangeEvents& events) { return packAtOnce(events); }), kOk);
    std::erase(listener.states, static_cast<WPARAM>(OwnerState::kInProcess));
    EXPECT_EQ(listener.states, (std::vector<WPARAM>{3, 0, 4, 2})) << "open, begin, copy, end";
    EXPECT_EQ(listener.files, std::vector<std::string>{"C:\\data\\docs\\read me.txt"});
    EXPECT_EQ(listener.sizes, std::vector<std::uint32_t>{40 * kMega});
}

TEST_F(PackingWindows, TellTheOwnerWindowOfBytes) {
    OwnerListener listener;
    progress.window = listener.window();
    listener.cancelAt = 1;
    EXPECT_EQ(run([this](ChangeEvents& events) { return packUntilCancelled(events, [] {}); }), kUserCancel);
    EXPECT_EQ(listener.states, (std::vector<WPARAM>{3, 0, 1, 2}));
}

TEST_F(PackingWindows, LetTheOwnerWindowCancelAtEachStep) {
    for (const int state : {3, 0, 4}) {
        SCOPED_TRACE(state);
        OwnerListener listener;
        progress.window = listener.window();
        listener.cancelAt = state;
        bool called = false;
        EXPECT_EQ(run([&](ChangeEvents& events) {
                      called = true;
                      return packAtOnce(events);
                  }),
                  kUserCancel);
        EXPECT_EQ(called, state != 3) << "nothing is packed before the archive may be opened";
        EXPECT_EQ(listener.states.back(), 2U);
    }
}

TEST_F(PackingWindows, ShowHowFarTheWorkIsAndCancel) {
    owner = host.window();
    std::wstring title;
    std::vector<std::wstring> shown;
    const ReturnCode code = run([&](ChangeEvents& events) {
        return packUntilCancelled(events, [&] {
            const HWND window = frontDialog();
            if (window == nullptr || !shown.empty()) return;
            EXPECT_FALSE(::IsWindowEnabled(host.window()));
            title = testing::textOf(window);
            shown = testing::childTexts(window);
            ::PostMessageW(::GetDlgItem(window, IDCANCEL), BM_CLICK, 0, 0);
        });
    });
    EXPECT_EQ(code, kUserCancel);
    EXPECT_EQ(title, L"25% - UnLha32");
    ASSERT_EQ(shown.size(), 9U);
    EXPECT_EQ(shown[1], L"C:\\archives\\photos.lzh");
    EXPECT_EQ(shown[3], L"C:\\data\\docs\\read me.txt");
    EXPECT_EQ(shown[5], L"10.0 MB of 40.0 MB");
    EXPECT_EQ(frontDialog(), nullptr);
    EXPECT_TRUE(::IsWindowEnabled(host.window()));
    EXPECT_EQ(::GetFocus(), host.edit());
}

TEST_F(PackingWindows, ShowNoneWhereTheCommandForbidsThem) {
    owner = host.window();
    command.showProgress = false;
    OwnerListener listener;
    progress.window = listener.window();
    const ReturnCode code = run([&](ChangeEvents& events) {
        const auto begun = std::chrono::steady_clock::now();
        return packUntilCancelled(events, [&] {
            EXPECT_EQ(frontDialog(), nullptr);
            // Later than the window would have come.
            if (std::chrono::steady_clock::now() - begun > std::chrono::milliseconds(700)) listener.cancelAt = 1;
        });
    });
    EXPECT_EQ(code, kUserCancel);
}

}  // namespace
}  // namespace archiver
