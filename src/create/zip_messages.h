#pragma once
#include <string>
#include <string_view>

namespace tovar {

/// What a line of the zip library's console text is about.
enum class ZipMessageKind {
    Text,    ///< the rest of a line, or anything else
    Tick,    ///< "." alone: a little more is done
    Adding,  ///< an entry begins, as with the next three
    Updating,
    Freshening,
    Deleting,
    Note,  ///< "zip info" or a warning
    Total  ///< the sums at the end
};

/// One line, or the part of it that came.
struct ZipMessage {
    ZipMessageKind kind = ZipMessageKind::Text;
    std::wstring text = {};   ///< the whole line, "\" between folders, without line ends
    std::wstring entry = {};  ///< name of the entry that begins, as the library wrote it
    bool finished = false;    ///< it tells how an entry was packed
    bool notMatched = false;  ///< a name that matches nothing

    /// @return whether an entry begins
    [[nodiscard]] bool begins() const noexcept {
        return kind >= ZipMessageKind::Adding && kind <= ZipMessageKind::Deleting;
    }
};

/// Reads one line: its parts are separated by ": ", and compared without regard to case.
/// @param line  line ends may stand in it; they do not count
[[nodiscard]] ZipMessage readZipMessage(std::wstring_view line);

}  // namespace tovar
