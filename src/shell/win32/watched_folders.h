#pragma once
#include <windows.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "shell/win32/folder_watch.h"
#include "shell/win32/long_paths.h"
#include "shell/win32/side_thread.h"

namespace tovar {

/// Folders of this computer that are looked into and watched from before that on, so that nothing that happens
/// meanwhile is missed; each has a number of the user's choice. Folders of other computers, and on disks that may have
/// to be put in or woken up, are looked into in threads of their own.
/// @tparam Found  what a look into a folder finds
template <class Found>
class WatchedFolders {
public:
    /// What looks into a folder; called in any thread.
    using Reader = std::function<Found(const std::wstring& path)>;

    /// @param failed  what was found where a look throws, or too many are waited for already
    WatchedFolders(Reader reader, const std::function<Found()>& failed)
        : reader_(std::move(reader)), slow_([failed] {
              return Answer{failed(), std::nullopt};
          }) {}

    /// Looks into a folder. An earlier look of that number is not answered any more.
    /// @param path  absolute, of any length
    /// @return nullopt where that takes long: takeLate has it some time
    std::optional<Found> look(std::uint32_t key, const std::wstring& path) {
        slow_.drop(key);
        if (!isSlowPlace(path)) {
            if (!watch_.watches(key)) watch_.add(key, path);
            return reader_(path);
        }
        const auto question = [reader = reader_, path, watched = watch_.watches(key)] {
            Answer answer;
            if (!watched) answer.watch = FolderWatch::begin(path);
            answer.found = reader(path);
            return answer;
        };
        std::optional<Answer> answer = slow_.ask(key, question, kPatience);
        return answer ? std::optional(take(key, std::move(*answer))) : std::nullopt;
    }
    /// @return what has come in since it was last asked
    [[nodiscard]] std::vector<std::pair<std::uint32_t, Found>> takeLate() {
        std::vector<std::pair<std::uint32_t, Found>> late;
        for (auto& [key, answer] : slow_.takeAnswers()) late.emplace_back(key, take(key, std::move(answer)));
        return late;
    }

    /// Watches a folder without looking into it.
    void watch(std::uint32_t key, const std::wstring& path) { watch_.add(key, path); }
    /// Forgets also what was asked about it.
    void unwatch(std::uint32_t key) {
        watch_.remove(key);
        slow_.drop(key);
    }
    /// @return the numbers of all that have changed since it was last asked
    [[nodiscard]] std::vector<std::uint32_t> takeChanges() { return watch_.takeChanges(); }

private:
    static constexpr DWORD kPatience = 150;  // milliseconds, in which most answers come and no user waits for a window

    struct Answer {
        Found found;
        std::optional<FolderWatch::Watched> watch;
    };
    Found take(std::uint32_t key, Answer answer) {
        if (answer.watch) watch_.adopt(key, std::move(*answer.watch));
        return std::move(answer.found);
    }

    Reader reader_;
    FolderWatch watch_;
    SideWork<Answer> slow_;
};

}  // namespace tovar
