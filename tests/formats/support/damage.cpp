#include "formats/support/damage.h"

#include <gtest/gtest.h>

#include "archivers/formats/utf8.h"
#include "formats/support/listing.h"

namespace archiver::test {

Outcome exhaust(const OpenResult& opened, std::size_t mostMembers) {
    Outcome outcome;
    if (!opened.reader) {
        EXPECT_NE(opened.code, kOk);
        outcome.faultless = false;
        outcome.end = opened.code;
        return outcome;
    }
    outcome.opened = true;
    Member member;
    for (std::size_t count = 0; (outcome.end = opened.reader->next(member)) == kOk; ++count) {
        EXPECT_LE(count, mostMembers);
        EXPECT_TRUE(isUtf8(member.name));
        const Unpacked unpacked = unpack(*opened.reader);
        EXPECT_LE(unpacked.bytes.size(), member.originalSize);
        if (unpacked.code == kOk) {
            outcome.contents[member.name] = unpacked.bytes;
        } else {
            outcome.faultless = false;
        }
    }
    if (outcome.end != kNoMoreEntries) outcome.faultless = false;
    return outcome;
}

}  // namespace archiver::test
