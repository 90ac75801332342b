#pragma once
#include <cstddef>
#include <map>
#include <string>

#include "archivers/formats/archive_reader.h"

namespace archiver::test {

/// What listing and unpacking a damaged archive gave.
struct Outcome {
    bool opened = false;
    bool faultless = true;  ///< no call gave an error
    ReturnCode end = kOk;   ///< what ended the walk; the code of opening when there was none
    std::map<std::string, std::string> contents;
};

/// Lists and unpacks everything. Expects what holds of every archive, however damaged: a code where there is no reader,
/// names in UTF-8, no more members than the bytes have room for, no more bytes than a member claims.
/// @param opened       the archive
/// @param mostMembers  that the archive's bytes can hold
Outcome exhaust(const OpenResult& opened, std::size_t mostMembers);

}  // namespace archiver::test
