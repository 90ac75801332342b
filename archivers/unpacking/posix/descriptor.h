#pragma once
#include <unistd.h>

#include <utility>

namespace archiver {

/// Owns a file descriptor.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) noexcept : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] bool isOpen() const noexcept { return number_ >= 0; }
    [[nodiscard]] int number() const noexcept { return number_; }

    /// @return whether the system took all that was written; the descriptor is closed in any case
    bool close() noexcept { return !isOpen() || ::close(std::exchange(number_, -1)) == 0; }

private:
    int number_ = -1;
};

}  // namespace archiver
