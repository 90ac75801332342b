#pragma once
#include <cstdint>
#include <string>

#include "archivers/formats/rar/ppmd7.h"

namespace archiver::test {

/// The other half of the decoder: codes symbols with the same model.
/// Source: Ppmd7.c, public domain; see ppmd7.h
class Ppmd7Encoder : public rar::Ppmd7Model {
public:
    void begin();
    void encode(std::uint8_t symbol);
    /// What the range coder has given since `begin`.
    std::string finish();

private:
    void put(std::uint32_t start, std::uint32_t size, std::uint32_t total);

    std::uint32_t low_ = 0, range_ = 0;
    std::string bytes_;
};

}  // namespace archiver::test
