#include "front/win32/late_binding.h"

#include "front/win32/component_errors.h"
#include "front/win32/name_lists.h"
#include "front/win32/variant_values.h"

namespace tovar {
namespace {

/// Which of the caller's arguments goes to which parameter; null where the caller gave none.
using Places = std::array<VARIANT*, kMostParameters>;

/// Arguments lie in reverse order, those with names before the others.
HRESULT assign(const MethodRow& method, const DISPPARAMS& given, Places& places, UINT& bad) noexcept {
    if (given.cNamedArgs > given.cArgs || given.cArgs > method.parameters.size()) return DISP_E_BADPARAMCOUNT;
    if (given.cArgs != 0 && given.rgvarg == nullptr) return E_INVALIDARG;
    if (given.cNamedArgs != 0 && given.rgdispidNamedArgs == nullptr) return E_INVALIDARG;
    for (UINT i = 0; i < given.cArgs - given.cNamedArgs; ++i) places[i] = &given.rgvarg[given.cArgs - 1 - i];
    for (UINT i = 0; i < given.cNamedArgs; ++i) {
        DISPID place = given.rgdispidNamedArgs[i];
        bad = i;
        // The value of a property is its last argument, and always named.
        if (place == DISPID_PROPERTYPUT && method.access == MemberAccess::Set) {
            place = static_cast<DISPID>(method.parameters.size()) - 1;
        }
        if (place < 0 || static_cast<std::size_t>(place) >= method.parameters.size()) return DISP_E_PARAMNOTFOUND;
        if (places[place] != nullptr) return DISP_E_BADPARAMCOUNT;
        places[place] = &given.rgvarg[i];
    }
    for (std::size_t i = 0; i < method.parameters.size(); ++i) {
        if (method.parameters[i].optional || (places[i] != nullptr && !isMissing(*places[i]))) continue;
        if (places[i] == nullptr) return given.cNamedArgs == 0 ? DISP_E_BADPARAMCOUNT : DISP_E_PARAMNOTOPTIONAL;
        bad = static_cast<UINT>(places[i] - given.rgvarg);
        return DISP_E_PARAMNOTOPTIONAL;
    }
    return S_OK;
}

HRESULT read(ParameterType type, const VARIANT& argument, LCID locale, ArgumentValue& value) noexcept {
    switch (type) {
        case ParameterType::Text:
            return readText(argument, locale, value.text);
        case ParameterType::Handle:
            return readHandle(argument, locale, value.number);
        case ParameterType::Boolean:
            return readBoolean(argument, locale, value.flag);
        case ParameterType::Object:
            return readObject(argument, value.object);
        case ParameterType::Long:
        case ParameterType::LongInOut:
            return readLong(argument, locale, value.number);
        case ParameterType::Names:
            return readNames(argument, locale, value.text);
    }
    return E_UNEXPECTED;
}

HRESULT writeBack(const MethodRow& method, const ArgumentValues& values, const ArgumentValues& before,
                  const Places& places, LCID locale) noexcept {
    for (std::size_t i = 0; i < method.parameters.size(); ++i) {
        if (method.parameters[i].type != ParameterType::LongInOut || values[i].number == before[i].number) continue;
        const HRESULT result = writeLong(*places[i], locale, values[i].number);
        if (FAILED(result)) return result;
    }
    return S_OK;
}

/// What the method left for its caller; taken with it.
std::wstring leftDescription() {
    IErrorInfo* left = nullptr;
    if (::GetErrorInfo(0, &left) != S_OK || left == nullptr) return {};
    const ComOwner<IErrorInfo> info(left);
    BSTR text = nullptr;
    if (FAILED(info->GetDescription(&text))) return {};
    const UniqueBstr owner(text);
    return std::wstring(viewOf(text));
}

HRESULT fail(HRESULT code, EXCEPINFO* exception) {
    std::wstring description = leftDescription();
    if (description.empty()) description = errorDescription(code);
    if (exception != nullptr) {
        *exception = {};
        exception->scode = code;
        exception->bstrSource = makeBstr(kErrorSource).release();
        exception->bstrDescription = makeBstr(description).release();
    }
    return DISP_E_EXCEPTION;
}

const MethodRow* find(std::span<const DispatchPart> parts, DISPID id, WORD flags, IDispatch*& object) noexcept {
    // Script engines ask for the value of a method without arguments as for a property.
    const bool calls = (flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)) != 0;
    const bool sets = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    for (const DispatchPart& part : parts) {
        for (const MethodRow& row : part.rows) {
            if (row.id != id || !(row.access == MemberAccess::Set ? sets : calls)) continue;
            object = part.object;
            return &row;
        }
    }
    return nullptr;
}

/// Whether the parameter gets its value for nothing.
bool isLeftOut(const ParameterRow& parameter, const VARIANT* argument) noexcept {
    return argument == nullptr || (parameter.optional && isMissing(*argument));
}

HRESULT invoke(IDispatch& object, const MethodRow& method, LCID locale, const DISPPARAMS& given, VARIANT* result,
               EXCEPINFO* exception, UINT& bad) {
    Places places{};
    const HRESULT assigned = assign(method, given, places, bad);
    if (FAILED(assigned)) return assigned;

    ArgumentValues values, before;
    for (std::size_t i = 0; i < method.parameters.size(); ++i) {
        if (isLeftOut(method.parameters[i], places[i])) {
            values[i].number = before[i].number = method.parameters[i].fallback;
            values[i].flag = method.parameters[i].fallback != 0 ? VARIANT_TRUE : VARIANT_FALSE;
            continue;
        }
        bad = static_cast<UINT>(places[i] - given.rgvarg);
        const HRESULT read_ = read(method.parameters[i].type, *places[i], locale, values[i]);
        if (FAILED(read_)) return read_;
        before[i].number = values[i].number;
    }

    Variant answer;
    ::SetErrorInfo(0, nullptr);
    const HRESULT called = method.call(object, values, *answer.get());
    if (FAILED(called)) return fail(called, exception);
    const HRESULT written = writeBack(method, values, before, places, locale);
    if (FAILED(written)) return written;
    if (result != nullptr) {
        *result = *answer;
        V_VT(answer.get()) = VT_EMPTY;
    }
    return S_OK;
}

}  // namespace

HRESULT invokeMethod(std::span<const DispatchPart> parts, DISPID id, REFIID iid, LCID locale, WORD flags,
                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception, UINT* badArgument) noexcept {
    if (result != nullptr) ::VariantInit(result);
    if (!IsEqualIID(iid, IID_NULL)) return DISP_E_UNKNOWNINTERFACE;
    IDispatch* object = nullptr;
    const MethodRow* const method = find(parts, id, flags, object);
    if (method == nullptr) return DISP_E_MEMBERNOTFOUND;
    if (parameters == nullptr) return E_INVALIDARG;
    return comMethod([&] {
        UINT bad = 0;
        const HRESULT code = invoke(*object, *method, locale, *parameters, result, exception, bad);
        if (FAILED(code) && badArgument != nullptr) *badArgument = bad;
        return code;
    });
}

}  // namespace tovar
