#include "shell/program_launcher.h"

namespace tovar {

bool ProgramLauncher::HasAssociatedProgram(const std::wstring& path) const {
    return !path.empty() && programs_.hasProgramFor(path);
}

bool ProgramLauncher::OpenWithShell(const std::wstring& path, bool requireAssociation) {
    if (requireAssociation && !HasAssociatedProgram(path)) return false;
    const bool opened = programs_.open(path);
    pump_.processPending();
    return opened;
}

}  // namespace tovar
