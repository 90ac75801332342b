#include "shell/posix/posix_system_information.h"

#include <system_error>

#include "shell/posix/posix_text.h"

namespace tovar {

std::wstring PosixSystemInformation::errorText(SystemErrorCode code) const {
    return fromPosixName(std::generic_category().message(static_cast<int>(code)));
}

std::optional<FileVersion> PosixSystemInformation::fileVersion(const std::wstring&) const { return std::nullopt; }

}  // namespace tovar
