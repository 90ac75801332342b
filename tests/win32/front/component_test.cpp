#include <gtest/gtest.h>
#include <ocidl.h>

#include <thread>

#include "win32/front/support/component_session.h"

namespace tovar {
namespace {

using test::Apartment;
using test::ComponentDll;
using test::Value;

/// The object as COM, not as archives, knows it.
class ComponentObject : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dll.loaded());
        object = dll.createObject();
        ASSERT_NE(object, nullptr);
    }
    void TearDown() override {
        object.reset();
        EXPECT_EQ(dll.canUnloadNow(), S_OK) << "something was left behind";
    }

    template <class Interface>
    ComOwner<Interface> ask(REFIID iid, IUnknown* whom = nullptr) {
        void* found = nullptr;
        const HRESULT result = (whom != nullptr ? whom : object.get())->QueryInterface(iid, &found);
        EXPECT_EQ(result, S_OK);
        return ComOwner<Interface>(static_cast<Interface*>(found));
    }

    const test::KeptAllowMask kept;
    const Apartment apartment;
    const ComponentDll dll;
    ComOwner<ITovar> object;
};

TEST_F(ComponentObject, KeepsTheDllWhileItLives) {
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE);
    object.reset();
    EXPECT_EQ(dll.canUnloadNow(), S_OK);
}

TEST_F(ComponentObject, CountsReferences) {
    EXPECT_EQ(object->AddRef(), 2U);
    EXPECT_EQ(object->AddRef(), 3U);
    EXPECT_EQ(object->Release(), 2U);
    EXPECT_EQ(object->Release(), 1U);
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE);
    EXPECT_EQ(object.release()->Release(), 0U);
    EXPECT_EQ(dll.canUnloadNow(), S_OK);
}

TEST_F(ComponentObject, IsOneObjectWithSeveralInterfaces) {
    const auto unknown = ask<IUnknown>(IID_IUnknown);
    for (const IID* iid : {&IID_IDispatch, &IID_ITovar, &IID_IProvideClassInfo, &IID_ISupportErrorInfo}) {
        const auto other = ask<IUnknown>(*iid);
        EXPECT_EQ(ask<IUnknown>(IID_IUnknown, other.get()).get(), unknown.get());
        EXPECT_NE(ask<ITovar>(IID_ITovar, other.get()), nullptr);
    }
}

TEST_F(ComponentObject, HasNoOtherInterface) {
    void* found = &found;
    EXPECT_EQ(object->QueryInterface(IID_IPersist, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(object->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(ComponentObject, NeedsPlacesForResults) {
    VARIANT_BOOL flag = VARIANT_FALSE;
    LONG mode = 0;
    EXPECT_EQ(object->IsBusy(nullptr), E_POINTER);
    EXPECT_EQ(object->SetFont(nullptr, 0, nullptr), E_POINTER);
    EXPECT_EQ(object->CanCreateArchive(nullptr), E_POINTER);
    EXPECT_EQ(object->CreateArchive(nullptr, nullptr, nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(object->OpenArchive(nullptr, nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(object->CanOpenArchive(nullptr, nullptr, VARIANT_FALSE, &flag), E_POINTER);
    EXPECT_EQ(object->CanOpenArchive(nullptr, &mode, VARIANT_FALSE, nullptr), E_POINTER);
    EXPECT_EQ(object->GetTypeInfoCount(nullptr), E_POINTER);
    EXPECT_EQ(object->GetTypeInfo(0, 0, nullptr), E_POINTER);
}

TEST_F(ComponentObject, TakesANullTextForAnEmptyOne) {
    VARIANT_BOOL flag = VARIANT_TRUE;
    LONG mode = 5;
    EXPECT_EQ(object->CanOpenArchive(nullptr, &mode, VARIANT_TRUE, &flag), S_OK);
    EXPECT_EQ(flag, VARIANT_FALSE);
    EXPECT_EQ(mode, 5);
    EXPECT_EQ(object->SetTempDir(nullptr), S_OK);
    Value result;
    EXPECT_EQ(object->SetFont(nullptr, 0, result.get()), S_OK);
    EXPECT_EQ(result.type(), VT_EMPTY);
}

TEST_F(ComponentObject, ConvertsNamesAndArgumentsLateBound) {
    wchar_t name[] = L"canopenarchive";
    LPOLESTR names[] = {name};
    DISPID id = DISPID_UNKNOWN;
    ASSERT_EQ(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id), S_OK);
    EXPECT_EQ(id, 7);
    Value mode(L"5");
    VARIANT arguments[] = {*Value(false), *Value::reference(mode), *Value(LONG{12})};
    DISPPARAMS parameters{arguments, nullptr, 3, 0};
    Value result;
    EXPECT_EQ(
        object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, result.get(), nullptr, nullptr),
        S_OK);
    EXPECT_EQ(result.type(), VT_BOOL);
    EXPECT_EQ(mode.text(), L"5");
    EXPECT_EQ(object->GetIDsOfNames(IID_IUnknown, names, 1, LOCALE_USER_DEFAULT, &id), DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(object->GetIDsOfNames(IID_NULL, nullptr, 1, LOCALE_USER_DEFAULT, &id), E_INVALIDARG);
}

TEST_F(ComponentObject, AnswersOnlyOnItsOwnThread) {
    HRESULT code = S_OK;
    VARIANT_BOOL flag = VARIANT_TRUE;
    std::wstring source, description;
    std::thread([&] {
        const Apartment other;
        code = object->IsBusy(&flag);
        IErrorInfo* error = nullptr;
        if (::GetErrorInfo(0, &error) != S_OK) return;
        const ComOwner<IErrorInfo> owner(error);
        BSTR text = nullptr;
        error->GetSource(&text);
        source = viewOf(UniqueBstr(text).get());
        error->GetDescription(&text);
        description = viewOf(UniqueBstr(text).get());
    }).join();
    EXPECT_EQ(code, RPC_E_WRONG_THREAD);
    EXPECT_EQ(flag, VARIANT_FALSE);
    EXPECT_EQ(source, L"TovarEx.cTovar");
    EXPECT_EQ(description, L"The object was called on another thread than the one that made it.");
    EXPECT_EQ(ask<ISupportErrorInfo>(IID_ISupportErrorInfo)->InterfaceSupportsErrorInfo(IID_ITovar), S_OK);
    EXPECT_EQ(ask<ISupportErrorInfo>(IID_ISupportErrorInfo)->InterfaceSupportsErrorInfo(IID_IDispatch), S_FALSE);
}

TEST_F(ComponentObject, CanBeMadeOnSeveralThreads) {
    HRESULT code = E_FAIL;
    std::thread([&] {
        const Apartment other;
        const ComOwner<ITovar> second = dll.createObject();
        VARIANT_BOOL flag = VARIANT_TRUE;
        code = second != nullptr ? second->IsBusy(&flag) : E_FAIL;
        EXPECT_EQ(flag, VARIANT_FALSE);
    }).join();
    EXPECT_EQ(code, S_OK);
}

TEST_F(ComponentObject, IsNotAggregated) {
    void* found = nullptr;
    ASSERT_EQ(dll.getClassObject(CLSID_cTovar, IID_IClassFactory, &found), S_OK);
    const ComOwner<IClassFactory> factory(static_cast<IClassFactory*>(found));
    EXPECT_EQ(factory->CreateInstance(object.get(), IID_IUnknown, &found), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IPersist, &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(ComponentObject, StaysLoadedWhileAFactoryOrALockLives) {
    object.reset();
    void* found = nullptr;
    ASSERT_EQ(dll.getClassObject(CLSID_cTovar, IID_IClassFactory, &found), S_OK);
    ComOwner<IClassFactory> factory(static_cast<IClassFactory*>(found));
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    factory.reset();
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE);
    ASSERT_EQ(dll.getClassObject(CLSID_cTovar, IID_IClassFactory, &found), S_OK);
    factory.reset(static_cast<IClassFactory*>(found));
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    factory.reset();
    EXPECT_EQ(dll.canUnloadNow(), S_OK);
}

TEST_F(ComponentObject, HasOneClassOnly) {
    void* found = &found;
    EXPECT_EQ(dll.getClassObject(IID_ITovar, IID_IClassFactory, &found), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(dll.getClassObject(CLSID_cTovar, IID_ITovar, &found), E_NOINTERFACE);
    EXPECT_EQ(dll.getClassObject(CLSID_cTovar, IID_IClassFactory, nullptr), E_POINTER);
}

struct MethodCase {
    const wchar_t* name;
    int inputs;  ///< parameters without the result
    VARTYPE result;
    std::vector<std::wstring> parameters;
};

TEST_F(ComponentObject, DescribesItsInterface) {
    UINT count = 0;
    ASSERT_EQ(object->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1U);
    ITypeInfo* info = nullptr;
    ASSERT_EQ(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), S_OK);
    const ComOwner<ITypeInfo> owner(info);
    const MethodCase expected[] = {
        {L"IsBusy", 0, VT_BOOL, {}},
        {L"SetFont", 2, VT_VARIANT, {L"sFontName", L"hFont"}},
        {L"Configure", 0, VT_VOID, {}},
        {L"CanCreateArchive", 0, VT_BOOL, {}},
        {L"CreateArchive", 4, VT_BOOL, {L"sArcFile", L"sArcDir", L"sArcList", L"fParent"}},
        {L"OpenArchive", 3, VT_BOOL, {L"sArcFile", L"sArcDir", L"fParent"}},
        {L"CanOpenArchive", 3, VT_BOOL, {L"sArcFile", L"nArcMode", L"bMsg"}},
        {L"SetTempDir", 1, VT_VOID, {L"sTempDir"}},
    };
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_TRUE(IsEqualGUID(attributes->guid, IID_ITovar));
    EXPECT_EQ(attributes->typekind, TKIND_DISPATCH);
    EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FDUAL, 0);
    const UINT first = attributes->cFuncs - 8U;  // the eight stand behind what every dispatch interface has
    info->ReleaseTypeAttr(attributes);
    for (UINT i = 0; i < 8; ++i) {
        FUNCDESC* function = nullptr;
        ASSERT_EQ(info->GetFuncDesc(first + i, &function), S_OK);
        BSTR names[8] = {};
        UINT found = 0;
        EXPECT_EQ(info->GetNames(function->memid, names, 8, &found), S_OK);
        EXPECT_STREQ(names[0], expected[i].name);
        EXPECT_EQ(function->memid, static_cast<MEMBERID>(i + 1));
        EXPECT_EQ(function->oVft, static_cast<SHORT>((7 + i) * sizeof(void*))) << "the place in the interface";
        EXPECT_EQ(function->elemdescFunc.tdesc.vt, expected[i].result);
        EXPECT_EQ(function->cParams, expected[i].inputs);
        ASSERT_EQ(found, expected[i].parameters.size() + 1);
        for (UINT k = 1; k < found; ++k) EXPECT_STREQ(names[k], expected[i].parameters[k - 1].c_str());
        for (BSTR each : names) ::SysFreeString(each);
        info->ReleaseFuncDesc(function);
    }
}

TEST_F(ComponentObject, TellsItsClass) {
    ITypeInfo* info = nullptr;
    ASSERT_EQ(ask<IProvideClassInfo>(IID_IProvideClassInfo)->GetClassInfo(&info), S_OK);
    const ComOwner<ITypeInfo> owner(info);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_TRUE(IsEqualGUID(attributes->guid, CLSID_cTovar));
    EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
    info->ReleaseTypeAttr(attributes);
    BSTR name = nullptr;
    ASSERT_EQ(info->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr), S_OK);
    EXPECT_STREQ(UniqueBstr(name).get(), L"cTovar");
}

TEST_F(ComponentObject, CarriesTheVersionOfItsFile) {
    const std::wstring path = (test::programFolder() / L"TovarEx.dll").native();
    std::vector<BYTE> block(::GetFileVersionInfoSizeW(path.c_str(), nullptr));
    ASSERT_TRUE(::GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
    VS_FIXEDFILEINFO* information = nullptr;
    UINT size = 0;
    ASSERT_TRUE(::VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&information), &size));
    EXPECT_GE(HIWORD(information->dwFileVersionMS), 1);
    wchar_t* name = nullptr;
    ASSERT_TRUE(::VerQueryValueW(block.data(), L"\\StringFileInfo\\040904B0\\OriginalFilename",
                                 reinterpret_cast<void**>(&name), &size));
    EXPECT_STREQ(name, L"TovarEx.dll");
}

struct ManifestCase {
    const char* name;
    const wchar_t* file;
    int resource;  ///< 0: the file itself
};
std::ostream& operator<<(std::ostream& stream, const ManifestCase& each) { return stream << each.name; }
class WithoutRegistration : public testing::TestWithParam<ManifestCase> {};

TEST_P(WithoutRegistration, TheManifestIsEnough) {
    const test::KeptAllowMask kept;
    const Apartment apartment;
    const wchar_t* const resource = GetParam().resource == 0 ? nullptr : MAKEINTRESOURCEW(GetParam().resource);
    const test::ActiveManifest manifest(test::programFolder() / GetParam().file, resource);
    ASSERT_TRUE(manifest.active());
    CLSID id{};
    ASSERT_EQ(::CLSIDFromProgID(L"TovarEx.cTovar", &id), S_OK);
    // The number may be one that stands for the class in this manifest only.
    void* found = nullptr;
    ASSERT_EQ(::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_ITovar, &found), S_OK);
    const ComOwner<ITovar> object(static_cast<ITovar*>(found));
    VARIANT_BOOL flag = VARIANT_TRUE;
    EXPECT_EQ(object->IsBusy(&flag), S_OK);
    EXPECT_EQ(flag, VARIANT_FALSE);
    ITypeLib* library = nullptr;
    ASSERT_EQ(::LoadRegTypeLib(LIBID_TovarEx, 1, 0, LOCALE_NEUTRAL, &library), S_OK);
    library->Release();
}

INSTANTIATE_TEST_SUITE_P(Manifests, WithoutRegistration,
                         testing::Values(ManifestCase{"AsAFile", L"TovarEx.manifest", 0},
                                         ManifestCase{"InsideTheDll", L"TovarEx.dll", 1}),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace tovar
