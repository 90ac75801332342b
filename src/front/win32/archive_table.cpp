#include "front/win32/archive_table.h"

#include "tovar_idl.h"

namespace tovar {
namespace {

constexpr LONG kYes = 1;
constexpr LONG kUsualLevel = 6;

constexpr ParameterRow kListEntries[] = {{L"sArcFile", ParameterType::Text}};
constexpr ParameterRow kTestArchive[] = {{L"sArcFile", ParameterType::Text}, {L"sPassword", ParameterType::Text, true}};
constexpr ParameterRow kExtractArchive[] = {{L"sArcFile", ParameterType::Text},
                                            {L"sTargetDir", ParameterType::Text},
                                            {L"vMembers", ParameterType::Names, true},
                                            {L"bOverwrite", ParameterType::Boolean, true},
                                            {L"bFolders", ParameterType::Boolean, true, kYes},
                                            {L"sPassword", ParameterType::Text, true}};
constexpr ParameterRow kPack[] = {
    {L"sArcFile", ParameterType::Text},        {L"vFiles", ParameterType::Names},
    {L"sBaseDir", ParameterType::Text, true},  {L"nLevel", ParameterType::Long, true, kUsualLevel},
    {L"sPassword", ParameterType::Text, true}, {L"bRecurse", ParameterType::Boolean, true, kYes}};
constexpr ParameterRow kDeleteFromArchive[] = {{L"sArcFile", ParameterType::Text}, {L"vMembers", ParameterType::Names}};
constexpr ParameterRow kProgressHandler[] = {{L"handler", ParameterType::Object}};

ITovarArchive& archive(IDispatch& object) noexcept { return static_cast<ITovarArchive&>(object); }

VARIANT_BOOL* answer(VARIANT& result) {
    V_VT(&result) = VT_BOOL;
    V_BOOL(&result) = VARIANT_FALSE;
    return &V_BOOL(&result);
}

/// Names as a VARIANT for the interface, which does not own them; left out where there are none.
VARIANT namesIn(const ArgumentValue& argument) noexcept {
    VARIANT value;
    if (argument.text) {
        V_VT(&value) = VT_BSTR;
        V_BSTR(&value) = argument.text.get();
    } else {
        V_VT(&value) = VT_ERROR;
        V_ERROR(&value) = DISP_E_PARAMNOTFOUND;
    }
    return value;
}

using Pack = HRESULT (STDMETHODCALLTYPE ITovarArchive::*)(BSTR, VARIANT, BSTR, LONG, BSTR, VARIANT_BOOL, VARIANT_BOOL*);
template <Pack method>
HRESULT pack(IDispatch& object, ArgumentValues& arguments, VARIANT& result) {
    return (archive(object).*method)(arguments[0].text.get(), namesIn(arguments[1]), arguments[2].text.get(),
                                     arguments[3].number, arguments[4].text.get(), arguments[5].flag, answer(result));
}

constexpr MethodRow kRows[] = {
    {100, L"ListEntries", kListEntries,
     [](IDispatch& object, ArgumentValues& arguments, VARIANT& result) {
         ITovarEntries* entries = nullptr;
         const HRESULT code = archive(object).ListEntries(arguments[0].text.get(), &entries);
         V_VT(&result) = VT_DISPATCH;
         V_DISPATCH(&result) = entries;
         return code;
     }},
    {101, L"TestArchive", kTestArchive,
     [](IDispatch& object, ArgumentValues& arguments, VARIANT& result) {
         return archive(object).TestArchive(arguments[0].text.get(), arguments[1].text.get(), answer(result));
     }},
    {102, L"ExtractArchive", kExtractArchive,
     [](IDispatch& object, ArgumentValues& arguments, VARIANT& result) {
         return archive(object).ExtractArchive(arguments[0].text.get(), arguments[1].text.get(), namesIn(arguments[2]),
                                               arguments[3].flag, arguments[4].flag, arguments[5].text.get(),
                                               answer(result));
     }},
    {103, L"CreateArchiveFile", kPack, &pack<&ITovarArchive::CreateArchiveFile>},
    {104, L"AddToArchive", kPack, &pack<&ITovarArchive::AddToArchive>},
    {105, L"DeleteFromArchive", kDeleteFromArchive,
     [](IDispatch& object, ArgumentValues& arguments, VARIANT& result) {
         return archive(object).DeleteFromArchive(arguments[0].text.get(), namesIn(arguments[1]), answer(result));
     }},
    {106,
     L"LastErrorText",
     {},
     [](IDispatch& object, ArgumentValues&, VARIANT& result) {
         V_VT(&result) = VT_BSTR;
         V_BSTR(&result) = nullptr;
         return archive(object).get_LastErrorText(&V_BSTR(&result));
     }},
    {107,
     L"ProgressHandler",
     {},
     [](IDispatch& object, ArgumentValues&, VARIANT& result) {
         V_VT(&result) = VT_DISPATCH;
         V_DISPATCH(&result) = nullptr;
         return archive(object).get_ProgressHandler(&V_DISPATCH(&result));
     }},
    {107, L"ProgressHandler", kProgressHandler,
     [](IDispatch& object, ArgumentValues& arguments, VARIANT&) {
         return archive(object).putref_ProgressHandler(arguments[0].object.get());
     },
     MemberAccess::Set},
    {108, L"Cancel", {}, [](IDispatch& object, ArgumentValues&, VARIANT&) { return archive(object).Cancel(); }},
};

}  // namespace

std::span<const MethodRow> archiveTable() noexcept { return kRows; }

}  // namespace tovar
