#include "recording/files.h"

#include <cstdlib>

namespace recording {

UniqueFile openFileNamedBy(const char* variable, const char* mode) {
    const char* const path = std::getenv(variable);
    return UniqueFile(path != nullptr ? std::fopen(path, mode) : nullptr);
}

}  // namespace recording
