#include "settings/registry_value.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "settings/registry_text.h"

namespace tovar {
namespace {

constexpr std::size_t kNumberSize = 4;

std::optional<std::int32_t> numberOf(std::wstring_view text) {
    const bool negative = text.starts_with(L'-');
    if (negative) text.remove_prefix(1);
    if (text.empty() || text.size() > 10) return std::nullopt;
    std::int64_t number = 0;
    for (const wchar_t each : text) {
        if (each < L'0' || each > L'9') return std::nullopt;
        number = number * 10 + (each - L'0');
    }
    if (negative) number = -number;
    if (number < std::numeric_limits<std::int32_t>::min() || number > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(number);
}

std::optional<std::wstring> textOf(const RegistryValue& value) {
    if (std::holds_alternative<std::vector<std::uint8_t>>(value)) return std::nullopt;
    return valueText(value);
}

std::optional<std::int32_t> numberOf(const RegistryValue& value) {
    if (std::holds_alternative<std::monostate>(value)) return 0;
    if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
    if (const auto* text = std::get_if<std::wstring>(&value)) return numberOf(std::wstring_view(*text));
    return std::nullopt;
}

RawRegistryValue rawText(std::wstring_view text, RegistryType type) {
    if (std::ranges::count(text, L'%') >= 2) type = registry_type::kExpandableText;
    return {type, toRegistryText(text)};
}

RawRegistryValue rawNumber(std::int32_t number) {
    const auto bits = static_cast<std::uint32_t>(number);
    RawRegistryValue raw{registry_type::kNumber, {}};
    for (unsigned shift = 0; shift < 32; shift += 8) raw.bytes.push_back(static_cast<std::uint8_t>(bits >> shift));
    return raw;
}

}  // namespace

std::optional<RegistryValue> fromRaw(const RawRegistryValue& raw) {
    switch (raw.type) {
        case registry_type::kText:
        case registry_type::kExpandableText:
            return fromRegistryText(raw.bytes);
        case registry_type::kNumber: {
            if (raw.bytes.size() != kNumberSize) return std::nullopt;
            std::uint32_t bits = 0;
            for (unsigned at = 0; at < kNumberSize; ++at) bits |= static_cast<std::uint32_t>(raw.bytes[at]) << (8 * at);
            return static_cast<std::int32_t>(bits);
        }
        default:
            return raw.bytes;
    }
}

std::optional<RawRegistryValue> toRaw(const RegistryValue& value, RegistryType type) {
    switch (type) {
        case registry_type::kText:
        case registry_type::kExpandableText:
            if (const auto text = textOf(value)) return rawText(*text, type);
            return std::nullopt;
        case registry_type::kNumber:
            if (const auto number = numberOf(value)) return rawNumber(*number);
            return std::nullopt;
        case registry_type::kBinary:
            if (std::holds_alternative<std::monostate>(value)) return RawRegistryValue{type, {}};
            if (const auto* bytes = std::get_if<std::vector<std::uint8_t>>(&value))
                return RawRegistryValue{type, *bytes};
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

std::wstring valueText(const RegistryValue& value) {
    if (const auto* number = std::get_if<std::int32_t>(&value)) return std::to_wstring(*number);
    if (const auto* text = std::get_if<std::wstring>(&value)) return *text;
    std::wstring digits;
    if (const auto* bytes = std::get_if<std::vector<std::uint8_t>>(&value)) {
        constexpr std::wstring_view kDigits = L"0123456789ABCDEF";
        for (const std::uint8_t each : *bytes) {
            if (!digits.empty()) digits += L' ';
            digits += kDigits[each >> 4];
            digits += kDigits[each & 0xF];
        }
    }
    return digits;
}

}  // namespace tovar
