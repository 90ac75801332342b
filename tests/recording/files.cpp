#include "recording/files.h"

namespace recording {

namespace {

std::string readAll(const UniqueFile& file) {
    std::string text;
    char buffer[4096];
    while (const std::size_t size = file ? std::fread(buffer, 1, sizeof buffer, file.get()) : 0) {
        text.append(buffer, size);
    }
    return text;
}

}  // namespace

std::string readFile(const char* path) { return readAll(UniqueFile(std::fopen(path, "rb"))); }

std::string readFileNamedBy(const char* variable) { return readAll(openFileNamedBy(variable, "rb")); }

}  // namespace recording
