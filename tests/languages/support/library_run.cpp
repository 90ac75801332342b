#include "languages/support/library_run.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <vector>

#include "archivers/module.h"

namespace archiver::testing {

namespace {

std::string utf8Of(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string bytesOfFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void replaceWord(std::string& line, std::string_view word, const std::string& text) {
    const std::size_t at = line.find(word);
    if (at != std::string::npos) line.replace(at, word.size(), text);
}

}  // namespace

Files filesBelow(const std::filesystem::path& folder) {
    Files files;
    if (!std::filesystem::exists(folder)) return files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const std::u8string generic = entry.path().lexically_relative(folder).generic_u8string();
        const std::string name(generic.begin(), generic.end());
        if (entry.is_symlink()) {
            files[name] = "link to " + utf8Of(std::filesystem::read_symlink(entry.path()));
        } else if (entry.is_regular_file()) {
            files[name] = bytesOfFile(entry.path());
        } else if (std::filesystem::is_empty(entry.path())) {
            files[name + '/'];
        }
    }
    return files;
}

std::string fixture(const char* name) { return utf8Of((programFolder() / "data" / name).make_preferred()); }

void makeOld(const std::filesystem::path& file) {
    std::filesystem::last_write_time(file,
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * 365 * 36));
}

void makeNew(const std::filesystem::path& file) {
    std::filesystem::last_write_time(file,
                                     std::filesystem::file_time_type::clock::now() + std::chrono::hours(24 * 365));
}

LibraryRun::LibraryRun(const char* module, const char* prefix, const char* folder)
    : scratch(folder), library_(module, prefix) {
    EXPECT_TRUE(library_.loaded());
    library_.call<fn::SetBool>("SetUnicodeMode", 1);
}

std::int32_t LibraryRun::operator()(std::string line) {
    std::filesystem::path folder = target();
    folder /= "";
    replaceWord(line, "ARC", '"' + archive + '"');
    replaceWord(line, "OUT", '"' + utf8Of(folder.make_preferred()) + '"');
    std::vector<char> text(20000);
    const std::int32_t code =
        library_.call<fn::Run>("", nullptr, line.c_str(), text.data(), static_cast<std::uint32_t>(text.size()));
    text_ = text.data();
    return code;
}

}  // namespace archiver::testing
