#include "front/win32/late_binding.h"

#include <gtest/gtest.h>

#include "front/win32/method_table.h"
#include "win32/front/support/fake_tovar.h"
#include "win32/front/support/script_values.h"

namespace tovar {
namespace {

using test::ScriptObject;
using test::Value;
using Calls = std::vector<std::wstring>;

constexpr LCID kLocale = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

const DispatchPart parts[] = {{methodTable(), nullptr}};  // for looking up names

std::array<DispatchPart, 1> partsOf(ITovar& object) { return {DispatchPart{methodTable(), &object}}; }

class LateBinding : public testing::Test {
protected:
    /// Calls a method with its arguments in the order of the text of a program.
    HRESULT call(DISPID id, std::vector<Value> arguments, std::vector<DISPID> names = {},
                 WORD flags = DISPATCH_METHOD) {
        std::vector<VARIANT> reversed;
        for (std::size_t i = arguments.size(); i-- > 0;) reversed.push_back(*arguments[i]);
        DISPPARAMS parameters{reversed.data(), names.data(), static_cast<UINT>(reversed.size()),
                              static_cast<UINT>(names.size())};
        result = Value();
        bad = 99;
        exception = {};
        const HRESULT code =
            invokeMethod(partsOf(object), id, IID_NULL, kLocale, flags, &parameters, result.get(), &exception, &bad);
        ::SysFreeString(exception.bstrHelpFile);
        source.reset(exception.bstrSource);
        description.reset(exception.bstrDescription);
        return code;
    }

    test::FakeTovar object;
    Value result;
    UINT bad = 99;
    EXCEPINFO exception{};
    UniqueBstr source, description;
};

TEST_F(LateBinding, ReachesEachMethodByItsNumber) {
    EXPECT_EQ(call(1, {}), S_OK);
    EXPECT_EQ(call(2, {L"Tahoma", LONG{77}}), S_OK);
    EXPECT_EQ(call(3, {}), S_OK);
    EXPECT_EQ(call(4, {}), S_OK);
    EXPECT_EQ(call(5, {L"file", L"dir", L"list", Value()}), S_OK);
    EXPECT_EQ(call(6, {L"file", L"dir", Value()}), S_OK);
    EXPECT_EQ(call(7, {L"file", LONG{5}, true}), S_OK);
    EXPECT_EQ(call(8, {L"temp"}), S_OK);
    EXPECT_EQ(object.calls,
              (Calls{L"IsBusy", L"SetFont Tahoma 77", L"Configure", L"CanCreateArchive", L"CreateArchive file dir list",
                     L"OpenArchive file dir", L"CanOpenArchive file 5 loud", L"SetTempDir temp"}));
}

TEST_F(LateBinding, GivesTheMethodsResult) {
    for (const DISPID id : {1, 4}) {
        EXPECT_EQ(call(id, {}), S_OK);
        ASSERT_EQ(result.type(), VT_BOOL);
        EXPECT_EQ(V_BOOL(result.get()), VARIANT_TRUE);
    }
    object.answer = VARIANT_FALSE;
    EXPECT_EQ(call(6, {L"file", L"", Value()}), S_OK);
    ASSERT_EQ(result.type(), VT_BOOL);
    EXPECT_EQ(V_BOOL(result.get()), VARIANT_FALSE);
    for (const DISPID id : {3}) {
        EXPECT_EQ(call(id, {}), S_OK);
        EXPECT_EQ(result.type(), VT_EMPTY);
    }
    EXPECT_EQ(call(2, {L"Tahoma", LONG{0}}), S_OK);
    EXPECT_EQ(result.type(), VT_EMPTY);
}

TEST_F(LateBinding, NeedsNoPlaceForAResult) {
    DISPPARAMS none{};
    EXPECT_EQ(invokeMethod(partsOf(object), 1, IID_NULL, kLocale, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              S_OK);
    EXPECT_EQ(object.calls, Calls{L"IsBusy"});
}

TEST_F(LateBinding, TakesAMethodAskedForLikeAProperty) {
    EXPECT_EQ(call(1, {}, {}, DISPATCH_PROPERTYGET), S_OK);
    EXPECT_EQ(call(1, {}, {}, DISPATCH_PROPERTYGET | DISPATCH_METHOD), S_OK);
    EXPECT_EQ(call(1, {LONG{1}}, {}, DISPATCH_PROPERTYPUT), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(object.calls.size(), 2U);
}

TEST_F(LateBinding, KnowsNoOtherMembers) {
    for (const DISPID id : {DISPID{0}, DISPID{9}, DISPID{-1}, DISPID{-4}, DISPID{1000}}) {
        EXPECT_EQ(call(id, {}), DISP_E_MEMBERNOTFOUND);
    }
    DISPPARAMS none{};
    EXPECT_EQ(
        invokeMethod(partsOf(object), 1, IID_IUnknown, kLocale, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
        DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(invokeMethod(partsOf(object), 1, IID_NULL, kLocale, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr),
              E_INVALIDARG);
    EXPECT_EQ(object.calls, Calls{});
}

TEST_F(LateBinding, ConvertsArguments) {
    EXPECT_EQ(call(2, {LONG{12}, L"41"}), S_OK);
    EXPECT_EQ(call(7, {L"a", L"3", LONG{1}}), S_OK);
    EXPECT_EQ(call(7, {L"a", Value(), Value()}), S_OK);
    EXPECT_EQ(call(2, {L"Big", static_cast<double>(0xFFFFFFFE)}), S_OK);
    EXPECT_EQ(object.calls,
              (Calls{L"SetFont 12 41", L"CanOpenArchive a 3 loud", L"CanOpenArchive a 0 silent", L"SetFont Big -2"}));
}

TEST_F(LateBinding, ChecksTheNumberOfArguments) {
    EXPECT_EQ(call(1, {LONG{1}}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(call(2, {L"Tahoma"}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(call(2, {L"Tahoma", LONG{1}, LONG{2}}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(call(5, {L"a", L"b"}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(call(5, {L"a", L"b", L"c", Value(), LONG{1}}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(call(6, {L"a"}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(call(7, {L"a", LONG{1}}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(call(8, {}), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(object.calls, Calls{});
}

TEST_F(LateBinding, LetsTheHostBeLeftOut) {
    EXPECT_EQ(call(5, {L"a", L"b", L"c"}), S_OK);
    EXPECT_EQ(call(6, {L"a", L"b"}), S_OK);
    for (const Value& nothing : {Value(), Value::null(), Value::missing(), Value(static_cast<IDispatch*>(nullptr))}) {
        EXPECT_EQ(call(6, {L"a", L"b", nothing}), S_OK);
        EXPECT_EQ(object.parent, nullptr);
    }
    EXPECT_EQ(object.calls.size(), 6U);
}

TEST_F(LateBinding, HandsTheHostOn) {
    ScriptObject host;
    EXPECT_EQ(call(6, {L"a", L"b", &host}), S_OK);
    EXPECT_EQ(object.parent, &host);
    Value variable(&host);
    object.parent = nullptr;
    EXPECT_EQ(call(5, {L"a", L"b", L"c", Value::reference(variable)}), S_OK);
    EXPECT_EQ(object.parent, &host);
    variable = Value();
    EXPECT_EQ(host.references, 1U) << "nothing is kept";
}

TEST_F(LateBinding, NamesTheArgumentThatDoesNotFit) {
    ScriptObject something;
    EXPECT_EQ(call(2, {L"Tahoma", L"many"}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(bad, 0U) << "arguments count from the last";
    EXPECT_EQ(call(2, {&something, LONG{1}}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(bad, 1U);
    EXPECT_EQ(call(6, {L"a", L"b", L"form"}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(bad, 0U);
    EXPECT_EQ(call(7, {Value::null(), LONG{1}, true}), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(bad, 2U);
    EXPECT_EQ(call(7, {L"a", 1e12, true}), DISP_E_OVERFLOW);
    EXPECT_EQ(bad, 1U);
    EXPECT_EQ(call(7, {Value::missing(), LONG{1}, true}), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(bad, 2U);
    EXPECT_EQ(object.calls, Calls{});
}

TEST_F(LateBinding, WritesTheKindBack) {
    LONG typed = 0;
    EXPECT_EQ(call(7, {L"a", Value::reference(VT_I4, &typed), false}), S_OK);
    EXPECT_EQ(typed, 16);
    SHORT small = 3;
    EXPECT_EQ(call(7, {L"a", Value::reference(VT_I2, &small), false}), S_OK);
    EXPECT_EQ(small, 16);
    Value variable;
    EXPECT_EQ(call(7, {L"a", Value::reference(variable), false}), S_OK);
    ASSERT_EQ(variable.type(), VT_I4);
    EXPECT_EQ(V_I4(variable.get()), 16);
    EXPECT_EQ(call(7, {L"a", LONG{1}, false}), S_OK) << "by value: nowhere to write to";
}

TEST_F(LateBinding, LeavesTheKindAloneWhenTheMethodDoes) {
    object.setsMode = false;
    Value text(L"7");
    EXPECT_EQ(call(7, {L"a", Value::reference(text), false}), S_OK);
    EXPECT_EQ(text.text(), L"7");
    Value empty;
    EXPECT_EQ(call(7, {L"a", Value::reference(empty), false}), S_OK);
    EXPECT_EQ(empty.type(), VT_EMPTY);
}

TEST_F(LateBinding, SaysWhenTheKindDoesNotFit) {
    object.mode = 1024;
    BYTE byte = 1;
    EXPECT_EQ(call(7, {L"a", Value::reference(VT_UI1, &byte), false}), DISP_E_OVERFLOW);
    EXPECT_EQ(byte, 1);
    EXPECT_EQ(result.type(), VT_EMPTY);
}

TEST_F(LateBinding, TakesArgumentsByName) {
    // bMsg:=True, nArcMode:=4, sArcFile:="x"; names stand in the order of the reversed arguments
    EXPECT_EQ(call(7, {L"x", LONG{4}, true}, {2, 1, 0}), S_OK);
    EXPECT_EQ(call(7, {true, LONG{4}, L"x"}, {0, 1, 2}), S_OK);
    EXPECT_EQ(call(7, {L"x", LONG{4}, true}, {2}), S_OK) << "the first two by place";
    EXPECT_EQ(object.calls, Calls(3, L"CanOpenArchive x 4 loud"));
}

TEST_F(LateBinding, RefusesNamesThatDoNotFit) {
    EXPECT_EQ(call(8, {L"x"}, {1}), DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(call(8, {L"x"}, {-1}), DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(call(2, {L"x", LONG{1}}, {0}), DISP_E_BADPARAMCOUNT) << "the first argument twice";
    EXPECT_EQ(call(2, {LONG{1}}, {1}), DISP_E_PARAMNOTOPTIONAL) << "the first argument is missing";
    DISPPARAMS broken{nullptr, nullptr, 1, 2};
    EXPECT_EQ(invokeMethod(partsOf(object), 8, IID_NULL, kLocale, DISPATCH_METHOD, &broken, nullptr, nullptr, nullptr),
              DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(object.calls, Calls{});
}

TEST_F(LateBinding, DescribesAFailureOfTheMethod) {
    object.code = E_OUTOFMEMORY;
    EXPECT_EQ(call(1, {}), DISP_E_EXCEPTION);
    EXPECT_EQ(exception.scode, E_OUTOFMEMORY);
    EXPECT_STREQ(source.get(), L"TovarEx.cTovar");
    EXPECT_NE(viewOf(description.get()), L"");
    EXPECT_EQ(result.type(), VT_EMPTY);
    object.code = RPC_E_WRONG_THREAD;
    EXPECT_EQ(call(1, {}), DISP_E_EXCEPTION);
    EXPECT_STREQ(description.get(), L"The object was called on another thread than the one that made it.");
}

TEST(MethodNames, AreFoundInAnyCase) {
    wchar_t name[] = L"canopenARCHIVE", mode[] = L"NARCMODE", message[] = L"bMsg", file[] = L"sArcFile";
    LPOLESTR names[] = {name, mode, message, file};
    DISPID ids[4] = {};
    EXPECT_EQ(idsOfNames(parts, names, ids), S_OK);
    EXPECT_EQ(ids[0], 7);
    EXPECT_EQ(ids[1], 1);
    EXPECT_EQ(ids[2], 2);
    EXPECT_EQ(ids[3], 0);
}

TEST(MethodNames, HaveTheOrderOfTheInterface) {
    const wchar_t* const expected[] = {L"IsBusy",        L"SetFont",     L"Configure",      L"CanCreateArchive",
                                       L"CreateArchive", L"OpenArchive", L"CanOpenArchive", L"SetTempDir"};
    ASSERT_EQ(methodTable().size(), 8U);
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_STREQ(methodTable()[i].name, expected[i]);
        EXPECT_EQ(methodTable()[i].id, static_cast<DISPID>(i + 1));
    }
}

TEST(MethodNames, AreUnknownOtherwise) {
    wchar_t name[] = L"Open", known[] = L"IsBusy", parameter[] = L"bMsg";
    LPOLESTR unknown[] = {name};
    DISPID ids[2] = {};
    EXPECT_EQ(idsOfNames(parts, unknown, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], DISPID_UNKNOWN);
    LPOLESTR mixed[] = {known, parameter};
    EXPECT_EQ(idsOfNames(parts, mixed, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], 1);
    EXPECT_EQ(ids[1], DISPID_UNKNOWN) << "a parameter of another method";
    LPOLESTR none[] = {nullptr};
    EXPECT_EQ(idsOfNames(parts, none, ids), E_INVALIDARG);
}

}  // namespace
}  // namespace tovar
