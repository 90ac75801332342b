#pragma once
#include <cstdio>
#include <memory>
#include <string>

namespace recording {

struct CloseFile {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using UniqueFile = std::unique_ptr<std::FILE, CloseFile>;

/// Opens the file that an environment variable names.
/// @param mode  of fopen
/// @return null when the variable is not set or the file cannot be opened
[[nodiscard]] UniqueFile openFileNamedBy(const char* variable, const char* mode);

/// @return the whole file; empty when there is none
[[nodiscard]] std::string readFile(const char* path);

/// @return the whole file; empty when there is none
[[nodiscard]] std::string readFileNamedBy(const char* variable);

}  // namespace recording
