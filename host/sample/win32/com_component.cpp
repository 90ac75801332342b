#include "host/sample/win32/com_component.h"

#include <initguid.h>

#include "tovar_idl.h"

namespace tovar::host {
namespace {

/// A BSTR with an owner.
class Text {
public:
    explicit Text(const std::wstring& text) : text_(::SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    ~Text() { ::SysFreeString(text_); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    operator BSTR() const { return text_; }  // NOLINT: a BSTR is what every call takes

private:
    BSTR text_;
};

}  // namespace

std::unique_ptr<ComComponent> ComComponent::create(IDispatch* parent, HRESULT& error) {
    CLSID id{};
    error = ::CLSIDFromProgID(L"TovarEx.cTovar", &id);
    if (FAILED(error)) return nullptr;
    void* object = nullptr;
    error = ::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_ITovar, &object);
    if (FAILED(error)) return nullptr;
    return std::unique_ptr<ComComponent>(new ComComponent(static_cast<ITovar*>(object), parent));
}

ComComponent::~ComComponent() {
    object_->Release();
    ::CoFreeUnusedLibrariesEx(0, 0);
}

bool ComComponent::isBusy() {
    VARIANT_BOOL busy = VARIANT_FALSE;
    object_->IsBusy(&busy);
    return busy != VARIANT_FALSE;
}

void ComComponent::setFont(const std::wstring& faceName, void* font) {
    VARIANT nothing;
    ::VariantInit(&nothing);
    object_->SetFont(Text(faceName), static_cast<LONG>(reinterpret_cast<LONG_PTR>(font)), &nothing);
    ::VariantClear(&nothing);
}

void ComComponent::configure() { object_->Configure(); }

bool ComComponent::canCreateArchive() {
    VARIANT_BOOL can = VARIANT_FALSE;
    object_->CanCreateArchive(&can);
    return can != VARIANT_FALSE;
}

void ComComponent::createArchive(const std::wstring& file, const std::wstring& folder, const std::wstring& list) {
    VARIANT_BOOL alwaysFalse = VARIANT_FALSE;  // the operation says nothing about its success
    object_->CreateArchive(Text(file), Text(folder), Text(list), parent_, &alwaysFalse);
}

bool ComComponent::openArchive(const std::wstring& file, const std::wstring& folder) {
    VARIANT_BOOL opened = VARIANT_FALSE;
    object_->OpenArchive(Text(file), Text(folder), parent_, &opened);
    return opened != VARIANT_FALSE;
}

bool ComComponent::canOpenArchive(const std::wstring& file, bool withMessages) {
    VARIANT_BOOL can = VARIANT_FALSE;
    LONG kind = 0;
    object_->CanOpenArchive(Text(file), &kind, withMessages ? VARIANT_TRUE : VARIANT_FALSE, &can);
    return can != VARIANT_FALSE;
}

void ComComponent::setTempDir(const std::wstring& folder) { object_->SetTempDir(Text(folder)); }

}  // namespace tovar::host
