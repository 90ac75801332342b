#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "browser_walks/plain_archive.h"
#include "browser_walks/walk.h"

namespace tovar::test {

/// What a browser must show after the steps made so far, worked out from end to end each time.
class WalkModel {
public:
    WalkModel(Dice& dice, bool changeable);

    /// What the archive holds from the next listing on.
    [[nodiscard]] std::vector<Member> members() const { return next_.members(); }
    void open();
    [[nodiscard]] Step choose();
    void apply(const Step& step);
    [[nodiscard]] Seen expected() const;

private:
    struct Sorting {
        std::size_t column = 0;
        bool descending = false;
    };

    void list();
    void show(const std::wstring& key);
    void enterAddress(const std::wstring& text);
    void tellSelection();
    /// What a command that works on the selected rows is asked for.
    void work(const std::wstring& command);
    [[nodiscard]] Step commandStep();
    [[nodiscard]] Step typedAddress();
    [[nodiscard]] Step chosenAddress();
    /// @return how many folders have these letters, in any case
    [[nodiscard]] std::size_t foldersWritten(const std::wstring& key) const;
    /// Numbers of the rows as the archive has them, in the order in which they stand.
    [[nodiscard]] std::vector<std::size_t> order() const;
    [[nodiscard]] std::size_t rowCount() const { return archive_.rows(current_).size(); }

    [[nodiscard]] bool anySelected() const;
    [[nodiscard]] bool isExact() const { return style_ == kExactDetails; }

    Dice& dice_;
    bool changeable_;
    PlainArchive archive_, next_;
    std::wstring current_ = L"\\";
    std::optional<Sorting> sorting_;
    std::vector<bool> selected_;  ///< of the rows as the archive has them
    Texts addresses_;
    std::wstring status_, work_;
    std::size_t style_ = kDetails;
};

}  // namespace tovar::test
