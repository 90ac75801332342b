#pragma once
#include <windows.h>
// windows.h first
#include <unknwn.h>

#include <memory>
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

struct ReleaseInterface {
    template <class Interface>
    void operator()(Interface* object) const noexcept {
        object->Release();
    }
};

/// One counted reference to a COM object.
template <class Interface>
using ComOwner = std::unique_ptr<Interface, ReleaseInterface>;

template <class Interface>
[[nodiscard]] ComOwner<Interface> shareObject(Interface* object) noexcept {
    if (object != nullptr) object->AddRef();
    return ComOwner<Interface>(object);
}

}  // namespace tovar
