#include "recording/session.h"

#include <fstream>
#include <stdexcept>

namespace recording {
namespace {

constexpr const char* kScriptVariable = "TOVAREX_RECORDING_SCRIPT";
constexpr const char* kLogVariable = "TOVAREX_RECORDING_LOG";

#if defined(_WIN32)
constexpr const char* kEnding = ".dll";
#else
constexpr const char* kEnding = ".so";
#endif

}  // namespace

Session::Session() : folder_(makeTemporaryFolder()) {
    script("");
    clearLog();
    setEnvironment(kScriptVariable, folder_ / "script.txt");
    setEnvironment(kLogVariable, folder_ / "log.txt");
}

Session::~Session() {
    setEnvironment(kScriptVariable, {});
    setEnvironment(kLogVariable, {});
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void Session::script(const std::string& text) const {
    std::ofstream file(folder_ / "script.txt", std::ios::binary | std::ios::trunc);
    if (!(file << text << std::flush)) throw std::runtime_error("the script cannot be written");
}

std::vector<std::string> Session::log() const {
    std::ifstream file(folder_ / "log.txt", std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
}

void Session::clearLog() const { std::ofstream(folder_ / "log.txt", std::ios::binary | std::ios::trunc); }

std::filesystem::path Session::install(const std::filesystem::path& folder, const std::filesystem::path& name,
                                       Texts texts) {
    std::filesystem::path source =
        programFolder() / (texts == Texts::Utf8 ? "RecordingArchiver" : "RecordingArchiverAnsi");
    source += kEnding;
    std::filesystem::create_directories(folder);
    std::filesystem::copy_file(source, folder / name, std::filesystem::copy_options::overwrite_existing);
    return folder / name;
}

}  // namespace recording
