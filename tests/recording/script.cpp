#include "recording/script.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "recording/files.h"

namespace recording {
namespace {

std::int64_t numberOf(const std::string& text) { return std::strtoll(text.c_str(), nullptr, 0); }

std::string unescaped(const std::string& text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char next = at + 1 < text.size() ? text[at + 1] : '\0';
        if (text[at] != '\\' || next == '\0') {
            bytes += text[at];
        } else if (next == 'x' && at + 3 < text.size()) {
            bytes += static_cast<char>(std::strtol(text.substr(at + 2, 2).c_str(), nullptr, 16));
            at += 3;
        } else {
            bytes += next == 'n' ? '\n' : next == 'r' ? '\r' : next;
            ++at;
        }
    }
    return bytes;
}

template <std::size_t Size>
void fillField(char (&field)[Size], const std::string& text) {
    std::copy_n(text.begin(), std::min(text.size(), Size), field);
}

void setField(Entry& entry, const std::string& name, const std::string& value) {
    archiver::IndividualInfo& info = entry.info;
    const std::int64_t number = numberOf(value);
    if (name == "name") fillField(info.fileName, unescaped(value));
    if (name == "attribute") fillField(info.attribute, unescaped(value));
    if (name == "mode") fillField(info.mode, unescaped(value));
    if (name == "original") info.originalSize = static_cast<std::uint32_t>(entry.original64 = number);
    if (name == "packed") info.compressedSize = static_cast<std::uint32_t>(entry.packed64 = number);
    if (name == "original64") entry.original64 = number;
    if (name == "packed64") entry.packed64 = number;
    if (name == "crc") info.crc = static_cast<std::uint32_t>(number);
    if (name == "ratio") info.ratio = static_cast<std::uint16_t>(number);
    if (name == "date") info.date = static_cast<std::uint16_t>(number);
    if (name == "time") info.time = static_cast<std::uint16_t>(number);
    if (name == "flags") entry.flags = static_cast<std::uint32_t>(number);
    if (name == "method") entry.method = static_cast<std::uint32_t>(number);
    if (name == "attributes") entry.attributes = static_cast<std::uint32_t>(number);
    if (name == "repeat") entry.repeat = static_cast<std::uint32_t>(number);
}

Entry entryOf(const std::string& fields) {
    Entry entry;
    std::istringstream words(fields);
    for (std::string word; words >> word;) {
        const std::size_t sign = std::min(word.find('='), word.size());
        setField(entry, word.substr(0, sign), word.substr(std::min(sign + 1, word.size())));
    }
    return entry;
}

void setLine(Script& script, const std::string& word, const std::string& value) {
    const std::int64_t number = numberOf(value);
    const auto number32 = static_cast<std::int32_t>(number);
    if (word == "version") script.version = static_cast<std::uint32_t>(number);
    if (word == "running") script.running = number32;
    if (word == "check") script.check = number32;
    if (word == "handle") script.opens = number != 0;
    if (word == "entry") script.entries.push_back(entryOf(value));
    if (word == "error") script.entries.emplace_back().error = number32;
    if (word == "end") script.end = number32;
    if (word == "process") script.process = number32;
    if (word == "password") script.password = number32;
    if (word == "data") script.data = static_cast<std::uint32_t>(number);
    if (word == "code") script.code = number32;
    if (word == "output") script.output = unescaped(value);
    if (word == "zip") script.zip.push_back(unescaped(value));
    if (word == "lists") script.lists = number != 0;
    if (word == "fill") script.fill = value.empty() ? '\0' : value.front();
    if (word == "dialog") script.dialog = number32;
    if (word == "unicode") script.unicode = number32;
}

}  // namespace

Script parseScript(const std::string& text) {
    Script script;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with('\r')) line.pop_back();
        if (line.empty() || line.starts_with('#')) continue;
        const std::size_t blank = std::min(line.find(' '), line.size());
        setLine(script, line.substr(0, blank), line.substr(std::min(blank + 1, line.size())));
    }
    return script;
}

Script readScript() { return parseScript(readFileNamedBy("TOVAREX_RECORDING_SCRIPT")); }

}  // namespace recording
