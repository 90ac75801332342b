#include "front/win32/method_table.h"

namespace tovar {
namespace {

constexpr ParameterRow kSetFont[] = {{L"sFontName", ParameterType::Text}, {L"hFont", ParameterType::Handle}};
constexpr ParameterRow kCreateArchive[] = {{L"sArcFile", ParameterType::Text},
                                           {L"sArcDir", ParameterType::Text},
                                           {L"sArcList", ParameterType::Text},
                                           {L"fParent", ParameterType::Object, true}};
constexpr ParameterRow kOpenArchive[] = {
    {L"sArcFile", ParameterType::Text}, {L"sArcDir", ParameterType::Text}, {L"fParent", ParameterType::Object, true}};
constexpr ParameterRow kCanOpenArchive[] = {
    {L"sArcFile", ParameterType::Text}, {L"nArcMode", ParameterType::LongInOut}, {L"bMsg", ParameterType::Boolean}};
constexpr ParameterRow kSetTempDir[] = {{L"sTempDir", ParameterType::Text}};

ITovar& tovar(IDispatch& object) noexcept { return static_cast<ITovar&>(object); }

VARIANT_BOOL* answer(VARIANT& result) {
    V_VT(&result) = VT_BOOL;
    V_BOOL(&result) = VARIANT_FALSE;
    return &V_BOOL(&result);
}

constexpr MethodRow kRows[] = {
    {1,
     L"IsBusy",
     {},
     [](IDispatch& object, ArgumentValues&, VARIANT& result) { return tovar(object).IsBusy(answer(result)); }},
    {2, L"SetFont", kSetFont,
     [](IDispatch& object, ArgumentValues& arguments, VARIANT& result) {
         return tovar(object).SetFont(arguments[0].text.get(), arguments[1].number, &result);
     }},
    {3, L"Configure", {}, [](IDispatch& object, ArgumentValues&, VARIANT&) { return tovar(object).Configure(); }},
    {4,
     L"CanCreateArchive",
     {},
     [](IDispatch& object, ArgumentValues&, VARIANT& result) {
         return tovar(object).CanCreateArchive(answer(result));
     }},
    {5, L"CreateArchive", kCreateArchive,
     [](IDispatch& object, ArgumentValues& arguments, VARIANT& result) {
         return tovar(object).CreateArchive(arguments[0].text.get(), arguments[1].text.get(), arguments[2].text.get(),
                                            arguments[3].object.get(), answer(result));
     }},
    {6, L"OpenArchive", kOpenArchive,
     [](IDispatch& object, ArgumentValues& arguments, VARIANT& result) {
         return tovar(object).OpenArchive(arguments[0].text.get(), arguments[1].text.get(), arguments[2].object.get(),
                                          answer(result));
     }},
    {7, L"CanOpenArchive", kCanOpenArchive,
     [](IDispatch& object, ArgumentValues& arguments, VARIANT& result) {
         return tovar(object).CanOpenArchive(arguments[0].text.get(), &arguments[1].number, arguments[2].flag,
                                             answer(result));
     }},
    {8, L"SetTempDir", kSetTempDir,
     [](IDispatch& object, ArgumentValues& arguments, VARIANT&) {
         return tovar(object).SetTempDir(arguments[0].text.get());
     }},
};

bool sameName(const wchar_t* left, const wchar_t* right) noexcept {
    return ::CompareStringOrdinal(left, -1, right, -1, TRUE) == CSTR_EQUAL;
}

const MethodRow* methodByName(std::span<const DispatchPart> parts, const wchar_t* name) noexcept {
    for (const DispatchPart& part : parts) {
        for (const MethodRow& row : part.rows) {
            if (sameName(row.name, name)) return &row;
        }
    }
    return nullptr;
}

DISPID parameterByName(const MethodRow& method, const wchar_t* name) noexcept {
    for (std::size_t i = 0; i < method.parameters.size(); ++i) {
        if (sameName(method.parameters[i].name, name)) return static_cast<DISPID>(i);
    }
    return DISPID_UNKNOWN;
}

}  // namespace

std::span<const MethodRow> methodTable() noexcept { return kRows; }

HRESULT idsOfNames(std::span<const DispatchPart> parts, std::span<LPOLESTR> names, DISPID* ids) noexcept {
    const MethodRow* method = nullptr;
    HRESULT result = S_OK;
    for (std::size_t i = 0; i < names.size(); ++i) {
        ids[i] = DISPID_UNKNOWN;
        if (names[i] == nullptr) return E_INVALIDARG;
        if (i == 0) {
            method = methodByName(parts, names[i]);
            if (method != nullptr) ids[i] = method->id;
        } else if (method != nullptr) {
            ids[i] = parameterByName(*method, names[i]);
        }
        if (ids[i] == DISPID_UNKNOWN) result = DISP_E_UNKNOWNNAME;
    }
    return result;
}

}  // namespace tovar
