#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/archive_kind.h"

namespace tovar {

/// How an archive is made or changed.
struct ArchiveChange {
    enum class Action { Create, Add, Delete };
    enum class Sources { All, Newer, NewerAndThere };  ///< the last two: than the member of that name

    Action action = Action::Create;
    std::vector<std::wstring> names = {};  ///< files and folders; for Delete members, folders with a separator behind
    std::optional<int> level = {};         ///< 0 to 9
    Sources sources = Sources::All;
    bool move = false;
    bool recurse = true;
    bool hidden = false;
    bool encrypt = false;
};

/// Why archives of a kind cannot take a change, without a full stop; empty when they can.
[[nodiscard]] std::wstring refusalOf(const ArchiveChange& change, ArchiveKind kind);

/// The zip engine's command line, such as "a -r -l6".
[[nodiscard]] std::wstring zipWords(const ArchiveChange& change);
/// Action and switches for an LZH archive, without a blank at the end. Level 0 is a method of its own; all others are
/// the usual one.
[[nodiscard]] std::wstring lhaWords(const ArchiveChange& change);
/// Likewise for a cabinet, which is always made anew.
[[nodiscard]] std::wstring cabWords(const ArchiveChange& change);

}  // namespace tovar
