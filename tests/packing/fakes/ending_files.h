#pragma once
#include <memory>

#include "archivers/packing/packing_files.h"

namespace archiver::test {

/// The system's files, until the process "ends" at one of its steps: a write that comes half onto the disk, a flush, a
/// rename, a removal. After that nothing reaches the disk any more, as nothing does after a process has ended.
class EndingFiles final : public PackingFiles {
public:
    /// @param steps  that are done; the next one ends the process. Negative: never
    explicit EndingFiles(long steps = -1) : steps_(steps) {}

    [[nodiscard]] bool ended() const noexcept { return ended_; }
    [[nodiscard]] long done() const noexcept { return done_; }
    /// What every write answers from now on, without anything written: a full disk, for one.
    void failWrites(ReturnCode code) noexcept { failure_ = code; }

    [[nodiscard]] std::filesystem::path resolve(const std::filesystem::path& archive) override {
        return files_.resolve(archive);
    }
    ReturnCode checkReplaceable(const std::filesystem::path& archive) override {
        return files_.checkReplaceable(archive);
    }
    ReturnCode create(const std::filesystem::path& file, std::unique_ptr<NewFile>& made) override;
    void keepAttributes(const std::filesystem::path& from, const std::filesystem::path& to) override;
    ReturnCode rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
    ReturnCode remove(const std::filesystem::path& file) override;

private:
    class File;
    /// @return whether this step is still done
    bool step() noexcept;

    PackingFiles& files_ = systemPackingFiles();
    long steps_;
    long done_ = 0;
    bool ended_ = false;
    ReturnCode failure_ = kOk;
};

}  // namespace archiver::test
