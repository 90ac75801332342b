#include "front/win32/entries_object.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "front/automation/entry_facts.h"
#include "front/win32/component_errors.h"
#include "front/win32/dispatch_object.h"

namespace tovar {
namespace {

using Listing = std::shared_ptr<const SharedListing>;

LONG countOf(const Listing& listing) noexcept {
    return static_cast<LONG>(std::min<std::uint32_t>(listing->archive->entries().size(), LONG_MAX));
}

HRESULT answer(BSTR* result, const std::wstring& text) {
    *result = makeBstr(text).release();
    return S_OK;
}

// Members of an entry, late-bound: each is a property without arguments.

ITovarEntry& entry(IDispatch& object) noexcept { return static_cast<ITovarEntry&>(object); }

template <HRESULT (STDMETHODCALLTYPE ITovarEntry::*get)(BSTR*)>
HRESULT text(IDispatch& object, ArgumentValues&, VARIANT& result) {
    V_VT(&result) = VT_BSTR;
    V_BSTR(&result) = nullptr;
    return (entry(object).*get)(&V_BSTR(&result));
}

template <HRESULT (STDMETHODCALLTYPE ITovarEntry::*get)(double*)>
HRESULT number(IDispatch& object, ArgumentValues&, VARIANT& result) {
    V_VT(&result) = VT_R8;
    return (entry(object).*get)(&V_R8(&result));
}

constexpr MethodRow kEntryRows[] = {
    {0, L"Path", {}, &text<&ITovarEntry::get_Path>},
    {1, L"Name", {}, &text<&ITovarEntry::get_Name>},
    {2, L"Size", {}, &number<&ITovarEntry::get_Size>},
    {3, L"PackedSize", {}, &number<&ITovarEntry::get_PackedSize>},
    {4,
     L"Time",
     {},
     [](IDispatch& object, ArgumentValues&, VARIANT& result) { return entry(object).get_Time(&result); }},
    {5,
     L"Crc32",
     {},
     [](IDispatch& object, ArgumentValues&, VARIANT& result) {
         V_VT(&result) = VT_I4;
         return entry(object).get_Crc32(&V_I4(&result));
     }},
    {6, L"Ratio", {}, &number<&ITovarEntry::get_Ratio>},
    {7, L"Method", {}, &text<&ITovarEntry::get_Method>},
    {8,
     L"IsFolder",
     {},
     [](IDispatch& object, ArgumentValues&, VARIANT& result) {
         V_VT(&result) = VT_BOOL;
         return entry(object).get_IsFolder(&V_BOOL(&result));
     }},
};

/// One entry; its fields are made as they are asked for.
class Entry final : public DispatchObject<ITovarEntry> {
public:
    Entry(Listing listing, std::uint32_t index)
        : DispatchObject(IID_ITovarEntry, kEntryRows), listing_(std::move(listing)), index_(index) {}

    STDMETHODIMP get_Path(BSTR* result) override {
        return give(result, [&] { return answer(result, entryPath(driver(), index_)); });
    }
    STDMETHODIMP get_Name(BSTR* result) override {
        return give(result, [&] { return answer(result, entryName(driver(), index_)); });
    }
    STDMETHODIMP get_Size(double* result) override {
        return give(result, [&] {
            *result = static_cast<double>(record().original);
            return S_OK;
        });
    }
    STDMETHODIMP get_PackedSize(double* result) override {
        return give(result, [&] {
            *result = static_cast<double>(record().packed);
            return S_OK;
        });
    }
    STDMETHODIMP get_Time(VARIANT* result) override {
        return give(result, [&] {
            const auto date = entryDate(driver(), index_);
            V_VT(result) = date ? VT_DATE : VT_NULL;
            if (date) V_DATE(result) = *date;
            return S_OK;
        });
    }
    STDMETHODIMP get_Crc32(LONG* result) override {
        return give(result, [&] {
            *result = static_cast<LONG>(record().crc);  // the 32 bits as they are: Hex() of a script shows them
            return S_OK;
        });
    }
    STDMETHODIMP get_Ratio(double* result) override {
        return give(result, [&] {
            *result = record().ratio / 10.0;
            return S_OK;
        });
    }
    STDMETHODIMP get_Method(BSTR* result) override {
        return give(result, [&] { return answer(result, driver().FileType(index_)); });
    }
    STDMETHODIMP get_IsFolder(VARIANT_BOOL* result) override {
        return give(result, [&] {
            *result = entryIsFolder(driver(), index_) ? VARIANT_TRUE : VARIANT_FALSE;
            return S_OK;
        });
    }

private:
    ~Entry() override = default;

    template <class Result, class Body>
    static HRESULT give(Result* result, Body body) noexcept {
        if (result == nullptr) return E_POINTER;
        *result = {};
        const HRESULT code = comMethod(body);
        return FAILED(code) ? reportError(code, IID_ITovarEntry) : code;
    }
    [[nodiscard]] const ArchiveDriver& driver() const noexcept { return *listing_->archive; }
    [[nodiscard]] EntryRecord record() const { return driver().entries().record(index_); }

    Listing listing_;
    std::uint32_t index_;
};

ComOwner<ITovarEntry> makeEntry(const Listing& listing, LONG index) {
    return ComOwner<ITovarEntry>(new Entry(listing, static_cast<std::uint32_t>(index)));
}

/// Goes through the entries for "For Each".
class EntryEnumerator final : public ComObject<IEnumVARIANT, IID_IEnumVARIANT> {
public:
    explicit EntryEnumerator(Listing listing, LONG next = 0) : listing_(std::move(listing)), next_(next) {}

    STDMETHODIMP Next(ULONG count, VARIANT* elements, ULONG* fetched) override {
        if (fetched != nullptr) *fetched = 0;
        if (elements == nullptr || (fetched == nullptr && count != 1)) return E_POINTER;
        return comMethod([&] {
            ULONG given = 0;
            for (; given < count && next_ < countOf(listing_); ++given, ++next_) {
                ::VariantInit(&elements[given]);
                ComOwner<ITovarEntry> made = makeEntry(listing_, next_);
                V_VT(&elements[given]) = VT_DISPATCH;
                V_DISPATCH(&elements[given]) = made.release();
                if (fetched != nullptr) *fetched = given + 1;
            }
            return given == count ? S_OK : S_FALSE;
        });
    }
    STDMETHODIMP Skip(ULONG count) override {
        const ULONG left = static_cast<ULONG>(countOf(listing_) - next_);
        next_ += static_cast<LONG>(std::min(count, left));
        return count <= left ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() override {
        next_ = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(IEnumVARIANT** clone) override {
        if (clone == nullptr) return E_POINTER;
        *clone = nullptr;
        return comMethod([&] {
            *clone = new EntryEnumerator(listing_, next_);
            return S_OK;
        });
    }

private:
    ServerLock lock_;
    Listing listing_;
    LONG next_;
};

ITovarEntries& entries(IDispatch& object) noexcept { return static_cast<ITovarEntries&>(object); }

constexpr ParameterRow kItem[] = {{L"nIndex", ParameterType::Long}};
constexpr MethodRow kEntriesRows[] = {
    {0, L"Item", kItem,
     [](IDispatch& object, ArgumentValues& arguments, VARIANT& result) {
         ITovarEntry* found = nullptr;
         const HRESULT code = entries(object).get_Item(arguments[0].number, &found);
         V_VT(&result) = VT_DISPATCH;
         V_DISPATCH(&result) = found;
         return code;
     }},
    {1,
     L"Count",
     {},
     [](IDispatch& object, ArgumentValues&, VARIANT& result) {
         V_VT(&result) = VT_I4;
         return entries(object).get_Count(&V_I4(&result));
     }},
    {DISPID_NEWENUM,
     L"_NewEnum",
     {},
     [](IDispatch& object, ArgumentValues&, VARIANT& result) {
         V_VT(&result) = VT_UNKNOWN;
         V_UNKNOWN(&result) = nullptr;
         return entries(object).get__NewEnum(&V_UNKNOWN(&result));
     }},
};

class Entries final : public DispatchObject<ITovarEntries> {
public:
    explicit Entries(Listing listing) : DispatchObject(IID_ITovarEntries, kEntriesRows), listing_(std::move(listing)) {}

    STDMETHODIMP get_Item(LONG nIndex, ITovarEntry** result) override {
        if (result == nullptr) return E_POINTER;
        *result = nullptr;
        if (nIndex < 1 || nIndex > countOf(listing_)) return reportError(DISP_E_BADINDEX, IID_ITovarEntries);
        return comMethod([&] {
            *result = makeEntry(listing_, nIndex - 1).release();
            return S_OK;
        });
    }
    STDMETHODIMP get_Count(LONG* result) override {
        if (result == nullptr) return E_POINTER;
        *result = countOf(listing_);
        return S_OK;
    }
    STDMETHODIMP get__NewEnum(IUnknown** result) override {
        if (result == nullptr) return E_POINTER;
        *result = nullptr;
        return comMethod([&] {
            *result = new EntryEnumerator(listing_);
            return S_OK;
        });
    }

private:
    ~Entries() override = default;

    Listing listing_;
};

}  // namespace

ComOwner<ITovarEntries> makeEntries(std::shared_ptr<const SharedListing> listing) {
    return ComOwner<ITovarEntries>(new Entries(std::move(listing)));
}

}  // namespace tovar
