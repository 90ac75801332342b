#pragma once
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace tovar {

/// Who makes the archive.
enum class Packer { None, Zip, Lha, Cab };

/// The options of the pack dialog, numbered as its boxes.
enum class PackOption : std::size_t { Recurse = 0, FolderInfo = 1, Password = 2, SystemAndHidden = 3, FullMessage = 4 };
inline constexpr std::size_t kPackOptions = 5;

/// What was chosen in the pack dialog.
struct PackChoice {
    int action = 0;  ///< 0 add, 1 update, 2 freshen, 3 move
    int level = 6;   ///< 0 to 9
    std::array<bool, kPackOptions> options{};

    [[nodiscard]] bool has(PackOption option) const noexcept { return options[static_cast<std::size_t>(option)]; }
};

/// @return the zip engine's command line, such as "a -r -l6"
[[nodiscard]] std::wstring zipPackLine(const PackChoice& choice);

/// @return action and switches for the LZH library; a blank stands at the end
[[nodiscard]] std::wstring lhaSwitches(const PackChoice& choice);
/// Likewise for the CAB library, which knows neither actions nor levels.
[[nodiscard]] std::wstring cabSwitches(const PackChoice& choice);

/// @param switches  end with a blank, so that two stand before the archive
/// @param list      "@" and the response file
[[nodiscard]] std::wstring packLine(std::wstring_view switches, std::wstring_view archive, std::wstring_view baseFolder,
                                    std::wstring_view list);

/// @return the extension of a packer's archives, in lower case and without "."
[[nodiscard]] std::wstring_view extensionOf(Packer packer) noexcept;

/// @return the path with the packer's extension in place of its own; a path without a folder or without a file name
///         stays as it is
[[nodiscard]] std::wstring withExtensionOf(Packer packer, std::wstring_view path);

}  // namespace tovar
