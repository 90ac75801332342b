#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "archivers/convention/abi.h"

// The script of a recording archiver library: what it answers. A text file, named by the environment variable
// TOVAREX_RECORDING_SCRIPT and read anew by every call but those of a walk, which goes on with the script that its
// archive was opened with. Without one, every answer is the default below.
//
// A line is a word, a blank and a value. Empty lines and lines that begin with "#" are left out. Numbers are decimal,
// or hexadecimal behind "0x", and may be negative. In texts, \xHH is a byte, \n LF, \r CR and \\ a backslash.
//
//   version 540        GetVersion's answer, with the upper half of its register: 0xABCD004E is a version of 78
//   running 0          GetRunning
//   check 1            CheckArchive
//   handle 1           OpenArchive: 0 fails
//   entry FIELD=VALUE FIELD=VALUE ...
//                      a member; fields are name, original, packed, crc, ratio, date, time, attribute, mode,
//                      for ACE flags, method and attributes,
//                      original64, packed64 and repeat (how often it is given, 1). Numbers are those of the record:
//                      dates and times are DOS words. A text as long as its field or longer fills it without a NUL. A
//                      blank inside a text is \x20. Without original64 and packed64, the 64-bit queries give the
//                      record's numbers.
//   error 0x8017       an entry's place in the walk where the search answers this instead, every time it is asked
//   end -1             what the search answers behind the last entry; ACEReadHeader answers 128 for -1
//   process 0          ACEProcessFile, for all operations but skipping
//   password 0         ACESetPassword
//   zip TEXT           ZpArchive calls back, in the order of these lines, before it answers the code: "message TEXT",
//                      "service NAME", "password SIZE PROMPT" or "comment"; what the last three give is logged
//   data 0             how many KiB ACEProcessFile gives to the callback of its archive, one by one, before it answers;
//                      it answers 255 once that one cancels
//   code 0             the command's return code
//   output TEXT        what the command writes, cut to the buffer, with a NUL where there is room
//   lists 1            logs what stands in the list file that the command names, as a call of "List", 0
//   fill x             fills the command's whole buffer with one character, without a NUL
//   dialog 1           ConfigDialog
//   unicode 1          SetUnicodeMode

namespace recording {

struct Entry {
    archiver::IndividualInfo info{};
    std::int64_t original64 = 0;
    std::int64_t packed64 = 0;
    std::uint32_t repeat = 1;
    std::uint32_t flags = 0, method = 0, attributes = 0;  ///< of an ACE header
    std::int32_t error = 0;                               ///< not 0: no member, but this answer
};

struct Script {
    std::uint32_t version = 540;
    std::int32_t running = 0;
    std::int32_t check = 1;
    bool opens = true;
    std::vector<Entry> entries;
    std::int32_t end = -1;
    std::int32_t code = 0;
    std::int32_t process = 0;
    std::int32_t password = 0;
    std::uint32_t data = 0;
    std::string output;
    std::vector<std::string> zip;
    bool lists = false;
    char fill = '\0';
    std::int32_t dialog = 1;
    std::int32_t unicode = 1;
};

[[nodiscard]] Script parseScript(const std::string& text);

/// The script as it is now.
[[nodiscard]] Script readScript();

}  // namespace recording
