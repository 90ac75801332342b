#include <algorithm>
#include <string>
#include <vector>

#include "recording/call_log.h"
#include "recording/library.h"
#include "recording/script.h"

namespace recording {
namespace {

constexpr const char* kPrefix = "Zp";
constexpr std::size_t kBuffer = 8192;

archiver::zip_abi::Callbacks callbacks{};

/// Two digits for each byte.
std::string digitsOf(const void* bytes, std::size_t size) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    const auto* const first = static_cast<const unsigned char*>(bytes);
    std::string text;
    for (std::size_t each = 0; each < size; ++each) {
        text += kDigits[first[each] >> 4U];
        text += kDigits[first[each] & 15U];
    }
    return text;
}

void callBack(const std::string& step) {
    const std::size_t blank = std::min(step.find(' '), step.size());
    const std::string word = step.substr(0, blank);
    const std::string value = step.substr(std::min(blank + 1, step.size()));
    // What a callback writes beyond its room would be seen.
    std::vector<char> buffer(kBuffer, '#');
    if (word == "message") callbacks.message(value.c_str(), static_cast<std::uint32_t>(value.size()));
    if (word == "service") CallLog(kPrefix, "Service") << callbacks.service(value.c_str(), 0);
    if (word == "comment") {
        const std::int32_t answer = callbacks.comment(buffer.data());
        CallLog(kPrefix, "Comment") << answer << buffer.data();
    }
    if (word == "password") {
        const std::size_t end = std::min(value.find(' '), value.size());
        const std::int32_t answer =
            callbacks.password(buffer.data(), std::stoi(value.substr(0, end)),
                               value.substr(std::min(end + 1, value.size())).c_str(), "some.zip");
        CallLog(kPrefix, "Password") << answer << buffer.data();
    }
}

}  // namespace

std::int32_t zipInit(const archiver::zip_abi::Callbacks* given) {
    callbacks = *given;
    CallLog(kPrefix, "Init") << (callbacks.message != nullptr) << (callbacks.comment != nullptr)
                             << (callbacks.password != nullptr) << (callbacks.service != nullptr);
    return 1;
}

// The numbers stand as bytes, from the first one behind the texts to the level.
std::int32_t zipSetOptions(const archiver::zip_abi::Options* options) {
    const auto* const first = reinterpret_cast<const char*>(&options->useTemporaryFolder);
    const std::size_t size = static_cast<std::size_t>(&options->level + 1 - first);
    CallLog(kPrefix, "SetOptions") << options->date << options->rootFolder << options->temporaryFolder
                                   << digitsOf(first, size).c_str();
    return 1;
}

std::int32_t zipArchive(const archiver::zip_abi::Command& command) {
    {
        CallLog log(kPrefix, "Archive");
        log << command.count << command.archive;
        for (std::int32_t name = 0; name < command.count; ++name) log << command.names[name];
    }
    const Script script = readScript();
    for (const std::string& step : script.zip) callBack(step);
    return script.code;
}

}  // namespace recording
