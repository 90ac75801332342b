#pragma once
#include <mspack.h>

#include <cstdint>
#include <deque>
#include <exception>
#include <memory>
#include <string>

#include "archivers/formats/archive_reader.h"
#include "archivers/formats/input_file.h"

namespace archiver::cab {

/// What libmspack does its work on: files that are open, under names that are keys, and a sink instead of a file to
/// write. Nothing is opened by name, and no exception passes through the library.
class CabinetSystem {
public:
    CabinetSystem();
    CabinetSystem(const CabinetSystem&) = delete;
    CabinetSystem& operator=(const CabinetSystem&) = delete;

    [[nodiscard]] mspack_system* table() noexcept { return &table_; }

    /// Makes a file known whose bytes begin at an offset.
    /// @return its key, which lives as long as this
    const char* add(std::shared_ptr<const InputFile> file, std::uint64_t base);

    /// Where the next file that is written goes; the sink has to live until then.
    void setSink(const DataSink& sink) noexcept;
    /// The key of what is written.
    static const char* sinkKey() noexcept { return "sink"; }

    /// Whether the file to write was opened since the sink was set.
    [[nodiscard]] bool sinkOpened() const noexcept { return sinkOpened_; }
    /// Whether the sink did not want any more.
    [[nodiscard]] bool stopped() const noexcept { return stopped_; }
    /// What the sink threw, if it did.
    [[nodiscard]] std::exception_ptr thrown() const noexcept { return thrown_; }
    /// Whether the system reported an error on reading.
    [[nodiscard]] bool readFailed() const noexcept { return readFailed_; }
    /// Whether there was no memory for the library.
    [[nodiscard]] bool outOfMemory() const noexcept { return outOfMemory_; }

private:
    struct Table : mspack_system {
        CabinetSystem* owner;
    };
    struct Source {
        std::string key;
        std::shared_ptr<const InputFile> file;
        std::uint64_t base;
    };
    struct Stream;

    static mspack_file* open(mspack_system* self, const char* name, int mode) noexcept;
    static void close(mspack_file* file) noexcept;
    static void* allocate(mspack_system* self, std::size_t bytes) noexcept;
    static void ignoreMessage(mspack_file* file, const char* format, ...) noexcept;
    static int read(mspack_file* file, void* into, int bytes) noexcept;
    static int write(mspack_file* file, void* bytes, int size) noexcept;
    static int seek(mspack_file* file, off_t offset, int mode) noexcept;
    static off_t tell(mspack_file* file) noexcept;

    Table table_{};
    std::deque<Source> sources_;
    const DataSink* sink_ = nullptr;
    bool sinkOpened_ = false;
    bool stopped_ = false;
    bool readFailed_ = false;
    bool outOfMemory_ = false;
    std::exception_ptr thrown_;
};

}  // namespace archiver::cab
