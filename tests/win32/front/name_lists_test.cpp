#include "front/win32/name_lists.h"

#include <gtest/gtest.h>

#include "win32/front/support/component_session.h"
#include "win32/front/support/script_engine.h"
#include "win32/front/support/script_values.h"

namespace tovar {
namespace {

using test::ScriptObject;
using test::Value;

/// An array of the system that goes with the object.
class Array {
public:
    Array(VARTYPE type, ULONG count, LONG first = 0) {
        SAFEARRAYBOUND bound{count, first};
        array_ = ::SafeArrayCreate(type, 1, &bound);
    }
    explicit Array(SAFEARRAY* array) : array_(array) {}
    ~Array() { ::SafeArrayDestroy(array_); }
    Array(const Array&) = delete;
    Array& operator=(const Array&) = delete;

    void put(LONG index, void* element) { ASSERT_EQ(::SafeArrayPutElement(array_, &index, element), S_OK); }
    void put(LONG index, Value element) { put(index, static_cast<void*>(element.get())); }
    void putText(LONG index, const wchar_t* text) {
        const UniqueBstr bstr = makeBstr(text);
        put(index, static_cast<void*>(bstr.get()));
    }
    /// Not owned by the value.
    [[nodiscard]] VARIANT value(VARTYPE type) const {
        VARIANT value;
        V_VT(&value) = VT_ARRAY | type;
        V_ARRAY(&value) = array_;
        return value;
    }
    SAFEARRAY** place() { return &array_; }

private:
    SAFEARRAY* array_;
};

std::wstring read(const VARIANT& argument) {
    UniqueBstr text;
    const HRESULT result = readNames(argument, LOCALE_USER_DEFAULT, text);
    if (result == DISP_E_TYPEMISMATCH) return L"(mismatch)";
    if (result == E_INVALIDARG) return L"(none)";
    if (FAILED(result)) return L"(failed)";
    return std::wstring(viewOf(text.get()));
}

TEST(NameLists, AreLinesOfAText) {
    EXPECT_EQ(read(*Value(L"a.txt")), L"a.txt");
    EXPECT_EQ(read(*Value(L"a.txt\r\nb c.txt\r\n\r\nd\n")), L"a.txt\r\nb c.txt\r\nd");
    EXPECT_EQ(read(*Value(L"")), L"");
    Value variable(L"x\ny");
    EXPECT_EQ(read(*Value::reference(variable)), L"x\r\ny");
    BSTR text = ::SysAllocString(L"typed");
    EXPECT_EQ(read(*Value::reference(VT_BSTR, &text)), L"typed");
    ::SysFreeString(text);
}

TEST(NameLists, AreArraysOfTexts) {
    Array texts(VT_BSTR, 2, 5);
    texts.putText(5, L"a");
    texts.putText(6, L"b");
    EXPECT_EQ(read(texts.value(VT_BSTR)), L"a\r\nb");
    EXPECT_EQ(read(*Value::reference(VT_ARRAY | VT_BSTR, texts.place())), L"a\r\nb");
}

TEST(NameLists, AreArraysOfVariants) {
    Array variants(VT_VARIANT, 2);
    variants.put(0, Value(L"a"));
    variants.put(1, Value(L"b"));
    EXPECT_EQ(read(variants.value(VT_VARIANT)), L"a\r\nb");
    Value inside;
    *inside.get() = variants.value(VT_VARIANT);
    EXPECT_EQ(read(*Value::reference(inside)), L"a\r\nb") << "as VBScript passes a variable";
    V_VT(inside.get()) = VT_EMPTY;
}

TEST(NameLists, AreNothingElse) {
    for (const Value& value :
         {Value(), Value::null(), Value::missing(), Value(LONG{5}), Value(1.5), Value(true),
          Value(static_cast<IDispatch*>(nullptr)), Value::ofType(VT_UNKNOWN), Value::ofType(VT_ARRAY | VT_BSTR)}) {
        EXPECT_EQ(read(*value), L"(mismatch)") << value.type();
    }
    EXPECT_EQ(read(*Value::reference(VT_BSTR, nullptr)), L"(mismatch)");
    Value circle;
    V_VT(circle.get()) = VT_BYREF | VT_VARIANT;
    V_VARIANTREF(circle.get()) = circle.get();
    EXPECT_EQ(read(*circle), L"(mismatch)");
    V_VT(circle.get()) = VT_EMPTY;
}

TEST(NameLists, HaveOnlyNamesInThem) {
    for (const Value& bad : {Value(), Value::null(), Value(LONG{1}), Value(true), Value(L""), Value(L"a\r\nb"),
                             Value(static_cast<IDispatch*>(nullptr))}) {
        Array array(VT_VARIANT, 2);
        array.put(0, Value(L"a"));
        array.put(1, bad);
        EXPECT_EQ(read(array.value(VT_VARIANT)), L"(mismatch)") << bad.type();
    }
    Array numbers(VT_I4, 2);
    EXPECT_EQ(read(numbers.value(VT_I4)), L"(mismatch)");
    EXPECT_EQ(read(numbers.value(VT_BSTR)), L"(mismatch)") << "it says that it has texts";
    SAFEARRAYBOUND bounds[2] = {{1, 0}, {1, 0}};
    Array table(::SafeArrayCreate(VT_VARIANT, 2, bounds));
    EXPECT_EQ(read(table.value(VT_VARIANT)), L"(mismatch)");
}

TEST(NameLists, OfNothingAreNotAll) {
    Array empty(VT_VARIANT, 0);
    EXPECT_EQ(read(empty.value(VT_VARIANT)), L"(none)");
    ScriptObject list;
    list.properties[L"length"] = LONG{0};
    EXPECT_EQ(read(*Value(&list)), L"(none)");
}

TEST(NameLists, AreNumberedPropertiesOfAnObject) {
    ScriptObject list;
    list.properties[L"length"] = LONG{2};
    list.properties[L"0"] = L"a";
    list.properties[L"1"] = L"b";
    EXPECT_EQ(read(*Value(&list)), L"a\r\nb");
    list.properties[L"length"] = LONG{3};
    EXPECT_EQ(read(*Value(&list)), L"(mismatch)");
    list.properties[L"length"] = LONG{-1};
    EXPECT_EQ(read(*Value(&list)), L"(mismatch)");
    list.properties[L"length"] = 1e9;
    EXPECT_EQ(read(*Value(&list)), L"(failed)") << "more than there can be";
    list.properties[L"length"] = L"many";
    EXPECT_EQ(read(*Value(&list)), L"(mismatch)");
    ScriptObject other;
    EXPECT_EQ(read(*Value(&other)), L"(mismatch)");
}

}  // namespace
}  // namespace tovar
