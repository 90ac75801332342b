#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "archivers/convention/return_codes.h"

namespace archiver {

/// For which system a name must be harmless.
enum class NameRules : std::uint8_t { kWindows, kPosix };

#ifdef _WIN32
inline constexpr NameRules kSystemNameRules = NameRules::kWindows;
#else
inline constexpr NameRules kSystemNameRules = NameRules::kPosix;
#endif

/// What the user wants of names.
struct NameWishes {
    bool flat = false;  ///< the last part only
    bool blanksToUnderscores = false;
    bool lowerCase = false;
};

/// Where a member goes below the target.
struct TargetName {
    ReturnCode code = kOk;  ///< kLongFileName, or kNotFilename where nothing is left; then `name` is empty
    std::string name;       ///< UTF-8, parts joined with "/"; empty with kOk: the target itself, as "./" says
    bool renamed = false;   ///< differs from what the member's name says, other than by the user's wishes
};

/// Makes a member's name safe: the result never leaves the target, whatever the name holds, and never names a device.
///
/// "/" and "\" both part a name. Empty parts and "." are passed over; ".." is left out, and never takes another part
/// with it; an absolute name is taken for one below the target. Control characters and bytes that are no UTF-8 become
/// "_". For Windows, drives and the prefixes of absolute names go; what stands for a device gets "_" in front; "_"
/// takes the place of what Windows does not allow, of ":", of marks that turn the direction of writing, and of dots and
/// blanks at the end of a part, which Windows would cut off.
///
/// kLongFileName: a part above 255 UTF-16 units (Windows) or bytes (POSIX), or the whole above 32,000 of them.
/// Source: Windows documentation, "Naming Files, Paths, and Namespaces"
/// @param memberName  UTF-8 as a reader gives it
TargetName targetNameOf(std::string_view memberName, const NameWishes& wishes = {}, NameRules rules = kSystemNameRules);

/// The form under which two names are one file where the file system ignores case. Composed and decomposed letters stay
/// apart, as they do in Windows.
std::string foldedKey(std::string_view name);

}  // namespace archiver
