#include <gtest/gtest.h>

#include "win32/front/support/component_session.h"
#include "win32/front/support/script_engine.h"

namespace tovar {
namespace {

using test::Value;

struct LanguageCase {
    const wchar_t* language;
    const wchar_t* script;  ///< with the names tovar, window, zip and answer
};
std::ostream& operator<<(std::ostream& stream, const LanguageCase& each) {
    return stream << (std::wstring(each.language) == L"VBScript" ? "VBScript" : "JScript");
}

constexpr wchar_t kVbScript[] =
    LR"(
Class Form
    Public hWnd
    Public Width
    Public Height
End Class
Dim host, mode
Set host = New Form
host.hWnd = window.handle
host.Width = "12000"
host.Height = 9000
If tovar.CanOpenArchive(window.zip, mode, False) And mode = 16 Then
    window.Width = tovar.OpenArchive(window.zip, "", host)
End If
)";

constexpr wchar_t kJScript[] =
    LR"(
var host = { hWnd: window.handle, Width: "12000", Height: 9000.25 };
if (tovar.CanOpenArchive(window.zip, 0, false)) window.Width = tovar.OpenArchive(window.zip, "", host);
)";

/// A script inside the host, which hands over an object of its own making for a real window.
class ScriptInHost : public testing::TestWithParam<LanguageCase> {};

TEST_P(ScriptInHost, ShowsTheBrowserInTheWindow) {
    const test::KeptAllowMask kept;
    test::KeptAllowMask::write(hive::kCurrentUser, std::nullopt);
    test::KeptAllowMask::write(hive::kLocalMachine, std::nullopt);
    const test::Apartment apartment;
    const test::TemporaryFolder folder;
    const std::wstring zip = test::writeFile(folder, L"small.zip", test::kSmallZip);
    const test::ComponentDll dll;
    const test::TestHost host;
    test::ScriptObject window;
    window.properties[L"handle"] = static_cast<LONG>(reinterpret_cast<LONG_PTR>(host.window()));
    window.properties[L"zip"] = zip.c_str();
    window.properties[L"Width"] = false;
    const ComOwner<ITovar> object = dll.createObject();
    ASSERT_NE(object, nullptr);
    {
        test::ScriptEngine engine(GetParam().language);
        ASSERT_TRUE(engine.ready());
        engine.add(L"tovar", object.get());
        engine.add(L"window", &window);
        EXPECT_TRUE(engine.run(GetParam().script));
        ASSERT_NE(host.browser(), nullptr);
        RECT place{};
        ::GetWindowRect(host.browser(), &place);
        EXPECT_EQ(place.right - place.left, 480);
        EXPECT_EQ(place.bottom - place.top, 360);
        EXPECT_EQ(window.properties[L"Width"].type(), VT_BOOL);
        EXPECT_EQ(V_BOOL(window.properties[L"Width"].get()), VARIANT_TRUE);
    }
    EXPECT_NE(host.browser(), nullptr) << "the object lives on";
}

INSTANTIATE_TEST_SUITE_P(Languages, ScriptInHost,
                         testing::Values(LanguageCase{L"VBScript", kVbScript}, LanguageCase{L"JScript", kJScript}),
                         [](const auto& each) { return std::string(each.index == 0 ? "VBScript" : "JScript"); });

}  // namespace
}  // namespace tovar
