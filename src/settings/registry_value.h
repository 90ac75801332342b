#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "settings/registry_backend.h"

namespace tovar {

/// A value as programs use it: nothing, a 32-bit number, a text, or bytes.
using RegistryValue = std::variant<std::monostate, std::int32_t, std::wstring, std::vector<std::uint8_t>>;

/// REG_SZ and REG_EXPAND_SZ become text, REG_DWORD a number, everything else bytes.
/// @return nullopt for a REG_DWORD that has not four bytes
[[nodiscard]] std::optional<RegistryValue> fromRaw(const RawRegistryValue& raw);

/// Makes a value of a type: texts of numbers and texts, numbers of numbers and decimal texts, binary values of bytes,
/// each of nothing. A text with two or more "%" becomes REG_EXPAND_SZ: it names environment variables.
/// @return nullopt when the value is not of that kind, or the type is another one
[[nodiscard]] std::optional<RawRegistryValue> toRaw(const RegistryValue& value, RegistryType type);

/// For messages: a number in decimal, bytes as two hexadecimal digits each with blanks between.
[[nodiscard]] std::wstring valueText(const RegistryValue& value);

}  // namespace tovar
