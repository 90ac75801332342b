#include <cstdlib>
#include <stdexcept>

#include "recording/session.h"

namespace recording {

std::filesystem::path programFolder() { return std::filesystem::read_symlink("/proc/self/exe").parent_path(); }

std::filesystem::path makeTemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "recording-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    return name;
}

void setEnvironment(const char* variable, const std::filesystem::path& value) {
    if (value.empty()) {
        ::unsetenv(variable);
    } else {
        ::setenv(variable, value.c_str(), 1);
    }
}

}  // namespace recording
