#include "front/win32/variant_values.h"

#include <gtest/gtest.h>

#include "win32/front/support/script_values.h"

namespace tovar {
namespace {

using test::ScriptObject;
using test::Value;

constexpr LCID kLocale = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

std::wstring textFrom(const Value& value) {
    UniqueBstr text;
    const HRESULT result = readText(*value, kLocale, text);
    return SUCCEEDED(result) ? std::wstring(viewOf(text.get())) : L"failed";
}

TEST(ReadText, TakesTextsAndWhatConverts) {
    EXPECT_EQ(textFrom(L"a b"), L"a b");
    EXPECT_EQ(textFrom(L""), L"");
    EXPECT_EQ(textFrom(LONG{41}), L"41");
    EXPECT_EQ(textFrom(Value()), L"") << "Empty";
}

TEST(ReadText, FollowsReferences) {
    Value variable(L"in a variable");
    EXPECT_EQ(textFrom(Value::reference(variable)), L"in a variable");
    Value inner = Value::reference(variable);
    EXPECT_EQ(textFrom(Value::reference(inner)), L"in a variable");
    BSTR typed = ::SysAllocString(L"typed");
    EXPECT_EQ(textFrom(Value::reference(VT_BSTR, &typed)), L"typed");
    Value toTyped = Value::reference(VT_BSTR, &typed);
    EXPECT_EQ(textFrom(Value::reference(toTyped)), L"typed");
    ::SysFreeString(typed);
    BSTR nothing = nullptr;
    EXPECT_EQ(textFrom(Value::reference(VT_BSTR, &nothing)), L"");
}

TEST(ReadText, KeepsNulCharactersInside) {
    Value value;
    V_VT(value.get()) = VT_BSTR;
    V_BSTR(value.get()) = ::SysAllocStringLen(L"a\0b", 3);
    EXPECT_EQ(textFrom(value), std::wstring(L"a\0b", 3));
}

TEST(ReadText, RefusesWhatIsNoText) {
    ScriptObject object;
    UniqueBstr text;
    EXPECT_EQ(readText(*Value::null(), kLocale, text), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(readText(*Value(&object), kLocale, text), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(readText(*Value(static_cast<IDispatch*>(nullptr)), kLocale, text), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(readText(*Value::missing(), kLocale, text), DISP_E_TYPEMISMATCH);
    SAFEARRAYBOUND bounds{2, 0};
    Value array;
    V_VT(array.get()) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(array.get()) = ::SafeArrayCreate(VT_VARIANT, 1, &bounds);
    EXPECT_EQ(readText(*array, kLocale, text), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(text.get(), nullptr);
}

TEST(ReadText, RefusesReferencesThatLeadNowhere) {
    UniqueBstr text;
    EXPECT_EQ(readText(*Value::reference(VT_BSTR, nullptr), kLocale, text), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(readText(*Value::reference(VT_VARIANT, nullptr), kLocale, text), DISP_E_TYPEMISMATCH);
    Value circle = Value::ofType(VT_BYREF | VT_VARIANT);
    V_VARIANTREF(circle.get()) = circle.get();
    EXPECT_EQ(readText(*circle, kLocale, text), DISP_E_TYPEMISMATCH);
}

LONG longFrom(const Value& value) {
    LONG number = -99;
    return SUCCEEDED(readLong(*value, kLocale, number)) ? number : -99;
}

TEST(ReadLong, TakesNumbersOfEveryType) {
    EXPECT_EQ(longFrom(LONG{-5}), -5);
    EXPECT_EQ(longFrom(12.0), 12);
    EXPECT_EQ(longFrom(L"41"), 41);
    EXPECT_EQ(longFrom(true), -1);
    EXPECT_EQ(longFrom(Value()), 0);
    Value shortNumber = Value::ofType(VT_I2);
    V_I2(shortNumber.get()) = 512;
    EXPECT_EQ(longFrom(shortNumber), 512);
    Value byte = Value::ofType(VT_UI1);
    V_UI1(byte.get()) = 200;
    EXPECT_EQ(longFrom(byte), 200);
    SHORT variable = -3;
    EXPECT_EQ(longFrom(Value::reference(VT_I2, &variable)), -3);
}

TEST(ReadLong, RefusesOtherThings) {
    LONG number = 7;
    EXPECT_EQ(readLong(*Value(L"many"), kLocale, number), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(readLong(*Value::null(), kLocale, number), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(readLong(*Value(3e9), kLocale, number), DISP_E_OVERFLOW);
    EXPECT_EQ(number, 7);
}

TEST(ReadHandle, TakesSignedAndUnsignedNumbers) {
    LONG handle = 0;
    EXPECT_EQ(readHandle(*Value(LONG{0x1234}), kLocale, handle), S_OK);
    EXPECT_EQ(handle, 0x1234);
    EXPECT_EQ(readHandle(*Value(static_cast<double>(0x8A0A0B0C)), kLocale, handle), S_OK);
    EXPECT_EQ(handle, static_cast<LONG>(0x8A0A0B0C));
    EXPECT_EQ(readHandle(*Value(5e9), kLocale, handle), DISP_E_OVERFLOW);
    EXPECT_EQ(readHandle(*Value(L"none"), kLocale, handle), DISP_E_TYPEMISMATCH);
}

TEST(HandleOf, SignExtends) {
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(handleOf(-2)), -2);
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(handleOf(0x10204)), 0x10204);
}

TEST(ReadBoolean, TakesWhatConverts) {
    VARIANT_BOOL flag = VARIANT_FALSE;
    EXPECT_EQ(readBoolean(*Value(true), kLocale, flag), S_OK);
    EXPECT_EQ(flag, VARIANT_TRUE);
    EXPECT_EQ(readBoolean(*Value(LONG{0}), kLocale, flag), S_OK);
    EXPECT_EQ(flag, VARIANT_FALSE);
    EXPECT_EQ(readBoolean(*Value(LONG{1}), kLocale, flag), S_OK);
    EXPECT_EQ(flag, VARIANT_TRUE);
    EXPECT_EQ(readBoolean(*Value(), kLocale, flag), S_OK);
    EXPECT_EQ(flag, VARIANT_FALSE);
    EXPECT_EQ(readBoolean(*Value(L"perhaps"), kLocale, flag), DISP_E_TYPEMISMATCH);
}

TEST(ReadObject, TakesObjectsAndNothing) {
    ScriptObject script;
    ComOwner<IDispatch> object;
    EXPECT_EQ(readObject(*Value(&script), object), S_OK);
    EXPECT_EQ(object.get(), &script);
    object.reset();
    for (const Value& nothing : {Value(), Value::null(), Value::missing(), Value(static_cast<IDispatch*>(nullptr))}) {
        EXPECT_EQ(readObject(*nothing, object), S_OK);
        EXPECT_EQ(object.get(), nullptr);
    }
    Value variable(&script);
    EXPECT_EQ(readObject(*Value::reference(variable), object), S_OK);
    EXPECT_EQ(object.get(), &script);
    IDispatch* typed = &script;
    object.reset();
    EXPECT_EQ(readObject(*Value::reference(VT_DISPATCH, &typed), object), S_OK);
    EXPECT_EQ(object.get(), &script);
}

TEST(ReadObject, TakesAnyInterfaceOfAnObject) {
    ScriptObject script;
    Value unknown = Value::ofType(VT_UNKNOWN);
    ComOwner<IDispatch> object;
    EXPECT_EQ(readObject(*unknown, object), S_OK) << "no object at all";
    EXPECT_EQ(object.get(), nullptr);
    V_UNKNOWN(unknown.get()) = &script;
    script.AddRef();
    EXPECT_EQ(readObject(*unknown, object), S_OK);
    EXPECT_EQ(object.get(), &script);
}

TEST(ReadObject, CountsReferences) {
    ScriptObject script;
    {
        const Value value(&script);
        ComOwner<IDispatch> object;
        EXPECT_EQ(readObject(*value, object), S_OK);
        EXPECT_EQ(script.references, 3U);
    }
    EXPECT_EQ(script.references, 1U);
}

TEST(ReadObject, RefusesOtherThings) {
    ComOwner<IDispatch> object;
    EXPECT_EQ(readObject(*Value(LONG{5}), object), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(readObject(*Value(L"form"), object), DISP_E_TYPEMISMATCH);
    Value error = Value::ofType(VT_ERROR);
    V_ERROR(error.get()) = E_FAIL;
    EXPECT_EQ(readObject(*error, object), DISP_E_TYPEMISMATCH);
}

TEST(WriteLong, LeavesAValueAlone) {
    Value value(LONG{3});
    EXPECT_EQ(writeLong(*value.get(), kLocale, 16), S_OK);
    EXPECT_EQ(V_I4(value.get()), 3);
}

TEST(WriteLong, WritesToTypedVariables) {
    LONG number = 0;
    EXPECT_EQ(writeLong(*Value::reference(VT_I4, &number).get(), kLocale, 1024), S_OK);
    EXPECT_EQ(number, 1024);
    SHORT small[2] = {0, 77};
    EXPECT_EQ(writeLong(*Value::reference(VT_I2, small).get(), kLocale, 512), S_OK);
    EXPECT_EQ(small[0], 512);
    EXPECT_EQ(small[1], 77) << "not a byte more than the variable";
    BYTE byte[2] = {0, 77};
    EXPECT_EQ(writeLong(*Value::reference(VT_UI1, byte).get(), kLocale, 16), S_OK);
    EXPECT_EQ(byte[0], 16);
    EXPECT_EQ(byte[1], 77);
    double real = 0;
    EXPECT_EQ(writeLong(*Value::reference(VT_R8, &real).get(), kLocale, 256), S_OK);
    EXPECT_EQ(real, 256.0);
    LONGLONG large = 0;
    EXPECT_EQ(writeLong(*Value::reference(VT_I8, &large).get(), kLocale, 64), S_OK);
    EXPECT_EQ(large, 64);
    CY money{};
    EXPECT_EQ(writeLong(*Value::reference(VT_CY, &money).get(), kLocale, 32), S_OK);
    EXPECT_EQ(money.int64, 320000);
    BSTR text = ::SysAllocString(L"0");
    EXPECT_EQ(writeLong(*Value::reference(VT_BSTR, &text).get(), kLocale, 128), S_OK);
    EXPECT_STREQ(text, L"128");
    ::SysFreeString(text);
}

TEST(WriteLong, SaysWhenAVariableCannotHoldTheNumber) {
    BYTE byte = 9;
    EXPECT_EQ(writeLong(*Value::reference(VT_UI1, &byte).get(), kLocale, 512), DISP_E_OVERFLOW);
    EXPECT_EQ(byte, 9);
    VARIANT_BOOL flag = VARIANT_FALSE;
    EXPECT_EQ(writeLong(*Value::reference(VT_BOOL, &flag).get(), kLocale, 16), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(flag, VARIANT_FALSE);
}

struct VariableCase {
    const char* name;
    VARTYPE before;
    LONG written;
    VARTYPE after;
};
class WriteLongToScripts : public testing::TestWithParam<VariableCase> {};

TEST_P(WriteLongToScripts, KeepsTheVariablesTypeWhereItCan) {
    Value variable = Value::ofType(GetParam().before);
    EXPECT_EQ(writeLong(*Value::reference(variable).get(), kLocale, GetParam().written), S_OK);
    EXPECT_EQ(variable.type(), GetParam().after);
    EXPECT_EQ(longFrom(variable), GetParam().written);
}

INSTANTIATE_TEST_SUITE_P(
    Types, WriteLongToScripts,
    testing::Values(VariableCase{"Empty", VT_EMPTY, 16, VT_I4}, VariableCase{"Null", VT_NULL, 16, VT_I4},
                    VariableCase{"Long", VT_I4, 1024, VT_I4}, VariableCase{"Integer", VT_I2, 1024, VT_I2},
                    VariableCase{"Byte", VT_UI1, 128, VT_UI1}, VariableCase{"ByteTooSmall", VT_UI1, 1024, VT_I4},
                    VariableCase{"Double", VT_R8, 512, VT_R8}, VariableCase{"Boolean", VT_BOOL, 16, VT_I4},
                    VariableCase{"Text", VT_BSTR, 32, VT_BSTR}, VariableCase{"Nothing", VT_DISPATCH, 32, VT_I4}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(WriteLong, FreesWhatTheVariableHeld) {
    ScriptObject script;
    Value variable(&script);
    EXPECT_EQ(script.references, 2U);
    EXPECT_EQ(writeLong(*Value::reference(variable).get(), kLocale, 16), S_OK);
    EXPECT_EQ(script.references, 1U);
    EXPECT_EQ(V_I4(variable.get()), 16);
}

TEST(NumberOf, ReadsNumbersOfEveryType) {
    EXPECT_EQ(numberOf(*Value(LONG{-800})), -800.0);
    EXPECT_EQ(numberOf(*Value(600.5)), 600.5);
    EXPECT_EQ(numberOf(*Value(L"1200")), 1200.0);
    Value large = Value::ofType(VT_I8);
    V_I8(large.get()) = 1LL << 40;
    EXPECT_EQ(numberOf(*large), 1099511627776.0);
    EXPECT_EQ(integerOf(*large), 1LL << 40);
    EXPECT_EQ(integerOf(*Value(L"-5")), -5);
    EXPECT_EQ(integerOf(*Value(4294901760.0)), 4294901760LL);
}

TEST(NumberOf, HasNothingForOtherThings) {
    ScriptObject script;
    for (const Value& value : {Value(L"wide"), Value::null(), Value(&script), Value::missing()}) {
        EXPECT_EQ(numberOf(*value), std::nullopt);
        EXPECT_EQ(integerOf(*value), std::nullopt);
    }
    EXPECT_EQ(numberOf(*Value(std::numeric_limits<double>::infinity())), std::nullopt);
}

}  // namespace
}  // namespace tovar
