#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

#include "drivers/archive_driver.h"
#include "drivers/archiver_libraries.h"
#include "drivers/password_source.h"
#include "settings/archive_kind.h"
#include "shell/file_system.h"
#include "shell/message_boxes.h"
#include "shell/regional.h"

namespace tovar {

/// What a driver is made from; everything outlives the driver.
struct DriverServices {
    ArchiverLibraries& libraries;
    MessageBoxes& messages;
    const RegionalSettings& regional;
    FileSystem& files;
    PasswordSource& passwords;
};

using DriverFactory = std::unique_ptr<ArchiveDriver> (*)(const DriverServices& services);

/// One archiver library in one role: reading the archives of a kind, or creating them.
struct KindRow {
    ArchiveKind bit = kind::kNone;
    std::wstring_view library;                         ///< file name, such as "UnZip32.dll"
    std::span<const std::wstring_view> extensions;     ///< upper case, without "."; none for a creating row
    std::optional<std::uint16_t> minimumVersion = {};  ///< of the library; without one its presence is enough
    ArchiveKind creationBit = kind::kNone;             ///< creating bit that follows this library
    DriverFactory makeDriver = nullptr;                ///< null: archives of the kind cannot be read yet

    [[nodiscard]] constexpr bool reads() const noexcept { return (bit & kind::kReading) != 0; }
};

/// All kinds, in the order in which extensions are compared and libraries are checked.
[[nodiscard]] std::span<const KindRow> kindTable() noexcept;

/// @return the row that serves a file by its extension, whole and in either case; null when it is no archive name.
///         The extension is that of the whole path: "C:\a.b\file" has "B\FILE".
[[nodiscard]] const KindRow* kindByName(std::wstring_view fileName);

[[nodiscard]] bool IsArchiveName(std::wstring_view fileName);

}  // namespace tovar
