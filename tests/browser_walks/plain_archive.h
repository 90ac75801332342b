#pragma once
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "browser/fakes/fake_driver.h"

namespace tovar::test {

using Texts = std::vector<std::wstring>;

/// Numbers for a walk, the same in every build.
class Dice {
public:
    explicit Dice(std::uint32_t seed) : engine_(seed) {}
    /// @return 0 to sides - 1
    std::size_t roll(std::size_t sides) { return static_cast<std::size_t>(engine_()) % sides; }
    bool oneIn(std::size_t sides) { return roll(sides) == 0; }

private:
    std::mt19937 engine_;
};

/// A row as it must be shown.
struct PlainRow {
    bool isFolder = false;
    std::wstring path;                 ///< of a folder its key, of a file that of its folder and its name
    Texts cells;                       ///< all nine
    Texts exactCells;                  ///< likewise, in the view that shows whole numbers
    std::vector<std::uint64_t> ranks;  ///< what exact cells are sorted by; columns of texts all have 0
};

/// A member as a walk makes it up, together with its row.
struct PlainMember {
    Member member;
    std::wstring folder;  ///< key of the folder that it lies in
    std::wstring name;    ///< empty for a folder member
    PlainRow row;
};

/// What an archive holds, written as simply as it can be: everything is looked for from one end to the other. It shares
/// no code with what it is compared with.
class PlainArchive {
public:
    /// Makes up some members more; folders in several cases, doubled separators, folder members and twins among them.
    void grow(Dice& dice, std::size_t count);
    /// Takes members out, on the average two of three.
    void shrink(Dice& dice);
    /// Takes a row's file out, or all that lies in its folder.
    void remove(const PlainRow& row);

    [[nodiscard]] std::size_t size() const { return members_.size(); }
    [[nodiscard]] std::vector<Member> members() const;
    /// Keys of all folders, in the order in which they are met; the root is the first.
    [[nodiscard]] Texts folders() const;
    [[nodiscard]] bool has(std::wstring_view key) const;
    /// Texts of the folders directly in a folder.
    [[nodiscard]] Texts foldersIn(std::wstring_view key) const;
    /// The rows of a folder as the archive has them: folders, then files.
    [[nodiscard]] std::vector<PlainRow> rows(std::wstring_view key) const;

private:
    std::vector<PlainMember> members_;
};

/// @return the key of the folder above; empty for the root
[[nodiscard]] std::wstring keyAbove(std::wstring_view key);

/// Small letters for the large ones that walks use.
[[nodiscard]] std::wstring smallLetters(std::wstring_view text);

}  // namespace tovar::test
