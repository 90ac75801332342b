#pragma once
#include <cstdint>
#include <exception>

namespace tovar {

/// Lets long work on a thread with windows stop for breath, so that messages do not wait until it is done.
class Breather {
public:
    virtual ~Breather() = default;

    /// Work begins: what the thread did before does not count as work without a breath.
    virtual void begin() = 0;

    /// Lets pending messages run when that is due; returns at once otherwise. Whatever a message does may happen
    /// meanwhile.
    /// @return whether the work is still wanted
    [[nodiscard]] virtual bool breathe() = 0;
};

/// Thrown out of work that is no longer wanted.
class WorkAbandoned final : public std::exception {
public:
    [[nodiscard]] const char* what() const noexcept override { return "the work is no longer wanted"; }
};

/// Work that is counted in small units, each worth a look at one member of a list. After each portion of them comes the
/// opportunity to breathe.
class PacedWork {
public:
    static constexpr std::uint32_t kPortion = 8192;  ///< units; a millisecond or two

    /// @param breather  null: the work is done in one go
    explicit PacedWork(Breather* breather) : breather_(breather) {
        if (breather_ != nullptr) breather_->begin();
    }

    /// @throws WorkAbandoned, and what messages throw
    void done(std::uint32_t units = 1) {
        if (units < left_) {
            left_ -= units;
        } else {
            finishPortion();
        }
    }

private:
    void finishPortion() {
        left_ = kPortion;
        if (breather_ != nullptr && !breather_->breathe()) throw WorkAbandoned();
    }

    Breather* breather_;
    std::uint32_t left_ = kPortion;
};

}  // namespace tovar
