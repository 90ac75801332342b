#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "archivers/cab32/cab_language.h"
#include "archivers/commands/command.h"
#include "archivers/commands/response_file.h"
#include "archivers/convention/wildcard.h"
#include "archivers/formats/utf8.h"
#include "archivers/tar32/tar_language.h"
#include "archivers/unarj32j/arj_language.h"
#include "archivers/unlha32/lha_language.h"
#include "archivers/unrar32/rar_language.h"
#include "archivers/unzip32/unzip_language.h"

/// Reads any bytes as command lines, response files and patterns. The first byte chooses; seeds: tests/data/commands.
namespace archiver {
namespace {

const CommandLanguage* const kLanguages[] = {&kUnZipLanguage, &kTarLanguage, &kRarLanguage,
                                             &kArjLanguage,   &kLhaLanguage, &kCabLanguage};

void require(bool held) {
    if (!held) std::abort();
}

Member memberNamed(std::string name) {
    Member member;
    member.name = std::move(name);
    member.originalSize = UINT64_MAX;
    member.packedSize = 1;
    member.dosDate = 0xFFFF;
    member.method = "Deflate";
    return member;
}

/// What a run would do with an understood line.
void use(const Command& command, CommandTexts& texts, std::string_view line) {
    require(!command.archive.empty());
    std::string out;
    texts.begin(command, out);
    const Member members[] = {memberNamed("docs/"), memberNamed("docs/a.txt"), memberNamed(std::string(line))};
    const bool lists = command.action == Command::Action::kList || command.action == Command::Action::kListVerbose;
    for (const Member& member : members) {
        if (command.chosen) command.chosen(member);
        for (const Command::Part& part : command.furtherParts) {
            if (part.chosen) part.chosen(member);
        }
        if (lists) {
            texts.row(member, out);
        } else {
            texts.printed(member, out);
            texts.member({.member = member, .outcome = MemberOutcome::kFailed, .code = kFileCrc, .file = {}}, out);
        }
    }
    UnpackSummary summary;
    texts.end(command, summary, out);
    require(isUtf8(out));
}

void parse(const CommandLanguage& language, std::string_view bytes) {
    std::string line = utf8Codec().decode(bytes);
    // A log file is made when a line names it: not where an input says.
    for (std::size_t at = 0; (at = line.find_first_of("gG", at)) != std::string::npos; ++at) line[at] = 'h';
    auto parsed = language.parse(line, utf8Codec());
    const auto texts = language.texts();
    if (auto* const command = std::get_if<Command>(&parsed)) {
        use(*command, *texts, line);
        return;
    }
    const ReturnCode code = std::get<ReturnCode>(parsed);
    require(code != kOk);
    std::string out;
    texts->refused(nullptr, code, out);
    require(!out.empty());
}

/// The first row is patterns, the others are names.
void match(std::string_view bytes) {
    const std::size_t end = bytes.find('\n');
    const std::string name(end == std::string_view::npos ? bytes : bytes.substr(end + 1));
    const std::vector<std::string> words = splitWords(bytes.substr(0, end));
    for (const PatternScope scope : {PatternScope::kByPattern, PatternScope::kWholePath, PatternScope::kLastPart,
                                     PatternScope::kFirstParts, PatternScope::kFolderAndLast}) {
        for (const bool classes : {false, true}) {
            WildcardSet set(words, {.scope = scope, .classes = classes});
            const bool matched = set.matches(name);
            require(set.matches(name) == matched && (matched || !set.matchesAll()));
        }
    }
}

void respond(std::string_view bytes) {
    for (const std::string& name : responseWords(bytes, utf8Codec())) {
        require(!name.empty() && isUtf8(name) && name.find('"') == std::string::npos);
    }
}

}  // namespace
}  // namespace archiver

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kMost = 4096;  // globs and their names together cost their product
    if (size == 0 || size > kMost) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t choice = static_cast<std::size_t>(data[0] - '0') % (std::size(archiver::kLanguages) + 2);
    if (choice < std::size(archiver::kLanguages)) {
        archiver::parse(*archiver::kLanguages[choice], bytes);
    } else if (choice == std::size(archiver::kLanguages)) {
        archiver::match(bytes);
    } else {
        archiver::respond(bytes);
    }
    return 0;
}
