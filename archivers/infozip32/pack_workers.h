#pragma once
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "archivers/packing/source_system.h"

namespace archiver::infozip {

/// A piece of a source that is to be packed: a whole file, or a part of a large one.
struct PackJob {
    std::filesystem::path path;  ///< opened by the worker when there is no file
    std::shared_ptr<InputFile> file;
    std::uint64_t offset = 0;
    std::uint64_t size = 0;  ///< bytes at most; there may be fewer when the file became shorter
    bool whole = true;       ///< packed only when that makes it smaller
    bool last = true;        ///< of its member
    int level = 6;           ///< 0 stores

    enum class State : std::uint8_t { kWaiting, kDone, kNotOpened, kNotRead, kNoMemory };
    State state = State::kWaiting;
    std::string bytes;  ///< packed, or as they are
    std::uint64_t taken = 0;
    std::uint32_t crc = 0;
    bool deflated = false;
};

/// Packs on all cores. Jobs are given in the order in which their results are wanted; how much is under way is the
/// caller's to bound.
class PackWorkers {
public:
    /// @param system  outlives the workers
    explicit PackWorkers(SourceSystem& system) : system_(system) {}
    /// Gives up what no worker has begun.
    ~PackWorkers();
    PackWorkers(const PackWorkers&) = delete;
    PackWorkers& operator=(const PackWorkers&) = delete;

    [[nodiscard]] static unsigned count() noexcept;

    /// Starts the threads with the first jobs; without threads the caller's own does the work.
    void add(std::shared_ptr<PackJob> job);
    /// Waits until a job is done. @param meanwhile  called now and then
    void wait(const PackJob& job, const std::function<void()>& meanwhile);

private:
    class Tools;
    void work();
    void pack(PackJob& job, Tools& tools) const;

    SourceSystem& system_;
    std::mutex mutex_;
    std::condition_variable given_, done_;
    std::deque<std::shared_ptr<PackJob>> jobs_;
    bool ending_ = false;
    std::vector<std::thread> threads_;
};

}  // namespace archiver::infozip
