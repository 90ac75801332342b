#pragma once
#include <string>
#include <string_view>

namespace tovar {

/// The text of a run: what the library writes, and what is added to it, each on its line.
class ZipLog {
public:
    /// Goes on with the line that was begun.
    void append(std::wstring_view text) { text_ += text; }
    /// The next text begins a new line, unless one has just begun.
    void endLine() {
        if (!atLineStart()) text_ += kLineEnd;
    }
    void appendLine(std::wstring_view text) {
        endLine();
        append(text);
    }

    /// Lines end with CR LF, the last one with nothing.
    [[nodiscard]] std::wstring text() const {
        return text_.ends_with(kLineEnd) ? text_.substr(0, text_.size() - kLineEnd.size()) : text_;
    }

private:
    static constexpr std::wstring_view kLineEnd = L"\r\n";

    [[nodiscard]] bool atLineStart() const { return text_.empty() || text_.ends_with(kLineEnd); }

    std::wstring text_;
};

}  // namespace tovar
