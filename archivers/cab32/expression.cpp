#include "archivers/cab32/expression.h"

#include <algorithm>

#include "archivers/formats/letter_case.h"
#include "archivers/formats/utf8.h"

namespace archiver {

namespace {

constexpr char32_t kSeparator = U'/';
constexpr std::size_t kMostCharacters = 4096;
constexpr unsigned kMostNesting = 64;

std::u32string foldedCharacters(std::string_view utf8) {
    std::u32string text;
    while (!utf8.empty()) {
        const DecodedCharacter next = decodeCharacter(utf8);
        text.push_back(foldCase(next.value));
        utf8.remove_prefix(next.length);
    }
    return text;
}

constexpr char32_t asSeparator(char32_t character) { return character == U'\\' ? kSeparator : character; }

}  // namespace

/// Builds the steps back to front: each piece is given the step that follows it.
class ExpressionCompiler {
public:
    ExpressionCompiler(std::u32string_view text, Expression& expression) : text_(text), steps_(expression.steps_) {}

    std::optional<std::size_t> compile() {
        if (text_.starts_with(U'^')) text_.remove_prefix(1);
        if (text_.ends_with(U'$') && !isEscaped(text_.size() - 1)) text_.remove_suffix(1);
        steps_.push_back({});
        if (!parseAlternatives(0) || at_ != text_.size()) return std::nullopt;
        return build(root_, 0);
    }

private:
    /// A piece of the expression; its parts are indexes.
    struct Piece {
        enum class Kind : std::uint8_t { kNothing, kClass, kBoth, kEither, kRepeated };
        Kind kind = Kind::kNothing;
        Expression::Step set;
        std::size_t one = 0;
        std::size_t other = 0;
        char32_t repetition = 0;
    };

    /// Whether an odd number of "\" stands in front of the character.
    [[nodiscard]] bool isEscaped(std::size_t at) const {
        const std::size_t last = at == 0 ? std::u32string_view::npos : text_.find_last_not_of(U'\\', at - 1);
        const std::size_t count = last == std::u32string_view::npos ? at : at - 1 - last;
        return count % 2 != 0;
    }

    std::size_t add(Piece piece) {
        pieces_.push_back(std::move(piece));
        return pieces_.size() - 1;
    }

    bool parseAlternatives(unsigned depth) {
        if (depth > kMostNesting || !parseSequence(depth)) return false;
        std::vector<std::size_t> branches{root_};
        while (at_ < text_.size() && text_[at_] == U'|') {
            ++at_;
            if (!parseSequence(depth)) return false;
            branches.push_back(root_);
        }
        root_ = joined(Piece::Kind::kEither, branches, 0, branches.size());
        return true;
    }

    bool parseSequence(unsigned depth) {
        std::vector<std::size_t> parts;
        while (at_ < text_.size() && text_[at_] != U'|' && text_[at_] != U')') {
            if (!parseOne(depth)) return false;
            if (const char32_t repetition = takeRepetition(); repetition != 0) {
                root_ = add({.kind = Piece::Kind::kRepeated, .set = {}, .one = root_, .repetition = repetition});
            }
            parts.push_back(root_);
        }
        root_ = joined(Piece::Kind::kBoth, parts, 0, parts.size());
        return true;
    }

    /// Several signs are as one: the same, or "*" when they differ.
    char32_t takeRepetition() {
        char32_t repetition = 0;
        for (; at_ < text_.size() && std::u32string_view(U"*+?").find(text_[at_]) != std::u32string_view::npos; ++at_) {
            repetition = repetition == 0 || repetition == text_[at_] ? text_[at_] : U'*';
        }
        return repetition;
    }

    /// As a balanced tree, so that building it nests little.
    std::size_t joined(Piece::Kind kind, const std::vector<std::size_t>& parts, std::size_t from, std::size_t to) {
        if (from == to) return add({});
        if (to - from == 1) return parts[from];
        const std::size_t middle = from + (to - from) / 2;
        const std::size_t one = joined(kind, parts, from, middle);
        const std::size_t other = joined(kind, parts, middle, to);
        return add({.kind = kind, .set = {}, .one = one, .other = other});
    }

    bool parseOne(unsigned depth) {
        const char32_t character = text_[at_++];
        switch (character) {
            case U'(':
                if (!parseAlternatives(depth + 1) || at_ == text_.size()) return false;
                return text_[at_++] == U')';
            case U'[':
                return parseClass();
            case U'.':
                return addClass({}, true);
            case U'*':
            case U'+':
            case U'?':
                return false;
            case U'\\': {
                if (at_ == text_.size()) return false;
                const char32_t itself = asSeparator(text_[at_++]);
                return addClass({{itself, itself}}, false);
            }
            default:
                return addClass({{character, character}}, false);
        }
    }

    bool parseClass() {
        const bool negated = at_ < text_.size() && text_[at_] == U'^';
        if (negated) ++at_;
        std::vector<Expression::Range> ranges;
        while (at_ < text_.size() && (text_[at_] != U']' || ranges.empty())) {
            const char32_t from = asSeparator(text_[at_++]);
            char32_t to = from;
            if (at_ + 1 < text_.size() && text_[at_] == U'-' && text_[at_ + 1] != U']') {
                to = text_[at_ + 1];
                at_ += 2;
            }
            ranges.emplace_back(from, to);
        }
        if (at_ == text_.size()) return false;
        ++at_;
        return addClass(std::move(ranges), negated);
    }

    bool addClass(std::vector<Expression::Range> ranges, bool negated) {
        Piece piece{.kind = Piece::Kind::kClass, .set = {}};
        piece.set.kind = Expression::Step::Kind::kClass;
        piece.set.negated = negated;
        piece.set.ranges = std::move(ranges);
        root_ = add(std::move(piece));
        return true;
    }

    /// @param next  the step behind the piece
    /// @return its first step
    std::size_t build(std::size_t index, std::size_t next) {
        const Piece& piece = pieces_[index];
        switch (piece.kind) {
            case Piece::Kind::kNothing:
                return next;
            case Piece::Kind::kClass: {
                steps_.push_back(piece.set);
                steps_.back().next = next;
                return steps_.size() - 1;
            }
            case Piece::Kind::kBoth:
                return build(piece.one, build(piece.other, next));
            case Piece::Kind::kEither: {
                const std::size_t one = build(piece.one, next);
                return addSplit(one, build(piece.other, next));
            }
            case Piece::Kind::kRepeated:
                break;
        }
        if (piece.repetition == U'?') return addSplit(build(piece.one, next), next);
        const std::size_t again = addSplit(next, next);
        const std::size_t first = build(piece.one, again);
        steps_[again].next = first;
        return piece.repetition == U'+' ? first : again;
    }

    std::size_t addSplit(std::size_t one, std::size_t other) {
        Expression::Step step;
        step.kind = Expression::Step::Kind::kSplit;
        step.next = one;
        step.other = other;
        steps_.push_back(std::move(step));
        return steps_.size() - 1;
    }

    std::u32string_view text_;
    std::vector<Expression::Step>& steps_;
    std::vector<Piece> pieces_;
    std::size_t at_ = 0;
    std::size_t root_ = 0;
};

/// The steps that may come next, each once.
struct Expression::States {
    explicit States(std::size_t count) : known(count) {}
    std::vector<bool> known;
    std::vector<std::size_t> steps;
    std::vector<std::size_t> pending;

    void clear() {
        known.assign(known.size(), false);
        steps.clear();
    }
};

std::optional<Expression> Expression::compile(std::string_view utf8) {
    const std::u32string text = foldedCharacters(utf8);
    Expression expression;
    if (text.size() > kMostCharacters) return std::nullopt;
    const std::optional<std::size_t> first = ExpressionCompiler(text, expression).compile();
    if (!first) return std::nullopt;
    expression.first_ = *first;
    return expression;
}

void Expression::enter(std::size_t step, States& states) const {
    states.pending.push_back(step);
    while (!states.pending.empty()) {
        const std::size_t next = states.pending.back();
        states.pending.pop_back();
        if (states.known[next]) continue;
        states.known[next] = true;
        if (steps_[next].kind == Step::Kind::kSplit) {
            states.pending.push_back(steps_[next].next);
            states.pending.push_back(steps_[next].other);
        } else {
            states.steps.push_back(next);
        }
    }
}

bool Expression::takes(const Step& step, char32_t character) {
    const bool found = std::any_of(step.ranges.begin(), step.ranges.end(), [character](const Range& range) {
        return character >= range.first && character <= range.second;
    });
    return found != step.negated;
}

bool Expression::matches(std::string_view utf8Text) const {
    States now(steps_.size());
    States after(steps_.size());
    enter(first_, now);
    for (const char32_t character : foldedCharacters(utf8Text)) {
        after.clear();
        for (const std::size_t step : now.steps) {
            if (steps_[step].kind == Step::Kind::kClass && takes(steps_[step], asSeparator(character))) {
                enter(steps_[step].next, after);
            }
        }
        std::swap(now, after);
        if (now.steps.empty()) return false;
    }
    return std::any_of(now.steps.begin(), now.steps.end(),
                       [this](std::size_t step) { return steps_[step].kind == Step::Kind::kEnd; });
}

}  // namespace archiver
