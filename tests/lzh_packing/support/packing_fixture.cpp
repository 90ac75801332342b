#include "lzh_packing/support/packing_fixture.h"

#include <algorithm>
#include <chrono>
#include <random>

#include "archivers/commands/command_messages.h"
#include "archivers/formats/lzh/lzh_reader.h"
#include "archivers/unlha32/lha_language.h"
#include "archivers/unpacking/utf8_path.h"

namespace archiver::test {

void RecordedEvents::warning(PackWarning kind, std::string_view name) {
    lines.push_back("warning " + std::string(name) + ": " + std::string(messageOf(kind)));
}

ReturnCode LzhPackingTest::run(std::string line, PackingFiles& files, unsigned threads) {
    const auto replace = [&line](std::string_view word, const std::string& by) {
        for (std::size_t at = 0; (at = line.find(word, at)) != std::string::npos; at += by.size()) {
            line.replace(at, word.size(), by);
        }
    };
    replace("ARC", '"' + utf8OfPath(archive_) + '"');
    replace("BASE", '"' + utf8OfPath(base_) + "/\"");
    if (sources_ == &systemSources()) std::filesystem::create_directories(base_);
    auto parsed = kLhaLanguage.parse(line, utf8Codec());
    if (const auto* const code = std::get_if<ReturnCode>(&parsed)) return *code;
    return changeLzh(std::get<Command>(parsed), threads, events_, *sources_, files);
}

std::filesystem::path LzhPackingTest::source(const std::string& name, std::string_view bytes) const {
    std::filesystem::create_directories((base_ / pathOfUtf8(name)).parent_path());
    return folder_.write(base_ / pathOfUtf8(name), bytes);
}

void LzhPackingTest::age(const std::string& name, int seconds) const {
    using namespace std::chrono;
    const auto then = sys_days(year(2001) / 5 / 17) + 12h + std::chrono::seconds(seconds);
    std::filesystem::last_write_time(base_ / pathOfUtf8(name), file_clock::from_sys(then));
}

OpenResult LzhPackingTest::openArchive() const { return openLzh(archive_); }

Contents LzhPackingTest::contents() const {
    Contents contents;
    const OpenResult opened = openArchive();
    EXPECT_EQ(opened.code, kOk);
    if (!opened.reader) return contents;
    Member member;
    ReturnCode code = kOk;
    while ((code = opened.reader->next(member)) == kOk) {
        const Unpacked unpacked = unpack(*opened.reader);
        EXPECT_EQ(unpacked.code, kOk) << member.name;
        EXPECT_TRUE(contents.emplace(member.name, unpacked.bytes).second) << member.name << " is there twice";
    }
    EXPECT_EQ(code, kNoMoreEntries);
    return contents;
}

Member LzhPackingTest::member(std::string_view name) const {
    for (Member& each : walk(openArchive()).members) {
        if (each.name == name) return std::move(each);
    }
    ADD_FAILURE() << "no member " << name;
    return {};
}

std::vector<std::string> LzhPackingTest::sources() const {
    std::vector<std::string> names;
    for (const auto& each : std::filesystem::recursive_directory_iterator(base_)) {
        names.push_back(utf8OfPath(each.path().lexically_relative(base_)) + (each.is_directory() ? "/" : ""));
    }
    std::ranges::sort(names);
    return names;
}

std::vector<std::string> LzhPackingTest::beside() const {
    std::vector<std::string> names;
    for (const auto& each : std::filesystem::directory_iterator(folder_.path())) {
        names.push_back(utf8OfPath(each.path().filename()));
    }
    std::ranges::sort(names);
    return names;
}

std::string randomBytes(std::size_t size, unsigned seed) {
    struct Source {
        std::mt19937 random;
        std::string bytes;
    };
    // Made once as far as they are asked for, as making them takes longer than packing them does.
    static std::map<unsigned, Source> sources;
    Source& source = sources.try_emplace(seed, Source{std::mt19937(seed), {}}).first->second;
    while (source.bytes.size() < size) source.bytes += static_cast<char>(source.random() & 0xFF);
    return source.bytes.substr(0, size);
}

std::string textOf(std::size_t size) {
    static std::mt19937 random(7);
    static std::string text;
    while (text.size() < size) text += "line " + std::to_string(random() % 3000) + " of a text\r\n";
    return text.substr(0, size);
}

}  // namespace archiver::test
