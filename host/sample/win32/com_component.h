#pragma once
#include <windows.h>

#include <memory>
#include <string>

#include "host/sample/archive_component.h"

struct IDispatch;
struct ITovar;

namespace tovar::host {

/// The archive component, created through COM and called early-bound.
class ComComponent final : public ArchiveComponent {
public:
    /// @param parent  the object handed over as `fParent`; must outlive this
    /// @return null when the class is neither registered nor in the program's manifest; `error` says why
    static std::unique_ptr<ComComponent> create(IDispatch* parent, HRESULT& error);
    ~ComComponent() override;
    ComComponent(const ComComponent&) = delete;
    ComComponent& operator=(const ComComponent&) = delete;

    [[nodiscard]] bool isBusy() override;
    void setFont(const std::wstring& faceName, void* font) override;
    void configure() override;
    [[nodiscard]] bool canCreateArchive() override;
    void createArchive(const std::wstring& file, const std::wstring& folder, const std::wstring& list) override;
    bool openArchive(const std::wstring& file, const std::wstring& folder) override;
    [[nodiscard]] bool canOpenArchive(const std::wstring& file, bool withMessages) override;
    void setTempDir(const std::wstring& folder) override;

private:
    ComComponent(ITovar* object, IDispatch* parent) : object_(object), parent_(parent) {}

    ITovar* object_;
    IDispatch* parent_;
};

}  // namespace tovar::host
