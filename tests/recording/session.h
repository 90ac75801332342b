#pragma once
#include <filesystem>
#include <string>
#include <vector>

namespace recording {

/// Whether a recording library exports SetUnicodeMode.
enum class Texts { Utf8, Ansi };

/// A test's dealings with recording archiver libraries: a folder of its own, with their script and log. The folder goes
/// with the session; libraries that were copied into it must be unloaded before. One session at a time.
class Session {
public:
    Session();
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }

    /// Writes the script that the libraries answer by from now on (script.h).
    void script(const std::string& text) const;

    /// The lines of the log (call_log.h) since the last clearLog.
    [[nodiscard]] std::vector<std::string> log() const;
    void clearLog() const;

    /// Copies a recording library, which lies beside the program.
    /// @param name  file name of the copy
    /// @return its full path
    static std::filesystem::path install(const std::filesystem::path& folder, const std::filesystem::path& name,
                                         Texts texts);

private:
    std::filesystem::path folder_;
};

/// Where the running program lies.
[[nodiscard]] std::filesystem::path programFolder();

/// A new empty folder among the system's temporary ones.
[[nodiscard]] std::filesystem::path makeTemporaryFolder();

void setEnvironment(const char* variable, const std::filesystem::path& value);

}  // namespace recording
