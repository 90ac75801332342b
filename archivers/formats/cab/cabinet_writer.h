#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "archivers/formats/cab/cabinet_layout.h"
#include "archivers/formats/cab/cabinet_output.h"

namespace archiver {

namespace cab {
class BlockLine;
}

/// Writes a new cabinet. All members are named before the first byte, as the tables stand in front of the data; what is
/// packed may be less than was named then.
///
/// Calls in this order: begin; for each member in turn, member and then as many `write` as it takes, or nothing for one
/// that is left out; finish. After any other code than kOk only the destructor may follow. The output holds a cabinet
/// only when finish answered kOk.
class CabinetWriter {
public:
    /// @param output  outlives this
    /// @param threads  that pack; 0: as many as there are processors
    /// @param most  bytes that the cabinet may have
    explicit CabinetWriter(CabinetOutput& output, CabinetMethod method = CabinetMethod::kMsZip, unsigned threads = 0,
                           std::uint64_t most = cab::kMostBytes);
    ~CabinetWriter();
    CabinetWriter(const CabinetWriter&) = delete;
    CabinetWriter& operator=(const CabinetWriter&) = delete;

    /// @return kOk, what cab::layOut answers, and the output's codes
    ReturnCode begin(std::vector<CabinetMember> members);

    /// The member that the next bytes are of; later than the one before.
    /// @param index  in the list that begin was given
    ReturnCode member(std::size_t index);

    /// Bytes of the current member. Those beyond the size that it was named with are not taken: a file that grows while
    /// it is packed is stored as it was found.
    /// @return kOk; kTooBig when the cabinet would be longer than 4 GiB; the output's codes
    ReturnCode write(std::span<const char> bytes);

    /// Leaves the current member out after all, as one that cannot be read any further. What was written of it stays in
    /// the data, and nothing names it.
    void drop() noexcept;

    /// Packs what is left and writes the tables.
    ReturnCode finish();

    /// Bytes of the cabinet that have been written.
    [[nodiscard]] std::uint64_t bytes() const noexcept { return bytes_; }
    /// Bytes taken of the current member.
    [[nodiscard]] std::uint64_t memberBytes() const noexcept { return current_ ? current_->size : 0; }

private:
    struct Row {
        std::size_t member;
        std::uint64_t size;
        std::uint64_t offset;  ///< in its folder's content
        std::uint16_t folder;  ///< in the order of those that are written
    };
    struct Folder {
        std::uint64_t begin;
        std::uint16_t blocks;
    };

    ReturnCode append(std::span<const char> bytes);
    ReturnCode putBlock();
    ReturnCode takeBlock();
    ReturnCode closeFolder();
    [[nodiscard]] std::string tables() const;

    CabinetOutput& output_;
    CabinetMethod method_;
    std::uint64_t most_;
    std::unique_ptr<cab::BlockLine> line_;
    std::vector<CabinetMember> members_;
    cab::CabinetLayout layout_;
    std::vector<Row> rows_;
    std::vector<Folder> folders_;
    Row* current_ = nullptr;           ///< the last of the rows, or none
    std::uint16_t plannedFolder_ = 0;  ///< the layout's number of the folder that is written
    bool folderOpen_ = false;
    std::uint64_t folderBytes_ = 0;  ///< content of it so far
    std::vector<char> gathered_;     ///< the next block's
    bool firstBlock_ = true;         ///< of its folder
    std::uint64_t bytes_ = 0;
};

}  // namespace archiver
