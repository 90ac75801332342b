#include "front/win32/dispatch_host.h"

#include <gtest/gtest.h>

#include "win32/front/support/script_values.h"

namespace tovar {
namespace {

using test::ScriptObject;
using test::Value;

class DispatchHostTest : public testing::Test {
protected:
    WindowHandle windowFor(const Value& value) {
        script.properties[L"hWnd"] = value;
        return DispatchHost(script).hWnd();
    }
    std::optional<double> widthFor(const Value& value) {
        script.properties[L"Width"] = value;
        return DispatchHost(script).Width();
    }
    static WindowHandle handle(LONG_PTR number) { return reinterpret_cast<WindowHandle>(number); }

    ScriptObject script;
};

TEST_F(DispatchHostTest, ReadsTheHandleFromNumbersOfEveryType) {
    EXPECT_EQ(windowFor(LONG{0x10204}), handle(0x10204));
    EXPECT_EQ(windowFor(66052.0), handle(66052));
    EXPECT_EQ(windowFor(L"66052"), handle(66052));
    Value large = Value::ofType(VT_I8);
    V_I8(large.get()) = 0x10204;
    EXPECT_EQ(windowFor(large), handle(0x10204));
    Value small = Value::ofType(VT_I2);
    V_I2(small.get()) = 0x204;
    EXPECT_EQ(windowFor(small), handle(0x204));
}

TEST_F(DispatchHostTest, TakesTheUpperHalfSignedAndUnsigned) {
    EXPECT_EQ(windowFor(LONG{-65536}), handle(-65536));
    EXPECT_EQ(windowFor(4294901760.0), handle(-65536));
}

TEST_F(DispatchHostTest, HasNoWindowForWhatIsNoHandle) {
    EXPECT_EQ(windowFor(LONG{0}), nullptr);
    EXPECT_EQ(windowFor(Value()), nullptr);
    EXPECT_EQ(windowFor(Value::null()), nullptr);
    EXPECT_EQ(windowFor(L"window"), nullptr);
    EXPECT_EQ(windowFor(1e15), nullptr);
    EXPECT_EQ(windowFor(&script), nullptr);
    EXPECT_EQ(windowFor(Value::ofType(VT_ERROR)), nullptr) << "the property fails";
    script.properties.clear();
    EXPECT_EQ(DispatchHost(script).hWnd(), nullptr) << "there is no such property";
}

TEST_F(DispatchHostTest, ReadsSizesFromNumbersOfEveryType) {
    EXPECT_EQ(widthFor(LONG{800}), 800.0);
    EXPECT_EQ(widthFor(12000.5), 12000.5);
    EXPECT_EQ(widthFor(L"640"), 640.0);
    Value money = Value::ofType(VT_CY);
    V_CY(money.get()).int64 = 12345000;
    EXPECT_EQ(widthFor(money), 1234.5);
    EXPECT_EQ(widthFor(L"wide"), std::nullopt);
    EXPECT_EQ(widthFor(Value::null()), std::nullopt);
    EXPECT_EQ(widthFor(Value::ofType(VT_ERROR)), std::nullopt);
    script.properties[L"Height"] = 300.0;
    EXPECT_EQ(DispatchHost(script).Height(), 300.0);
    script.properties.clear();
    EXPECT_EQ(DispatchHost(script).Width(), std::nullopt);
    EXPECT_EQ(DispatchHost(script).Height(), std::nullopt);
}

TEST_F(DispatchHostTest, ReadsAnewEveryTime) {
    script.properties[L"Width"] = 100.0;
    DispatchHost host(script);
    EXPECT_EQ(host.Width(), 100.0);
    script.properties[L"Width"] = 200.0;
    EXPECT_EQ(host.Width(), 200.0);
    EXPECT_EQ(script.reads, (std::vector<std::wstring>{L"Width", L"Width"}));
}

TEST_F(DispatchHostTest, TakesFunctionsForProperties) {
    script.functionsOnly = true;
    EXPECT_EQ(windowFor(LONG{77}), handle(77));
}

TEST_F(DispatchHostTest, KeepsTheObjectAsLongAsItLives) {
    {
        const DispatchHost host(script);
        EXPECT_EQ(script.references, 2U);
    }
    EXPECT_EQ(script.references, 1U);
}

}  // namespace
}  // namespace tovar
