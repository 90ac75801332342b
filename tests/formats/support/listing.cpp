#include "formats/support/listing.h"

#include <thread>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace archiver::test {
namespace {

std::string dosText(const Member& member) {
    char text[64];
    std::snprintf(text, sizeof(text), "%04d-%02d-%02d %02d:%02d:%02d", (member.dosDate >> 9) + 1980,
                  member.dosDate >> 5 & 15, member.dosDate & 31, member.dosTime >> 11, member.dosTime >> 5 & 63,
                  (member.dosTime & 31) * 2);
    return text;
}

std::string utcText(const Moment& moment) {
    const std::chrono::sys_seconds time{std::chrono::seconds(moment.seconds)};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    char text[64];
    std::snprintf(text, sizeof(text), "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()));
    return text;
}

}  // namespace

std::vector<std::string> Listing::names() const {
    std::vector<std::string> result;
    for (const Member& member : members) result.push_back(member.name);
    return result;
}

Listing walk(ArchiveReader& reader) {
    Listing listing;
    Member member;
    while ((listing.end = reader.next(member)) == kOk) listing.members.push_back(member);
    return listing;
}

Listing walk(OpenResult result) {
    if (!result.reader) return {{}, result.code};
    return walk(*result.reader);
}

Unpacked unpack(ArchiveReader& reader) {
    Unpacked result;
    result.code = reader.read([&](const char* bytes, std::size_t size) {
        result.bytes.append(bytes, size);
        return true;
    });
    return result;
}

Unpacked unpack(ArchiveReader& reader, std::string_view name) {
    reader.restart();
    Member member;
    while (reader.next(member) == kOk) {
        if (member.name == name) return unpack(reader);
    }
    return {{}, kNotExist};
}

std::vector<DetachedMember> unpackDetached(ArchiveReader& reader) {
    std::vector<DetachedMember> members;
    std::vector<std::unique_ptr<DetachedData>> data;
    Member member;
    while (reader.next(member) == kOk) {
        auto detached = reader.detach();
        if (detached == nullptr) continue;
        members.push_back({member.name, {}});
        data.push_back(std::move(detached));
    }
    std::vector<std::jthread> threads;
    for (std::size_t index = 0; index < data.size(); ++index) {
        threads.emplace_back([&unpacked = members[index].unpacked, source = data[index].get()] {
            unpacked.code = source->read([&unpacked](const char* bytes, std::size_t size) {
                unpacked.bytes.append(bytes, size);
                return true;
            });
        });
    }
    threads.clear();
    return members;
}

std::vector<std::string> lines(std::string_view text) {
    std::vector<std::string> result;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        result.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return result;
}

std::string zipLine(const Member& member) {
    char crc[16];
    std::snprintf(crc, sizeof(crc), "%08X", static_cast<unsigned>(member.crc));
    return std::to_string(member.originalSize) + '\t' + std::to_string(member.packedSize) + '\t' + crc + '\t' +
           dosText(member) + '\t' + member.method + '\t' + (member.encrypted ? "encrypted" : "open") + '\t' +
           member.name;
}

std::string tarLine(const Member& member) {
    const char* const kind = (member.attributes & attribute::kFolder) != 0 ? "folder" : "file";
    const char* const right = (member.attributes & attribute::kReadOnly) != 0 ? "read-only" : "writable";
    return std::string(kind) + '\t' + right + '\t' + std::to_string(member.originalSize) + '\t' +
           utcText(member.written.value_or(Moment{})) + '\t' + member.name;
}

std::string tarLine(std::string_view listed) {
    const std::string_view permissions = listed.substr(0, listed.find('\t'));
    const char* const kind = permissions[0] == 'd' ? "folder" : "file";
    const char* const right = permissions[2] == 'w' ? "writable" : "read-only";
    return std::string(kind) + '\t' + right + std::string(listed.substr(permissions.size()));
}

}  // namespace archiver::test
