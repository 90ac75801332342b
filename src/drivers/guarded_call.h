#pragma once
#include <exception>

namespace tovar {

/// A call whose preparation fails answers like a failing library: no exception passes.
template <class Answer, class Call>
Answer guarded(Answer failure, Call&& call) noexcept {
    try {
        return call();
    } catch (const std::exception&) {
        return failure;
    }
}

}  // namespace tovar
