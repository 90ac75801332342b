#include "recording/files.h"

namespace recording {

std::string readFileNamedBy(const char* variable) {
    std::string text;
    if (const UniqueFile file = openFileNamedBy(variable, "rb")) {
        char buffer[4096];
        while (const std::size_t size = std::fread(buffer, 1, sizeof buffer, file.get())) text.append(buffer, size);
    }
    return text;
}

}  // namespace recording
