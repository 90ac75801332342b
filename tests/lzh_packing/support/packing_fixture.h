#pragma once
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "archivers/unlha32/lzh_change.h"
#include "formats/support/files.h"
#include "formats/support/listing.h"
#include "packing/fakes/ending_files.h"

namespace archiver::test {

/// Writes down what a change tells, and cancels it where it is told to.
class RecordedEvents final : public ChangeEvents {
public:
    std::vector<std::string> lines;  ///< but for `taken`
    std::uint64_t members = 0, bytes = 0, takenBytes = 0;
    long calls = 0;         ///< that could cancel
    long cancelledAt = -1;  ///< which of them does; negative: none

    void total(std::uint64_t count, std::uint64_t size) override {
        members = count;
        bytes = size;
    }
    bool beginMember(const SourceItem& item) override { return note("begin " + item.name); }
    bool taken(std::uint64_t size) override {
        takenBytes += size;
        return goOn();
    }
    bool endMember(const PackedMember& member) override { return note("end " + member.name); }
    void warning(PackWarning kind, std::string_view name) override;
    void deleted(const Member& member) override { lines.push_back("deleted " + member.name); }
    bool replacing() override { return goOn(); }

private:
    bool note(std::string line) {
        lines.push_back(std::move(line));
        return goOn();
    }
    bool goOn() { return calls++ != cancelledAt; }
};

/// Names and contents of files or members.
using Contents = std::map<std::string, std::string>;

/// A folder with sources in "base", and an archive beside it.
class LzhPackingTest : public testing::Test {
protected:
    /// Runs a line of the command language, in which "ARC" is the archive and "BASE" the folder of the sources.
    ReturnCode run(std::string line, unsigned threads = 2) { return run(std::move(line), files_, threads); }
    ReturnCode run(std::string line, PackingFiles& files, unsigned threads = 2);

    /// Puts a file below "base".
    std::filesystem::path source(const std::string& name, std::string_view bytes) const;
    /// Makes a source as old as that many seconds after some time of long ago.
    void age(const std::string& name, int seconds) const;

    [[nodiscard]] std::vector<std::string> names() const { return walk(openArchive()).names(); }
    [[nodiscard]] Contents contents() const;
    [[nodiscard]] Member member(std::string_view name) const;
    [[nodiscard]] OpenResult openArchive() const;
    [[nodiscard]] std::string archiveBytes() const { return readFile(archive_); }
    /// Files below "base", with "/" behind the names of folders.
    [[nodiscard]] std::vector<std::string> sources() const;
    /// Names in the archive's folder.
    [[nodiscard]] std::vector<std::string> beside() const;

    TemporaryFolder folder_;
    std::filesystem::path base_ = folder_.path() / "base";
    std::filesystem::path archive_ = folder_.path() / "a.lzh";
    RecordedEvents events_;
    EndingFiles files_;
    SourceSystem* sources_ = &systemSources();
};

/// Bytes without order.
std::string randomBytes(std::size_t size, unsigned seed = 1);

/// Lines that repeat themselves here and there.
std::string textOf(std::size_t size);

}  // namespace archiver::test
