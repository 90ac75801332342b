#include "archivers/formats/cab/cabinet_system.h"

#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>

namespace archiver::cab {

struct CabinetSystem::Stream {
    CabinetSystem* owner;
    const Source* source;  ///< null for the sink
    std::uint64_t position = 0;

    static Stream* of(mspack_file* file) noexcept { return reinterpret_cast<Stream*>(file); }
};

CabinetSystem::CabinetSystem() {
    table_.owner = this;
    table_.open = &CabinetSystem::open;
    table_.close = &CabinetSystem::close;
    table_.read = &CabinetSystem::read;
    table_.write = &CabinetSystem::write;
    table_.seek = &CabinetSystem::seek;
    table_.tell = &CabinetSystem::tell;
    table_.message = &CabinetSystem::ignoreMessage;
    table_.alloc = &CabinetSystem::allocate;
    table_.free = [](void* bytes) { std::free(bytes); };
    table_.copy = [](void* from, void* to, std::size_t bytes) { std::memcpy(to, from, bytes); };
    table_.null_ptr = nullptr;
}

const char* CabinetSystem::add(std::shared_ptr<const InputFile> file, std::uint64_t base) {
    sources_.push_back({std::to_string(sources_.size()), std::move(file), base});
    return sources_.back().key.c_str();
}

void CabinetSystem::setSink(const DataSink& sink) noexcept {
    sink_ = &sink;
    sinkOpened_ = stopped_ = readFailed_ = false;
    thrown_ = nullptr;
}

mspack_file* CabinetSystem::open(mspack_system* self, const char* name, int mode) noexcept {
    CabinetSystem* const owner = static_cast<Table*>(self)->owner;
    const Source* source = nullptr;
    if (mode == MSPACK_SYS_OPEN_READ) {
        const auto index = static_cast<std::size_t>(std::strtoul(name, nullptr, 10));
        if (index >= owner->sources_.size()) return nullptr;
        source = &owner->sources_[index];
    } else {
        owner->sinkOpened_ = true;
    }
    return reinterpret_cast<mspack_file*>(new (std::nothrow) Stream{owner, source});
}

void CabinetSystem::close(mspack_file* file) noexcept { delete Stream::of(file); }

void* CabinetSystem::allocate(mspack_system* self, std::size_t bytes) noexcept {
    void* const memory = std::calloc(1, bytes);
    if (memory == nullptr) static_cast<Table*>(self)->owner->outOfMemory_ = true;
    return memory;
}

void CabinetSystem::ignoreMessage(mspack_file* /*file*/, const char* /*format*/, ...) noexcept {}

int CabinetSystem::read(mspack_file* file, void* into, int bytes) noexcept {
    Stream& stream = *Stream::of(file);
    if (stream.source == nullptr || bytes < 0) return -1;
    const auto got = stream.source->file->readAt(stream.source->base + stream.position,
                                                 {static_cast<char*>(into), static_cast<std::size_t>(bytes)});
    if (!got) {
        stream.owner->readFailed_ = true;
        return -1;
    }
    stream.position += *got;
    return static_cast<int>(*got);
}

int CabinetSystem::write(mspack_file* file, void* bytes, int size) noexcept {
    CabinetSystem& owner = *Stream::of(file)->owner;
    if (size <= 0) return size;
    try {
        if ((*owner.sink_)(static_cast<const char*>(bytes), static_cast<std::size_t>(size))) return size;
        owner.stopped_ = true;
    } catch (...) {
        owner.thrown_ = std::current_exception();
    }
    return -1;
}

int CabinetSystem::seek(mspack_file* file, off_t offset, int mode) noexcept {
    Stream& stream = *Stream::of(file);
    if (stream.source == nullptr) return -1;
    const auto size = static_cast<std::int64_t>(stream.source->file->size() - stream.source->base);
    std::int64_t from = 0;
    if (mode == MSPACK_SYS_SEEK_CUR) from = static_cast<std::int64_t>(stream.position);
    if (mode == MSPACK_SYS_SEEK_END) from = size;
    // Places behind the end are no error: what is read there is.
    if (offset > std::numeric_limits<std::int64_t>::max() / 2 || from + offset < 0) return -1;
    stream.position = static_cast<std::uint64_t>(from + offset);
    return 0;
}

off_t CabinetSystem::tell(mspack_file* file) noexcept { return static_cast<off_t>(Stream::of(file)->position); }

}  // namespace archiver::cab
