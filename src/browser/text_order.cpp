#include "browser/text_order.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <type_traits>

#include "shell/letter_case.h"

namespace tovar {
namespace {

constexpr std::size_t kBasicPlane = 0x10000;
constexpr std::size_t kPlainCharacters = 0x100;
constexpr std::size_t kKeyBits = 64;
constexpr std::size_t kPlainBits = 8, kWideBits = 8 * sizeof(wchar_t);  ///< of a character

constexpr bool isFirstHalf(wchar_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isSecondHalf(wchar_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// The work of one orderByTexts. Runs of items whose keys are equal are ordered by the characters behind, until all
/// keys of a run differ or its texts end.
class TextSorting {
public:
    TextSorting(std::span<KeyedItem> items, const TextOfItem& textOf, const CaseFolder& letters, Direction direction,
                PacedWork& work)
        : items_(items), textOf_(textOf), letters_(letters), direction_(direction), work_(work) {}

    void run() {
        if (letters_.keepsPlain() && arePlain()) characterBits_ = kPlainBits;
        orderRun({0, items_.size(), 0});
        while (!runs_.empty()) {
            Run& run = runs_.back();
            const std::size_t first = run.next;
            if (first >= run.end) {
                runs_.pop_back();
                continue;
            }
            std::size_t end = first + 1;
            while (end < run.end && items_[end].hasKeyOf(items_[first])) ++end;
            run.next = end;
            if (end - first > 1) orderRun({first, end, run.depth + keyCharacters()});
        }
    }

private:
    struct Run {
        std::size_t next, end;  ///< items
        std::size_t depth;      ///< characters that the keys do not look at any more
    };

    [[nodiscard]] CompactText textAt(std::size_t place) const { return textOf_(items_[place].item); }

    /// @return how many characters one key holds
    [[nodiscard]] std::size_t keyCharacters() const noexcept { return kKeyBits / characterBits_; }

    bool arePlain() {
        for (std::size_t place = 0; place < items_.size(); ++place) {
            if (!textAt(place).isPlain()) return false;
            work_.done();
        }
        return true;
    }

    void orderRun(Run run) {
        if (run.end - run.next < 2) return;
        bool ended = false;
        if (!setKeys(run)) {  // all of them are alike: look for where they are not
            ended = !skipShared(run);
            if (ended) {
                setLengths(run);
            } else {
                setKeys(run);
            }
        }
        orderByKeys(items_.subspan(run.next, run.end - run.next), direction_, work_);
        if (!ended) runs_.push_back(run);
    }

    /// @return whether not all keys are alike
    bool setKeys(const Run& run) {
        bool differ = false;
        for (std::size_t place = run.next; place < run.end; ++place) {
            items_[place].setKey(keyAt(textAt(place), run.depth));
            differ = differ || !items_[place].hasKeyOf(items_[run.next]);
            work_.done();
        }
        return differ;
    }

    void setLengths(const Run& run) {
        for (std::size_t place = run.next; place < run.end; ++place) {
            items_[place].setKey(textAt(place).size());
            work_.done();
        }
    }

    /// The characters of a text from one on as a number that orders like them; 0 behind the text's end.
    [[nodiscard]] std::uint64_t keyAt(const CompactText& text, std::size_t start) const {
        using Unit = std::conditional_t<sizeof(wchar_t) == 2, std::uint16_t, std::uint32_t>;
        const std::size_t end = start + keyCharacters();
        std::uint64_t key = 0;
        for (std::size_t place = start; place < end; ++place) {
            const std::uint64_t unit = place < text.size() ? static_cast<Unit>(letters_.lowerAt(text, place)) : 0U;
            key = key << characterBits_ | unit;
        }
        return key;
    }

    /// Moves the depth to where the texts of a run begin to differ.
    /// @return false when all of them end before
    bool skipShared(Run& run) {
        textAt(run.next).copyTo(first_);
        std::size_t shared = first_.size();
        std::size_t longest = first_.size();
        for (std::size_t place = run.next + 1; place < run.end && (shared > run.depth || longest <= run.depth);
             ++place) {
            const CompactText text = textAt(place);
            longest = std::max(longest, text.size());
            const std::size_t end = std::min(shared, text.size());
            shared = std::min(run.depth, end);
            while (shared < end && letters_.lowerAt(first_, shared) == letters_.lowerAt(text, shared)) ++shared;
            const std::size_t read = shared - std::min(run.depth, end);
            work_.done(1 + static_cast<std::uint32_t>(std::min(read / kCharactersOfUnit, kMostUnits)));
        }
        run.depth = std::max(run.depth, shared);
        return longest > run.depth;
    }

    static constexpr std::size_t kCharactersOfUnit = 32;
    static constexpr std::size_t kMostUnits = 4096;

    std::span<KeyedItem> items_;
    const TextOfItem& textOf_;
    const CaseFolder& letters_;
    Direction direction_;
    PacedWork& work_;
    std::size_t characterBits_ = kWideBits;
    std::vector<Run> runs_;
    std::wstring first_;
};

}  // namespace

CaseFolder::CaseFolder() {
    std::wstring all(kBasicPlane, L'\0');
    std::iota(all.begin(), all.end(), L'\0');
    const std::wstring lower = foldCase(all);
    lower_.resize(kBasicPlane);
    std::ranges::transform(lower, lower_.begin(), [](wchar_t each) { return static_cast<std::uint16_t>(each); });
}

// What has two halves is one character.
wchar_t CaseFolder::lowerOfRare(std::wstring_view text, std::size_t place) {
    const bool isSecond = isSecondHalf(text[place]) && place > 0 && isFirstHalf(text[place - 1]);
    const std::size_t start = isSecond ? place - 1 : place;
    const bool isPair = isFirstHalf(text[start]) && start + 1 < text.size() && isSecondHalf(text[start + 1]);
    return foldCase(text.substr(start, isPair ? 2 : 1))[place - start];
}

void CaseFolder::fold(const CompactText& text, std::wstring& folded) const {
    folded.resize(text.size());
    for (std::size_t place = 0; place < text.size(); ++place) folded[place] = lowerAt(text, place);
}

bool CaseFolder::startsWith(const CompactText& text, std::wstring_view folded) const {
    if (text.size() < folded.size()) return false;
    for (std::size_t place = 0; place < folded.size(); ++place) {
        if (lowerAt(text, place) != folded[place]) return false;
    }
    return true;
}

bool CaseFolder::keepsPlain() const noexcept {
    return std::all_of(lower_.begin(), lower_.begin() + kPlainCharacters,
                       [](std::uint16_t each) { return each < kPlainCharacters; });
}

void orderByKeys(std::span<KeyedItem> items, Direction direction, PacedWork& work) {
    constexpr std::uint32_t kAllBits = std::numeric_limits<std::uint32_t>::max();
    const std::uint32_t turn = direction == Direction::Descending ? kAllBits : 0;
    std::sort(items.begin(), items.end(), [&work, turn](const KeyedItem& left, const KeyedItem& right) {
        work.done();
        if (left.high != right.high) return (left.high ^ turn) < (right.high ^ turn);
        if (left.low != right.low) return (left.low ^ turn) < (right.low ^ turn);
        return left.item < right.item;
    });
}

void orderByTexts(std::span<KeyedItem> items, const TextOfItem& textOf, const CaseFolder& letters, Direction direction,
                  PacedWork& work) {
    TextSorting(items, textOf, letters, direction, work).run();
}

std::vector<std::uint32_t> ranksOfTexts(std::uint32_t count, const TextOfItem& textOf, const CaseFolder& letters,
                                        PacedWork& work) {
    std::vector<KeyedItem> items(count);
    for (std::uint32_t number = 0; number < count; ++number) items[number].item = number;
    orderByTexts(items, textOf, letters, Direction::Ascending, work);
    std::vector<std::uint32_t> ranks(count);
    std::wstring last, text;
    std::uint32_t rank = 0;
    for (std::uint32_t place = 0; place < count; ++place) {
        letters.fold(textOf(items[place].item), text);
        if (place != 0 && text != last) ++rank;
        ranks[items[place].item] = rank;
        std::swap(last, text);
        work.done();
    }
    return ranks;
}

}  // namespace tovar
