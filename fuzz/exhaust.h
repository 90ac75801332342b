#pragma once
#include <cstdint>
#include <cstdlib>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/utf8.h"

namespace archiver::fuzz {

/// Lists an archive twice and unpacks every member once, and holds the reader to its promises.
inline void exhaust(const OpenResult& opened) {
    constexpr std::uint64_t kEnough = 1 << 22;  // of what a small file can unpack to
    if ((opened.reader == nullptr) != (opened.code != kOk)) std::abort();
    if (!opened.reader) return;
    ReturnCode ends[2] = {};
    std::uint64_t counts[2] = {};
    std::uint64_t total = 0;
    for (int round = 0; round < 2; ++round) {
        Member member;
        while ((ends[round] = opened.reader->next(member)) == kOk && total < kEnough) {
            ++counts[round];
            if (!isUtf8(member.name) || member.name.find('\0') != std::string::npos) std::abort();
            if (member.method.size() > 7) std::abort();
            if (round == 0) {
                opened.reader->read([&](const char*, std::size_t size) {
                    total += size;
                    return total < kEnough;
                });
            }
        }
        if (opened.reader->restart() != kOk) std::abort();
    }
    if (total < kEnough && (counts[0] != counts[1] || ends[0] != ends[1])) std::abort();
}

}  // namespace archiver::fuzz
