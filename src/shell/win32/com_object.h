#pragma once
#include <windows.h>
// windows.h first
#include <unknwn.h>

#include <new>

namespace tovar {

/// Runs the body of a COM method: no exception leaves it.
template <class Body>
HRESULT comMethod(const Body& body) noexcept {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

/// A COM object of one interface, made with `new`, that ends with its last reference. It has the first one from the
/// beginning.
/// @param Ids  the interface's identifier, and those of the interfaces that it is derived from but IUnknown
template <class Interface, const IID&... Ids>
class ComObject : public Interface {
public:
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override {
        if (object == nullptr) return E_POINTER;
        *object = nullptr;
        if (!(IsEqualIID(iid, IID_IUnknown) || ... || IsEqualIID(iid, Ids))) return E_NOINTERFACE;
        *object = static_cast<Interface*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() noexcept override { return static_cast<ULONG>(::InterlockedIncrement(&references_)); }
    STDMETHODIMP_(ULONG) Release() noexcept override {
        const LONG left = ::InterlockedDecrement(&references_);
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }

protected:
    ComObject() = default;
    virtual ~ComObject() = default;

private:
    LONG references_ = 1;
};

/// Holds a reference to a COM object.
template <class Interface>
class ComReference {
public:
    ComReference() = default;
    /// Takes over the caller's reference.
    explicit ComReference(Interface* object) noexcept : object_(object) {}
    ~ComReference() {
        if (object_ != nullptr) object_->Release();
    }
    ComReference(const ComReference&) = delete;
    ComReference& operator=(const ComReference&) = delete;

    [[nodiscard]] Interface* get() const noexcept { return object_; }
    Interface* operator->() const noexcept { return object_; }
    /// For calls that give a reference.
    [[nodiscard]] Interface** put() noexcept { return &object_; }

private:
    Interface* object_ = nullptr;
};

}  // namespace tovar
