#pragma once
#include <cstdint>
#include <string>

namespace archiver::test {

/// Bytes of one ustar member: header and content, filled up to whole blocks.
/// @param type  the header's type letter: '0' file, '5' folder, 'x' pax header, 'L' GNU long name ...
std::string tarMember(const std::string& name, const std::string& content, char type = '0',
                      std::int64_t modified = 990120658);

/// The header of a member whose content follows at some other place in the test's file, of any size.
std::string tarHeader(const std::string& name, std::uint64_t size, char type = '0', std::int64_t modified = 990120658);

/// One record of a pax header: "LENGTH KEY=VALUE\n", the length counting itself.
std::string paxRecord(const std::string& key, const std::string& value);

/// The two blocks of zeros that end a tar.
std::string tarEnd();

}  // namespace archiver::test
