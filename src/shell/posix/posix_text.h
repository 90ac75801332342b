#pragma once
#include <string>
#include <string_view>

namespace tovar {

/// File names of POSIX are bytes, mostly UTF-8. Bytes that form no character travel as the code points U+DC80 to
/// U+DCFF, which stand for nothing else, so that every name comes back as it was.
[[nodiscard]] std::wstring fromPosixName(std::string_view bytes);
[[nodiscard]] std::string toPosixName(std::wstring_view text);

}  // namespace tovar
