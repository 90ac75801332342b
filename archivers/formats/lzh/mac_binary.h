#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "archivers/formats/archive_reader.h"

namespace archiver::lzh {

/// Takes a Macintosh file's bytes out of the envelope that the archiver of that system puts around it: 128 bytes of
/// header, the data fork, the resource fork. Passed on is the data fork, or the resource fork when there is no other.
/// Bytes that do not begin with such a header of the member's own name and size are passed on as they are.
/// Source: the MacBinary standard of 1985
class MacBinaryFilter {
public:
    static constexpr std::size_t kHeader = 128;

    /// @param name  the member's base name, in the archive's code page
    /// @param size  bytes that will come
    MacBinaryFilter(std::string name, std::uint64_t size, const DataSink& sink)
        : name_(std::move(name)), size_(size), left_(size), sink_(sink) {}

    /// Takes the next bytes.
    /// @return false when the sink does not want any more
    bool operator()(const char* bytes, std::size_t size);

private:
    void decide();
    bool pass(const char* bytes, std::size_t size);

    std::string name_;
    std::uint64_t size_;
    std::uint64_t left_;  ///< bytes still to be passed on
    const DataSink& sink_;
    std::array<char, kHeader> header_{};
    std::size_t held_ = 0;  ///< bytes of the header so far
    bool isEnvelope_ = false;
};

}  // namespace archiver::lzh
