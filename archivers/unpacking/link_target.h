#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "archivers/unpacking/target_name.h"

namespace archiver {

/// What a symbolic link of an archive names, as a member's name: its target, taken from the link's own folder by the
/// names alone. Empty for the folder that is unpacked into.
/// @param linkName  the link's name, made safe
/// @param target    UTF-8, as stored
/// @return nullopt for an absolute target, one that leads out, and none at all
std::optional<std::string> nameLinkedTo(std::string_view linkName, std::string_view target, NameRules rules);

/// The way from a link to a place, with ".." only in front: "." from the link "a" to "".
/// @param linkName, place  names below the target
std::string relativeWay(std::string_view linkName, std::string_view place);

}  // namespace archiver
