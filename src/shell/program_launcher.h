#pragma once
#include <string>

#include "shell/message_pump.h"

namespace tovar {

/// The desktop's knowledge of programs. Paths are full ones of files; no call throws but for want of memory.
class DesktopPrograms {
public:
    virtual ~DesktopPrograms() = default;
    /// @return whether a program is registered for files like this one, which must exist
    [[nodiscard]] virtual bool hasProgramFor(const std::wstring& path) const = 0;
    /// Opens the file as a double-click on the desktop does; a program is started.
    virtual bool open(const std::wstring& path) = 0;
};

/// Opens files with the programs that are registered for them.
class ProgramLauncher {
public:
    /// Both outlive the object.
    ProgramLauncher(DesktopPrograms& programs, MessagePump& pump) : programs_(programs), pump_(pump) {}

    /// @return false for an empty path
    [[nodiscard]] bool HasAssociatedProgram(const std::wstring& path) const;

    /// @param requireAssociation  whether a file without a program of its own is left alone; else the desktop may let
    ///                            the user choose one
    /// @return whether it was opened
    bool OpenWithShell(const std::wstring& path, bool requireAssociation);

private:
    DesktopPrograms& programs_;
    MessagePump& pump_;
};

}  // namespace tovar
