#pragma once
#include <string>

namespace tovar::host {

/// The archive component as a host sees it: the eight operations, with the host's own window already filled in.
class ArchiveComponent {
public:
    virtual ~ArchiveComponent() = default;
    [[nodiscard]] virtual bool isBusy() = 0;
    /// @param font  handle of the host's font
    virtual void setFont(const std::wstring& faceName, void* font) = 0;
    virtual void configure() = 0;
    [[nodiscard]] virtual bool canCreateArchive() = 0;
    /// @param list  names relative to `folder`, separated by CR LF
    virtual void createArchive(const std::wstring& file, const std::wstring& folder, const std::wstring& list) = 0;
    virtual bool openArchive(const std::wstring& file, const std::wstring& folder) = 0;
    [[nodiscard]] virtual bool canOpenArchive(const std::wstring& file, bool withMessages) = 0;
    virtual void setTempDir(const std::wstring& folder) = 0;
};

}  // namespace tovar::host
