#include "drivers/library_folders.h"

#include <filesystem>

#include "shell/posix/posix_text.h"

namespace tovar {
namespace {

/// Archiver libraries are no system libraries here: they lie beside the program that uses them.
class PosixLibraryFolders final : public LibraryFolders {
public:
    [[nodiscard]] std::vector<std::wstring> searchOrder() const override {
        std::error_code error;
        const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
        if (error) {
            return {};
        }
        return {fromPosixName(program.parent_path().native())};
    }
};

}  // namespace

std::unique_ptr<LibraryFolders> systemLibraryFolders() { return std::make_unique<PosixLibraryFolders>(); }

}  // namespace tovar
