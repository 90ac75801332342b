// Times whole commands side by side: measure [--empty FOLDER] RUNS NAME COMMAND [NAME COMMAND ...]
//
// Every command is one word list for the shell's rules of blanks only (no quotes); its output is thrown away. Before
// each run FOLDER is emptied, and becomes the command's current folder; that is not part of the time. The
// commands take turns, so a machine whose speed drifts treats them alike. Per command one line: median of the
// wall-clock time, least time, peak memory, and how many times as long as the first command it took.

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

extern char** environ;

namespace {

struct Contender {
    std::string name;
    std::vector<std::string> words;
    std::vector<double> seconds;
    long peakKib = 0;
    int status = 0;
};

/// A folder that every run starts with empty.
bool makeEmpty(const std::string& folder) {
    if (folder.empty()) return true;
    std::error_code error;
    std::filesystem::remove_all(folder, error);
    return std::filesystem::create_directories(folder, error) && chdir(folder.c_str()) == 0;
}

bool runOnce(Contender& contender) {
    std::vector<char*> arguments;
    for (auto& word : contender.words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    const auto begin = std::chrono::steady_clock::now();
    pid_t child = 0;
    const int error = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) return false;
    rusage usage{};
    if (wait4(child, &contender.status, 0, &usage) != child) return false;
    contender.seconds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
    contender.peakKib = std::max(contender.peakKib, usage.ru_maxrss);
    return true;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const auto middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

}  // namespace

int main(int count, char** arguments) {
    std::string folder;
    if (count > 2 && std::string(arguments[1]) == "--empty") {
        folder = arguments[2];
        arguments += 2;
        count -= 2;
    }
    if (count < 4 || count % 2 != 0) {
        std::fprintf(stderr, "measure [--empty FOLDER] RUNS NAME COMMAND [NAME COMMAND ...]\n");
        return 2;
    }
    const int runs = std::max(1, std::atoi(arguments[1]));
    std::vector<Contender> contenders;
    for (int i = 2; i + 1 < count; i += 2) {
        Contender contender;
        contender.name = arguments[i];
        std::istringstream words(arguments[i + 1]);
        for (std::string word; words >> word;) contender.words.push_back(word);
        if (contender.words.empty()) return 2;
        contenders.push_back(contender);
    }
    for (int run = 0; run < runs + 1; ++run) {  // the first run warms the caches and is not counted
        for (auto& contender : contenders) {
            if (!makeEmpty(folder) || !runOnce(contender)) {
                std::fprintf(stderr, "%s could not be run\n", contender.name.c_str());
                return 1;
            }
            if (run == 0) contender.seconds.clear();
        }
    }
    const double first = median(contenders.front().seconds);
    for (const auto& contender : contenders) {
        const double middle = median(contender.seconds);
        std::printf("   %-28s %9.1f ms  least %9.1f ms  %8.1f MiB  x %.2f%s\n", contender.name.c_str(), middle * 1000,
                    *std::min_element(contender.seconds.begin(), contender.seconds.end()) * 1000,
                    static_cast<double>(contender.peakKib) / 1024, middle / first,
                    contender.status == 0 ? "" : "  (it ended with an error)");
    }
    return 0;
}
