#pragma once
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <thread>

#include "archivers/unpacking/target_system.h"

namespace archiver {

/// A file whose bytes are written by a thread of its own, while those that follow are still being unpacked. An error of
/// writing is told by a later write, or by commit. The file below is used by one thread at a time.
class WriteBehindFile final : public OutputFile {
public:
    /// Bytes gathered before they are written, and how often so many may wait.
    static constexpr std::size_t kBlock = std::size_t{512} << 10;
    static constexpr std::size_t kWaitingBlocks = 4;

    /// @param file  not null
    /// @throws std::system_error when there is no thread; `file` is as it was then
    explicit WriteBehindFile(std::unique_ptr<OutputFile>& file);
    /// Without commit: gives up what waits.
    ~WriteBehindFile() override;

    ReturnCode write(std::span<const char> bytes) override;
    ReturnCode commit(const ItemProperties& properties) override;

private:
    ReturnCode handOver();
    void finish(bool giveUp);
    void work();

    std::unique_ptr<OutputFile> file_;
    std::string gathered_;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::string> blocks_;  ///< the front one is being written
    std::string spare_;               ///< memory of one that was written
    ReturnCode code_ = kOk;           ///< of the first write that failed
    bool ending_ = false;
    std::thread writer_;  ///< the last member: it uses the others
};

}  // namespace archiver
