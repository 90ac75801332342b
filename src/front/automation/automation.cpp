#include "front/automation/automation.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

#include "shell/current_folder_keeper.h"
#include "shell/scoped_flag.h"

namespace tovar {
namespace {

namespace fs = std::filesystem;
using End = AutomationResult::End;

constexpr std::wstring_view kBusy = L"Another operation is going on.";
constexpr std::wstring_view kCancelled = L"The operation was cancelled.";
constexpr std::wstring_view kListenerFailed = L"The progress handler failed";

/// What the zip engine shows before the name of the file that it is at.
constexpr std::wstring_view kZipLabels[] = {L"Adding... ", L"Updating... ", L"Freshening... ", L"Deleting... "};

bool isFolder(const std::wstring& path) {
    std::error_code error;
    return fs::is_directory(fs::path(path), error);
}

AutomationResult badArgument(std::wstring text) { return {.end = End::BadArgument, .text = std::move(text)}; }

}  // namespace

/// How one operation gets on: it counts, tells the listener, and knows whether to go on.
class Automation::Steps {
public:
    explicit Steps(Automation& automation) : automation_(automation), listener_(automation.listener_) {}

    [[nodiscard]] bool heard() const noexcept { return listener_ != nullptr; }
    void expect(double total) noexcept { total_ = total; }

    /// For drivers, which tell of one member after the other, or of several that are unpacked beside each other.
    bool step(const ExtractProgress& progress) {
        if (progress.member.empty() || progress.state == ExtractProgress::State::Open ||
            progress.state == ExtractProgress::State::End) {
            return goesOn();
        }
        if (progress.total > 0) {
            return report(progress.member, static_cast<double>(progress.done), static_cast<double>(progress.total));
        }
        if (progress.state == ExtractProgress::State::Begin) before_ += std::exchange(size_, progress.size);
        double done = std::max(done_, before_ + progress.written);  // never back
        if (total_ > 0) done = std::min(done, total_);
        return report(progress.member, done, total_);
    }

    bool report(std::wstring_view path, double done, double total) {
        path_ = path;
        done_ = done;
        total_ = total;
        return tell();
    }

    /// All is done: so says the last report, whatever was passed over.
    void finish() {
        if (total_ > 0 && done_ < total_) report(path_, total_, total_);
    }

    [[nodiscard]] bool goesOn() const noexcept { return !failed_ && !automation_.cancelled_; }
    [[nodiscard]] bool failed() const noexcept { return failed_; }
    [[nodiscard]] std::wstring failure() const { return listener_ ? listener_->failure() : std::wstring(); }
    [[nodiscard]] const std::wstring& path() const noexcept { return path_; }

private:
    bool tell() {
        if (!goesOn() || !listener_) return goesOn();
        const std::wstring path = path_;
        switch (listener_->onProgress(path, done_, total_)) {
            case ProgressListener::Answer::GoOn:
                break;
            case ProgressListener::Answer::Cancel:
                automation_.cancelled_ = true;
                break;
            case ProgressListener::Answer::Failed:
                failed_ = true;
                break;
        }
        return goesOn();
    }

    Automation& automation_;
    std::shared_ptr<ProgressListener> listener_;  ///< a handler may let go of itself
    std::wstring path_;
    double done_ = 0, total_ = 0;
    double before_ = 0, size_ = 0;  ///< bytes of the members before, and of the current one
    bool failed_ = false;
};

/// The zip engine's progress dialog, without a dialog.
class Automation::ZipSteps final : public ProgressDialogs {
public:
    explicit ZipSteps(Steps& steps) : steps_(steps) {}
    [[nodiscard]] std::unique_ptr<ArcProgress> show(WindowHandle) override { return std::make_unique<Shown>(steps_); }

private:
    class Shown final : public ArcProgress {
    public:
        explicit Shown(Steps& steps) : steps_(steps) {}
        void SetCaption(std::wstring_view) override {}
        void Summary(std::wstring_view) override {}
        void SetPrg1(float processed, float total) override {
            if (processed >= 0) done_ = processed;
            if (total >= 0) total_ = total;
            if (processed >= 0 && !steps_.path().empty()) tell(steps_.path());
        }
        [[nodiscard]] bool Canceled() const override { return !steps_.goesOn(); }
        void showFolder(std::wstring_view) override {}
        void showFile(std::wstring_view name) override {
            for (const std::wstring_view label : kZipLabels) {
                if (name.starts_with(label)) tell(std::wstring(name.substr(label.size())));
            }
        }

    private:
        void tell(const std::wstring& path) { steps_.report(path, std::min(done_, total_), total_); }

        Steps& steps_;
        double done_ = 0, total_ = 0;
    };

    Steps& steps_;
};

template <class Body>
AutomationResult Automation::run(std::wstring_view file, Body body) {
    if (ports_.working) return kept({.end = End::Busy, .text = std::wstring(kBusy)});
    if (file.empty()) return kept(badArgument(L"The archive has no name."));
    const ScopedFlag working(ports_.working);
    const CurrentFolderKeeper keeper(ports_.paths);
    cancelled_ = false;
    messages_.clear();
    password_.forget();
    Steps steps(*this);
    ZipSteps dialogs(steps);
    AutomationResult result;
    try {
        ArchiveJobs jobs(jobPorts(steps, dialogs));
        result = body(jobs, fullPath(file), steps);
    } catch (const std::bad_alloc&) {
        lastError_ = L"Memory ran out.";
        throw;
    } catch (const std::exception&) {
        result = badArgument(std::wstring(file) + L": there can be no such path.");
    }
    password_.forget();
    return kept(std::move(result));
}

AutomationResult Automation::list(std::wstring_view file, ListedArchive& archive) {
    return run(file, [&](ArchiveJobs& jobs, const std::wstring& path, Steps& steps) {
        ArchiveJobs::Opened opened = jobs.open(path);
        const JobResult result = opened.result.done() ? jobs.list(opened) : opened.result;
        if (result.done()) archive = std::move(opened.driver);
        return told(result, path, steps);
    });
}

AutomationResult Automation::test(std::wstring_view file, std::wstring_view password, bool& good) {
    good = false;
    return run(file, [&](ArchiveJobs& jobs, const std::wstring& path, Steps& steps) {
        const ArchiveJobs::Opened opened = jobs.open(path);
        const JobResult result = opened.result.done() ? jobs.test(opened, password) : opened.result;
        good = result.done();
        return told(result, path, steps);
    });
}

AutomationResult Automation::extract(const Extraction& extraction) {
    return run(extraction.file, [&](ArchiveJobs& jobs, const std::wstring& path, Steps& steps) {
        if (extraction.target.empty()) return badArgument(L"The target folder has no name.");
        const std::wstring target = fullPath(extraction.target);
        const ArchiveJobs::Opened opened = jobs.open(path);
        if (!opened.result.done()) return told(opened.result, path, steps);
        if (steps.heard() && extraction.members.empty() && jobs.list(opened).done()) {
            double total = 0;
            const EntryTable& entries = opened.driver->entries();
            for (std::uint32_t each = 0; each < entries.size(); ++each) {
                total += static_cast<double>(entries.record(each).original);
            }
            steps.expect(total);
        }
        if (!extraction.password.empty()) password_.giveOnce(std::wstring(extraction.password));
        const JobResult result =
            jobs.extract(opened, {.folder = target,
                                  .members = extraction.members,
                                  .keepFolders = extraction.keepFolders,
                                  .existing = extraction.overwrite ? ExistingFiles::Overwrite : ExistingFiles::Skip,
                                  .password = extraction.password});
        if (result.done()) steps.finish();
        return told(result, path, steps);
    });
}

AutomationResult Automation::change(std::wstring_view file, std::wstring_view base, const ArchiveChange& change,
                                    std::wstring_view password) {
    return run(file, [&](ArchiveJobs& jobs, const std::wstring& path, Steps& steps) {
        const bool deletes = change.action == ArchiveChange::Action::Delete;
        if (change.names.empty()) {
            return badArgument(deletes ? L"There are no members to delete." : L"There are no files to pack.");
        }
        if (change.level && (*change.level < 0 || *change.level > 9)) {
            return badArgument(L"The level is not one of 0 to 9.");
        }
        std::wstring folder(base);
        if (folder.empty()) {
            const fs::path first(change.names.front());
            if (!deletes && first.is_absolute()) folder = first.parent_path().wstring();
        }
        folder = folder.empty() ? fs::current_path().wstring() : fullPath(folder);
        if (!deletes && !isFolder(folder)) return badArgument(folder + L": there is no such folder.");
        ArchiveChange wanted = change;
        wanted.encrypt = !password.empty();
        const JobResult result =
            jobs.change(path, folder, wanted, [&] { return std::optional(std::wstring(password)); });
        if (result.done()) steps.finish();
        return told(result, path, steps);
    });
}

AutomationResult Automation::told(const JobResult& job, const std::wstring& file, const Steps& steps) const {
    if (job.done()) return {};
    if (steps.failed()) {
        const std::wstring failure = steps.failure();
        return {.end = End::ListenerFailed,
                .text = std::wstring(kListenerFailed) + (failure.empty() ? L"." : L": " + failure)};
    }
    if (cancelled_) return {.end = End::Cancelled, .text = std::wstring(kCancelled)};
    std::wstring problem = job.problem;
    // Drivers without return codes of the convention say in boxes what is wrong.
    if (job.end == JobEnd::Failed && job.library.message.empty() && !messages_.last().empty()) {
        problem = messages_.last();
    }
    std::wstring text = (job.about.empty() ? file : job.about) + L": " + problem;
    if (!text.ends_with(L'.') && !text.ends_with(L'!')) text += L'.';
    return {.end = End::Job, .job = job.end, .text = std::move(text)};
}

AutomationResult Automation::kept(AutomationResult result) {
    lastError_ = result.text;
    return result;
}

JobPorts Automation::jobPorts(Steps& steps, ProgressDialogs& dialogs) {
    return {.drivers = {ports_.libraries, messages_, ports_.regional, ports_.files, password_},
            .zipLibraries = ports_.zipLibraries,
            .zipProgress = dialogs,
            .workFolder = ports_.workFolder,
            .paths = ports_.paths,
            .use = ports_.use,
            .progress = [&steps](const ExtractProgress& progress) { return steps.step(progress); }};
}

std::wstring Automation::fullPath(std::wstring_view path) const {
    return fs::absolute(fs::path(path)).lexically_normal().wstring();
}

}  // namespace tovar
