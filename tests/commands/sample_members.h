#pragma once
#include <string>

#include "archivers/commands/command.h"

namespace archiver::testing {

inline Member folderMember() {
    Member member;
    member.name = "docs/";
    member.kind = MemberKind::kFolder;
    member.dosDate = 0x2AB1;  // 2001-05-17
    member.dosTime = 0x8BDD;  // 17:30:58
    member.attributes = attribute::kFolder;
    member.method = "Stored";
    return member;
}

inline Member packedMember() {
    Member member = folderMember();
    member.name = "docs/a long name.txt";
    member.kind = MemberKind::kFile;
    member.originalSize = 62459;
    member.packedSize = 61989;
    member.crc = 0xBB161E23;
    member.attributes = attribute::kArchive;
    member.method = "Deflate";
    return member;
}

inline Member storedMember() {
    Member member = packedMember();
    member.name = "b.txt";
    member.originalSize = 5;
    member.packedSize = 17;
    member.crc = 0x1A;
    member.attributes = attribute::kArchive | attribute::kReadOnly;
    member.method = "Stored";
    return member;
}

/// What one member's end is worded as.
inline std::string wordsOf(CommandTexts& texts, const Member& member, MemberOutcome outcome, ReturnCode code = kOk) {
    std::string out;
    texts.member({.member = member, .outcome = outcome, .code = code, .file = "out/x", .renamed = false}, out);
    return out;
}

inline std::string renamedWordsOf(CommandTexts& texts, const Member& member) {
    std::string out;
    texts.member(
        {.member = member, .outcome = MemberOutcome::kUnpacked, .code = kOk, .file = "x (2).txt", .renamed = true},
        out);
    return out;
}

inline std::string beginOf(CommandTexts& texts, const Command& command) {
    std::string out;
    texts.begin(command, out);
    return out;
}

inline std::string endOf(CommandTexts& texts, const Command& command, ReturnCode code) {
    UnpackSummary summary;
    summary.code = code;
    std::string out;
    texts.end(command, summary, out);
    return out;
}

inline std::string rowOf(CommandTexts& texts, const Member& member) {
    std::string out;
    texts.row(member, out);
    return out;
}

}  // namespace archiver::testing
