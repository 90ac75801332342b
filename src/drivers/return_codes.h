#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace tovar {

/// Codes that a library's functions answer with where the call never reaches the library.
namespace return_code {
inline constexpr std::int32_t kOk = 0;
inline constexpr std::int32_t kNoSuchMember = 0x800F;
inline constexpr std::int32_t kIllegalCommand = 0x801C;
inline constexpr std::int32_t kOutOfMemory = 0x801D;
inline constexpr std::int32_t kNotOpened = 0x8021;
inline constexpr std::int32_t kUnsupported = 0x8023;
}  // namespace return_code

/// The message for the return code of an archiver library: empty for 0, lines joined with CR LF; a code without a
/// message of its own is named in hexadecimal digits.
[[nodiscard]] std::wstring returnCodeMessage(std::int32_t code);

/// What users are told of an archive that its library cannot open.
[[nodiscard]] std::wstring notOpenedText(std::wstring_view fileName);

}  // namespace tovar
