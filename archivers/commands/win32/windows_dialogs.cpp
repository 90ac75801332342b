#include "archivers/commands/win32/windows_dialogs.h"

#include "archivers/commands/amount_texts.h"
#include "archivers/commands/command_paths.h"
#include "archivers/commands/question_texts.h"
#include "archivers/commands/shown_names.h"
#include "archivers/commands/win32/disk_space_dialog.h"
#include "archivers/commands/win32/password_dialog.h"
#include "archivers/commands/win32/replace_dialog.h"

namespace archiver {

/// While the user answers, no work is done: that time counts neither as slowness nor towards the progress window.
class WindowsDialogs::Question {
public:
    explicit Question(WindowsDialogs& dialogs) : dialogs_(dialogs), begin_(dialogs.clock_()) {}
    ~Question() {
        const ProgressTime idle = dialogs_.clock_() - begin_;
        dialogs_.schedule_.passOver(idle);
        dialogs_.meter_.passOver(idle);
    }
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;

private:
    WindowsDialogs& dialogs_;
    ProgressTime begin_;
};

WindowsDialogs::WindowsDialogs(const DialogSettings& settings, ProgressClock clock)
    : settings_(settings),
      clock_(std::move(clock)),
      meter_(settings.title),
      owner_(static_cast<HWND>(settings.owner)),
      window_(settings.title, shownName(utf8Of(settings.archive))) {}

WindowsDialogs::~WindowsDialogs() {
    owner_.enable();
    window_.close();
}

bool WindowsDialogs::progress(const UnpackProgress& progress) {
    const ProgressTime now = clock_();
    const ProgressSchedule::Due due = schedule_.at(now);
    if (due.messages) {
        runMessages();
        if (owner_.gone() || window_.cancelled()) cancelled_ = true;
    }
    if (due.news && !cancelled_) {
        try {
            tell(progress, now, due.appear);
        } catch (...) {
            // Without memory for its texts, the window stays as it is.
        }
    }
    return !cancelled_;
}

void WindowsDialogs::tell(const UnpackProgress& progress, ProgressTime now, bool appear) {
    meter_.note(progress, now);
    if (appear && settings_.showProgress && owner_.window() != nullptr) {
        schedule_.appeared();
        window_.open(owner_.window());
    }
    if (window_.window() != nullptr) {
        window_.show(meter_.picture(), progress.member != nullptr ? shownName(progress.member->name) : std::string());
    }
}

/// All of the thread's messages, or those of our own window.
void WindowsDialogs::runMessages() noexcept {
    // A window that never paints itself completely would give a message without end.
    constexpr int kAtMost = 256;
    MSG message;
    for (int count = 0; count < kAtMost; ++count) {
        const HWND own = window_.window();
        if (own == nullptr && !settings_.pumpMessages) return;
        if (!::PeekMessageW(&message, settings_.pumpMessages ? nullptr : own, 0, 0, PM_REMOVE)) return;
        if (message.message == WM_QUIT) {  // the host's loop is to see it as well
            ::PostQuitMessage(static_cast<int>(message.wParam));
            cancelled_ = true;
            return;
        }
        if (own != nullptr && ::IsDialogMessageW(own, &message)) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

/// Asks over the foremost window. Without a window, and without memory for one, the answer is `otherwise`.
template <class Answer, class Ask>
Answer WindowsDialogs::ask(Answer otherwise, Ask ask) {
    if (owner_.window() == nullptr || owner_.gone()) return otherwise;
    const Question pause(*this);
    try {
        return ask(window_.window() != nullptr ? window_.window() : owner_.window());
    } catch (...) {
        return otherwise;
    }
}

ReplaceAnswer WindowsDialogs::askReplace(const ReplaceQuestion& question) {
    const ReplaceAnswer answer =
        ask(ReplaceAnswer::kNo, [&](HWND over) { return ReplaceDialog(settings_.title, factsOf(question)).ask(over); });
    return owner_.gone() ? ReplaceAnswer::kCancel : answer;
}

std::optional<std::string> WindowsDialogs::askPassword(const std::filesystem::path& archive, const Member& member,
                                                       unsigned attempt) {
    return ask(std::optional<std::string>(), [&](HWND over) {
        PasswordDialog dialog(settings_.title, shownName(utf8Of(archive)), shownName(member.name), attempt > 1);
        std::optional<std::string> answer = dialog.ask(over);
        passwordDeclined_ = !answer;
        return answer;
    });
}

bool WindowsDialogs::askDiskSpace(std::uint64_t needed, std::uint64_t available) {
    return ask(false, [&](HWND over) {
        return DiskSpaceDialog(settings_.title, exactSizeText(needed), exactSizeText(available)).ask(over);
    });
}

std::unique_ptr<CommandDialogs> makeCommandDialogs(const DialogSettings& settings) {
    return std::make_unique<WindowsDialogs>(settings, [] {
        return std::chrono::duration_cast<ProgressTime>(std::chrono::steady_clock::now().time_since_epoch());
    });
}

WindowHandle consoleOwner() noexcept { return nullptr; }

}  // namespace archiver
