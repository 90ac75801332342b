#pragma once
#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "shell/win32/handles.h"

namespace tovar {

/// Work beside the thread of the windows that may wait for another computer. It has ended when the object has gone;
/// what it waits for is then broken off.
class SideThread {
public:
    /// Nothing thrown in the work goes further. Where no thread can be had, the work is done at once.
    explicit SideThread(std::function<void()> work);
    ~SideThread();
    SideThread(const SideThread&) = delete;
    SideThread& operator=(const SideThread&) = delete;

    /// @return whether the work is done; waits for it so long
    [[nodiscard]] bool isDone(DWORD milliseconds = 0) const noexcept;
    /// Breaks off what the work waits for; it may go on with something else.
    void interrupt() noexcept;

private:
    static DWORD WINAPI run(void* self) noexcept;

    std::function<void()> work_;
    UniqueHandle thread_;
};

/// Questions, each with a number of the asker's choice, that are answered beside the thread of the windows.
template <class Answer>
class SideWork {
public:
    using Question = std::function<Answer()>;

    /// @param failed  the answer where there can be none: the question threw, or too many are open already
    explicit SideWork(Question failed) : failed_(std::move(failed)) {}
    ~SideWork() {
        for (auto& [key, job] : jobs_) job->thread.interrupt();
        for (auto& job : dropped_) job->thread.interrupt();
    }
    SideWork(const SideWork&) = delete;
    SideWork& operator=(const SideWork&) = delete;

    /// Asks instead of an earlier question of that number.
    /// @param patience  milliseconds to wait for the answer
    /// @return nullopt when it is not there yet: takeAnswers has it later
    std::optional<Answer> ask(std::uint32_t key, Question question, DWORD patience) {
        drop(key);
        if (jobs_.size() + dropped_.size() >= kMostThreads) return failed_();
        auto job = std::make_unique<Job>(std::move(question), failed_());
        if (job->thread.isDone(patience)) return std::move(job->answer);
        jobs_.emplace(key, std::move(job));
        return std::nullopt;
    }
    void drop(std::uint32_t key) {
        std::erase_if(dropped_, [](const auto& job) { return job->thread.isDone(); });
        const auto found = jobs_.find(key);
        if (found == jobs_.end()) return;
        found->second->thread.interrupt();
        dropped_.push_back(std::move(found->second));
        jobs_.erase(found);
    }
    [[nodiscard]] bool isOpen(std::uint32_t key) const { return jobs_.contains(key); }
    [[nodiscard]] std::vector<std::pair<std::uint32_t, Answer>> takeAnswers() {
        std::vector<std::pair<std::uint32_t, Answer>> answers;
        for (auto each = jobs_.begin(); each != jobs_.end();) {
            if (!each->second->thread.isDone()) {
                ++each;
                continue;
            }
            answers.emplace_back(each->first, std::move(each->second->answer));
            each = jobs_.erase(each);
        }
        return answers;
    }

private:
    /// A computer that does not answer keeps a thread for half a minute; a user can look at many in that time.
    static constexpr std::size_t kMostThreads = 24;

    struct Job {
        Job(Question asked, Answer failed)
            : question(std::move(asked)), answer(std::move(failed)), thread([this] { answer = question(); }) {}
        Question question;
        Answer answer;
        SideThread thread;  // the last: it ends before what it uses goes
    };

    Question failed_;
    std::map<std::uint32_t, std::unique_ptr<Job>> jobs_;
    std::vector<std::unique_ptr<Job>> dropped_;  ///< nobody wants their answers any more
};

}  // namespace tovar
