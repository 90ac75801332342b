#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tovar {

/// The texts that the address box has shown, each once, in the order in which they came. Texts differ when their
/// characters differ, case included.
class AddressHistory {
public:
    struct Place {
        std::size_t index;  ///< counted from 0
        bool isNew;
    };

    Place put(std::wstring_view address) {
        const auto [place, isNew] = places_.try_emplace(std::wstring(address), places_.size());
        return {place->second, isNew};
    }

private:
    std::unordered_map<std::wstring, std::size_t> places_;
};

}  // namespace tovar
