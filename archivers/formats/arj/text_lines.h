#pragma once
#include <cstddef>

#include "archivers/formats/archive_reader.h"

namespace archiver::arj {

/// Gives texts the line ends of Windows on their way to a sink: archives hold them with LF alone. A CR LF that is in
/// the archive stays one.
class TextLines {
public:
    explicit TextLines(const DataSink& sink) noexcept : sink_(sink) {}

    /// @return what the sink answers
    bool operator()(const char* bytes, std::size_t size);

private:
    const DataSink& sink_;
    bool afterReturn_ = false;
};

}  // namespace archiver::arj
