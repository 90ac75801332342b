// The component's second interface, early-bound, and late-bound through the object's one IDispatch.

#include <thread>

#include "front/win32/archive_table.h"
#include "win32/front/support/component_fixture.h"

namespace tovar {
namespace {

using test::ScriptObject;
using test::Value;

/// What a caller of COM gets of an error.
std::wstring errorText() {
    IErrorInfo* left = nullptr;
    if (::GetErrorInfo(0, &left) != S_OK) return L"(none)";
    const ComOwner<IErrorInfo> info(left);
    BSTR text = nullptr;
    info->GetDescription(&text);
    const UniqueBstr owner(text);
    return std::wstring(viewOf(text));
}

/// A progress handler as a script's object is one.
class Handler final : public test::ScriptDispatch {
public:
    std::function<HRESULT(VARIANT* answer, EXCEPINFO* exception)> body;
    bool isFunction = false;
    int calls = 0;
    std::wstring path;
    double done = -1, total = -1;

    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        const bool known = !isFunction && std::wstring(names[0]) == L"OnProgress";
        ids[0] = known ? 7 : DISPID_UNKNOWN;
        return known ? S_OK : DISP_E_UNKNOWNNAME;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT*) override {
        if (id != (isFunction ? DISPID_VALUE : 7)) return DISP_E_MEMBERNOTFOUND;
        EXPECT_EQ(flags, DISPATCH_METHOD);
        EXPECT_EQ(parameters->cArgs, 3U);
        path = viewOf(V_BSTR(&parameters->rgvarg[2]));
        done = V_R8(&parameters->rgvarg[1]);
        total = V_R8(&parameters->rgvarg[0]);
        ++calls;
        return body ? body(result, exception) : S_OK;
    }
};

HRESULT answerWith(VARIANT* answer, bool flag) {
    V_VT(answer) = VT_BOOL;
    V_BOOL(answer) = flag ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

class ArchiveObject : public test::ComponentFixture {
protected:
    void SetUp() override {
        ComponentFixture::SetUp();
        void* found = nullptr;
        ASSERT_EQ(object->QueryInterface(IID_ITovarArchive, &found), S_OK);
        archive.reset(static_cast<ITovarArchive*>(found));
        ::CreateDirectoryW((folder / L"docs").c_str(), nullptr);
        test::writeFile(folder, L"a.txt", "alpha");
        test::writeFile(folder, L"docs\\b c.txt", std::string(300000, 'b'));
        zip = folder / L"made.zip";
    }
    void TearDown() override {
        EXPECT_EQ(boxes.seen.size(), 0U) << "automation shows nothing";
        archive.reset();
        ComponentFixture::TearDown();
    }

    static VARIANT missing() { return *Value::missing(); }

    /// Makes an archive of all files, early-bound.
    HRESULT pack(const std::wstring& file, const wchar_t* password = L"") {
        VARIANT_BOOL done = VARIANT_FALSE;
        const HRESULT code =
            archive->CreateArchiveFile(makeBstr(file).get(), *Value(L"a.txt\r\ndocs"), makeBstr(folder.path()).get(), 6,
                                       makeBstr(password).get(), VARIANT_TRUE, &done);
        EXPECT_EQ(done, code == S_OK ? VARIANT_TRUE : VARIANT_FALSE);
        return code;
    }
    HRESULT unpack(VARIANT_BOOL* done) {
        return archive->ExtractArchive(makeBstr(zip).get(), makeBstr(folder / L"out").get(), missing(), VARIANT_FALSE,
                                       VARIANT_TRUE, nullptr, done);
    }
    ComOwner<ITovarEntries> entries(const std::wstring& file) {
        ITovarEntries* found = nullptr;
        EXPECT_EQ(archive->ListEntries(makeBstr(file).get(), &found), S_OK);
        return ComOwner<ITovarEntries>(found);
    }
    static std::string bytesOf(const std::wstring& file) {
        std::ifstream stream(std::filesystem::path(file), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// Calls by name with arguments in the order of a program's text.
    HRESULT call(const wchar_t* name, std::vector<Value> arguments, std::vector<const wchar_t*> names = {},
                 WORD flags = DISPATCH_METHOD) {
        std::vector<LPOLESTR> all{const_cast<LPOLESTR>(name)};
        for (auto each = names.rbegin(); each != names.rend(); ++each) all.push_back(const_cast<LPOLESTR>(*each));
        std::vector<DISPID> ids(all.size());
        const HRESULT found =
            object->GetIDsOfNames(IID_NULL, all.data(), static_cast<UINT>(all.size()), LOCALE_USER_DEFAULT, ids.data());
        if (FAILED(found)) return found;
        return call(ids[0], std::move(arguments), {ids.begin() + 1, ids.end()}, flags);
    }
    HRESULT call(DISPID id, std::vector<Value> arguments, std::vector<DISPID> names, WORD flags) {
        std::vector<VARIANT> reversed;
        for (std::size_t i = arguments.size(); i-- > 0;) reversed.push_back(*arguments[i]);
        DISPPARAMS parameters{reversed.data(), names.data(), static_cast<UINT>(reversed.size()),
                              static_cast<UINT>(names.size())};
        result = Value();
        bad = 99;
        EXCEPINFO exception{};
        const HRESULT code =
            object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result.get(), &exception, &bad);
        const UniqueBstr source(exception.bstrSource), text(exception.bstrDescription);
        description = std::wstring(viewOf(text.get()));
        scode = exception.scode;
        return code;
    }

    ComOwner<ITovarArchive> archive;
    std::wstring zip;
    Value result;
    UINT bad = 99;
    HRESULT scode = S_OK;
    std::wstring description;
};

TEST_F(ArchiveObject, IsAPartOfTheObject) {
    void* unknown = nullptr;
    ASSERT_EQ(archive->QueryInterface(IID_IUnknown, &unknown), S_OK);
    const ComOwner<IUnknown> one(static_cast<IUnknown*>(unknown));
    ASSERT_EQ(object->QueryInterface(IID_IUnknown, &unknown), S_OK);
    const ComOwner<IUnknown> other(static_cast<IUnknown*>(unknown));
    EXPECT_EQ(one, other);
    void* first = nullptr;
    ASSERT_EQ(archive->QueryInterface(IID_ITovar, &first), S_OK);
    EXPECT_EQ(ComOwner<ITovar>(static_cast<ITovar*>(first)).get(), object.get());
    ISupportErrorInfo* errors = nullptr;
    ASSERT_EQ(archive->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(&errors)), S_OK);
    EXPECT_EQ(errors->InterfaceSupportsErrorInfo(IID_ITovarArchive), S_OK);
    EXPECT_EQ(errors->InterfaceSupportsErrorInfo(IID_ITovarEntries), S_FALSE);
    errors->Release();
}

TEST_F(ArchiveObject, IsDescribedInTheTypeLibrary) {
    ITypeInfo* found = nullptr;
    ASSERT_EQ(archive->GetTypeInfo(0, 0, &found), S_OK);
    const ComOwner<ITypeInfo> info(found);
    for (const MethodRow& row : archiveTable()) {
        OLECHAR* name = const_cast<OLECHAR*>(row.name);
        MEMBERID id = 0, own = 0;
        EXPECT_EQ(info->GetIDsOfNames(&name, 1, &id), S_OK) << row.id;
        EXPECT_EQ(id, row.id);
        EXPECT_EQ(object->GetIDsOfNames(IID_NULL, &name, 1, 0, &own), S_OK);
        EXPECT_EQ(own, row.id);
        EXPECT_GE(row.id, 100);
        for (std::size_t each = 0; each < row.parameters.size() && row.access == MemberAccess::Call; ++each) {
            OLECHAR* names[] = {name, const_cast<OLECHAR*>(row.parameters[each].name)};
            MEMBERID ids[2] = {};
            EXPECT_EQ(info->GetIDsOfNames(names, 2, ids), S_OK) << row.id << ' ' << each;
            EXPECT_EQ(ids[1], static_cast<MEMBERID>(each));
        }
    }
    IProvideClassInfo* provider = nullptr;
    ASSERT_EQ(object->QueryInterface(IID_IProvideClassInfo, reinterpret_cast<void**>(&provider)), S_OK);
    const ComOwner<IProvideClassInfo> owner(provider);
    ASSERT_EQ(provider->GetClassInfo(&found), S_OK);
    const ComOwner<ITypeInfo> classInfo(found);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(classInfo->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->cImplTypes, 2);
    classInfo->ReleaseTypeAttr(attributes);
    INT flags = 0;
    EXPECT_EQ(classInfo->GetImplTypeFlags(0, &flags), S_OK);
    EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT) << "the first interface stays the default";
}

TEST_F(ArchiveObject, GoesARoundEarlyBound) {
    ASSERT_EQ(pack(zip), S_OK) << errorText().c_str();
    VARIANT_BOOL flag = VARIANT_FALSE;
    EXPECT_EQ(archive->TestArchive(makeBstr(zip).get(), nullptr, &flag), S_OK);
    EXPECT_EQ(flag, VARIANT_TRUE);
    EXPECT_EQ(unpack(&flag), S_OK);
    EXPECT_EQ(flag, VARIANT_TRUE);
    EXPECT_EQ(bytesOf(folder / L"out\\a.txt"), "alpha");
    EXPECT_EQ(bytesOf(folder / L"out\\docs\\b c.txt"), std::string(300000, 'b'));
    test::writeFile(folder, L"new.txt", "new");
    EXPECT_EQ(archive->AddToArchive(makeBstr(zip).get(), *Value(L"new.txt"), makeBstr(folder.path()).get(), 0, nullptr,
                                    VARIANT_TRUE, &flag),
              S_OK);
    EXPECT_EQ(archive->DeleteFromArchive(makeBstr(zip).get(), *Value(L"a.txt"), &flag), S_OK);
    EXPECT_EQ(flag, VARIANT_TRUE);
    std::vector<std::wstring> paths;
    const auto listed = entries(zip);
    LONG count = 0;
    ASSERT_EQ(listed->get_Count(&count), S_OK);
    for (LONG each = 1; each <= count; ++each) {
        ITovarEntry* entry = nullptr;
        ASSERT_EQ(listed->get_Item(each, &entry), S_OK);
        const ComOwner<ITovarEntry> owner(entry);
        BSTR path = nullptr;
        EXPECT_EQ(entry->get_Path(&path), S_OK);
        paths.emplace_back(viewOf(path));
        ::SysFreeString(path);
    }
    EXPECT_EQ(paths, (std::vector<std::wstring>{L"docs\\", L"docs\\b c.txt", L"new.txt"}));
}

TEST_F(ArchiveObject, GoesARoundLateBound) {
    ASSERT_EQ(call(L"CreateArchiveFile", {zip.c_str(), L"a.txt\r\ndocs", folder.path().c_str()}), S_OK)
        << description.c_str();
    EXPECT_EQ(V_BOOL(result.get()), VARIANT_TRUE);
    EXPECT_EQ(call(L"TestArchive", {zip.c_str()}), S_OK);
    EXPECT_EQ(V_BOOL(result.get()), VARIANT_TRUE);
    EXPECT_EQ(call(L"extractarchive", {zip.c_str(), (folder / L"out").c_str(), L"a.txt"}), S_OK) << "names in any case";
    EXPECT_EQ(bytesOf(folder / L"out\\a.txt"), "alpha");
    EXPECT_EQ(::GetFileAttributesW((folder / L"out\\docs").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(call(L"ListEntries", {zip.c_str()}, {}, DISPATCH_METHOD | DISPATCH_PROPERTYGET), S_OK);
    ASSERT_EQ(result.type(), VT_DISPATCH);
    EXPECT_EQ(call(L"IsBusy", {}), S_OK) << "the first interface is there as well";
    EXPECT_EQ(V_BOOL(result.get()), VARIANT_FALSE);
}

TEST_F(ArchiveObject, TakesArgumentsByNameAndByReference) {
    ASSERT_EQ(pack(zip, L"secret"), S_OK);
    Value password(L"secret"), file(zip.c_str());
    EXPECT_EQ(
        call(L"ExtractArchive", {Value::reference(file), (folder / L"out").c_str(), Value::reference(password), false},
             {L"sPassword", L"bFolders"}),
        S_OK)
        << description.c_str();
    EXPECT_EQ(bytesOf(folder / L"out\\b c.txt"), std::string(300000, 'b')) << "without folders";
    EXPECT_EQ(call(L"ExtractArchive", {file, L"x", L"y"}, {L"sArcFile"}), DISP_E_BADPARAMCOUNT) << "given twice";
    EXPECT_EQ(call(L"ExtractArchive", {file, L"x"}, {L"sNothing"}), DISP_E_UNKNOWNNAME);
}

TEST_F(ArchiveObject, TakesLeftOutArgumentsForTheirDefaults) {
    ASSERT_EQ(pack(zip), S_OK);
    EXPECT_EQ(call(L"ExtractArchive", {zip.c_str(), (folder / L"out").c_str(), Value::missing(), Value::missing(),
                                       Value::missing(), Value::missing()}),
              S_OK)
        << description.c_str();
    EXPECT_EQ(bytesOf(folder / L"out\\docs\\b c.txt").size(), 300000U);
    test::writeFile(folder, L"out\\a.txt", "mine");
    EXPECT_EQ(call(L"ExtractArchive", {zip.c_str(), (folder / L"out").c_str()}), S_OK);
    EXPECT_EQ(bytesOf(folder / L"out\\a.txt"), "mine");
    EXPECT_EQ(call(L"ExtractArchive", {zip.c_str(), (folder / L"out").c_str(), Value::missing(), true}), S_OK);
    EXPECT_EQ(bytesOf(folder / L"out\\a.txt"), "alpha");
}

struct BadCall {
    const char* test;
    const wchar_t* name;
    std::vector<Value> arguments;
    HRESULT code;
    UINT bad = 99;  ///< place of the argument from the back
};
class ArchiveCalls : public ArchiveObject, public testing::WithParamInterface<BadCall> {};

TEST_P(ArchiveCalls, AreTurnedAway) {
    EXPECT_EQ(call(GetParam().name, GetParam().arguments), GetParam().code);
    if (GetParam().bad != 99) {
        EXPECT_EQ(bad, GetParam().bad);
    }
    EXPECT_EQ(::GetFileAttributesW(L"a.zip"), INVALID_FILE_ATTRIBUTES) << "something was made";
}

INSTANTIATE_TEST_SUITE_P(
    Arguments, ArchiveCalls,
    testing::Values(
        BadCall{"NoneForListing", L"ListEntries", {}, DISP_E_BADPARAMCOUNT},
        BadCall{"TooManyForListing", L"ListEntries", {L"a", L"b"}, DISP_E_BADPARAMCOUNT},
        BadCall{"NullForListing", L"ListEntries", {Value::null()}, DISP_E_TYPEMISMATCH, 0},
        BadCall{"NothingForListing", L"ListEntries", {Value(static_cast<IDispatch*>(nullptr))}, DISP_E_TYPEMISMATCH, 0},
        BadCall{"MissingForListing", L"ListEntries", {Value::missing()}, DISP_E_PARAMNOTOPTIONAL, 0},
        BadCall{"EmptyForListing", L"ListEntries", {Value()}, DISP_E_EXCEPTION},
        BadCall{"NoTarget", L"ExtractArchive", {L"a.zip"}, DISP_E_BADPARAMCOUNT},
        BadCall{"NullTarget", L"ExtractArchive", {L"a.zip", Value::null()}, DISP_E_TYPEMISMATCH, 0},
        BadCall{"NullMembers", L"ExtractArchive", {L"a.zip", L"t", Value::null()}, DISP_E_TYPEMISMATCH, 0},
        BadCall{"EmptyMembers", L"ExtractArchive", {L"a.zip", L"t", Value()}, DISP_E_TYPEMISMATCH, 0},
        BadCall{"NumberMembers", L"ExtractArchive", {L"a.zip", L"t", LONG{3}}, DISP_E_TYPEMISMATCH, 0},
        BadCall{"TextOverwrite", L"ExtractArchive", {L"a.zip", L"t", L"", L"maybe", true}, DISP_E_TYPEMISMATCH, 1},
        BadCall{"NullPassword",
                L"ExtractArchive",
                {L"a.zip", L"t", L"", true, true, Value::null()},
                DISP_E_TYPEMISMATCH,
                0},
        BadCall{"SevenArguments", L"ExtractArchive", {L"a", L"b", L"c", true, true, L"d", L"e"}, DISP_E_BADPARAMCOUNT},
        BadCall{"NoFiles", L"CreateArchiveFile", {L"a.zip"}, DISP_E_BADPARAMCOUNT},
        BadCall{"NullFiles", L"CreateArchiveFile", {L"a.zip", Value::null()}, DISP_E_TYPEMISMATCH, 0},
        BadCall{"MissingFiles", L"CreateArchiveFile", {L"a.zip", Value::missing()}, DISP_E_PARAMNOTOPTIONAL, 0},
        BadCall{"TextLevel", L"CreateArchiveFile", {L"a.zip", L"f", L"", L"best"}, DISP_E_TYPEMISMATCH, 0},
        BadCall{"HugeLevel", L"AddToArchive", {L"a.zip", L"f", L"", 1e20}, DISP_E_OVERFLOW, 0},
        BadCall{"NullMember", L"DeleteFromArchive", {L"a.zip", Value::null()}, DISP_E_TYPEMISMATCH, 0},
        BadCall{"ArgumentForCancel", L"Cancel", {LONG{1}}, DISP_E_BADPARAMCOUNT},
        BadCall{"ArgumentForText", L"LastErrorText", {LONG{1}}, DISP_E_BADPARAMCOUNT}),
    [](const auto& each) { return std::string(each.param.test); });

struct ErrorCase {
    const char* test;
    const wchar_t* name;
    std::vector<Value> arguments;  ///< "%" at the start of a text stands for the folder
    HRESULT code;
    std::wstring text;
};
class ArchiveErrors : public ArchiveObject, public testing::WithParamInterface<ErrorCase> {};

TEST_P(ArchiveErrors, AreRaisedWithTheirText) {
    test::writeFile(folder, L"noise.zip", std::string(1000, 'x'));
    const auto inFolder = [this](const std::wstring& text) {
        return text.starts_with(L"%") ? folder.path() + text.substr(1) : text;
    };
    std::vector<Value> arguments;
    for (const Value& each : GetParam().arguments) {
        arguments.push_back(each.type() == VT_BSTR ? Value(inFolder(each.text()).c_str()) : each);
    }
    EXPECT_EQ(call(GetParam().name, arguments), DISP_E_EXCEPTION);
    EXPECT_EQ(scode, GetParam().code);
    EXPECT_EQ(description, inFolder(GetParam().text));
    EXPECT_EQ(call(L"LastErrorText", {}, {}, DISPATCH_PROPERTYGET), S_OK);
    EXPECT_EQ(result.text(), inFolder(GetParam().text));
}

HRESULT number(TovarError error) { return static_cast<HRESULT>(error); }

INSTANTIATE_TEST_SUITE_P(
    Operations, ArchiveErrors,
    testing::Values(
        ErrorCase{
            "NoFile", L"ListEntries", {L"%\\none.zip"}, number(tovarErrNoFile), L"%\\none.zip: there is no such file."},
        ErrorCase{"NoArchive",
                  L"ListEntries",
                  {L"%\\a.txt"},
                  number(tovarErrNoArchive),
                  L"%\\a.txt: this is no archive's name."},
        ErrorCase{"Damaged",
                  L"ExtractArchive",
                  {L"%\\noise.zip", L"%\\out"},
                  number(tovarErrDamaged),
                  L"%\\noise.zip: this is no good ZIP archive."},
        ErrorCase{"Unsupported",
                  L"AddToArchive",
                  {L"%\\a.rar", L"%\\a.txt"},
                  number(tovarErrUnsupported),
                  L"%\\a.rar: archives of this kind can only be read."},
        ErrorCase{"BadName",
                  L"CreateArchiveFile",
                  {L"%\\n.zip", L"..\\x", L"%"},
                  number(tovarErrBadName),
                  L"..\\x: this lies outside of the folder that names count from."},
        ErrorCase{"NoSource",
                  L"CreateArchiveFile",
                  {L"%\\n.zip", L"gone.txt", L"%"},
                  number(tovarErrNoSource),
                  L"gone.txt: there is no such file or folder."},
        ErrorCase{"Exists",
                  L"CreateArchiveFile",
                  {L"%\\noise.zip", L"a.txt", L"%"},
                  number(tovarErrExists),
                  L"%\\noise.zip: this is there already."},
        ErrorCase{"Level",
                  L"CreateArchiveFile",
                  {L"%\\n.zip", L"a.txt", L"%", LONG{10}},
                  E_INVALIDARG,
                  L"The level is not one of 0 to 9."},
        ErrorCase{"Base",
                  L"CreateArchiveFile",
                  {L"%\\n.zip", L"a.txt", L"%\\none"},
                  E_INVALIDARG,
                  L"%\\none: there is no such folder."},
        ErrorCase{"NoName", L"TestArchive", {L""}, E_INVALIDARG, L"The archive has no name."}),
    [](const auto& each) { return std::string(each.param.test); });

TEST_F(ArchiveObject, LeavesErrorsForEarlyBoundCallers) {
    ITovarEntries* found = nullptr;
    EXPECT_EQ(archive->ListEntries(makeBstr(folder / L"none.zip").get(), &found), number(tovarErrNoFile));
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(errorText(), folder / L"none.zip" + L": there is no such file.");
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(archive->DeleteFromArchive(makeBstr(zip).get(), *Value::null(), &done), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(archive->ListEntries(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(archive->TestArchive(nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(archive->ExtractArchive(nullptr, nullptr, missing(), VARIANT_FALSE, VARIANT_FALSE, nullptr, nullptr),
              E_POINTER);
    EXPECT_EQ(archive->CreateArchiveFile(nullptr, missing(), nullptr, 6, nullptr, VARIANT_TRUE, nullptr), E_POINTER);
    EXPECT_EQ(archive->DeleteFromArchive(nullptr, missing(), nullptr), E_POINTER);
    EXPECT_EQ(archive->get_LastErrorText(nullptr), E_POINTER);
    EXPECT_EQ(archive->get_ProgressHandler(nullptr), E_POINTER);
    EXPECT_EQ(archive->ListEntries(nullptr, &found), E_INVALIDARG);
    EXPECT_EQ(errorText(), L"The archive has no name.");
}

TEST_F(ArchiveObject, AnswersThatAnArchiveIsDamaged) {
    ASSERT_EQ(call(L"CreateArchiveFile", {zip.c_str(), L"docs", folder.path().c_str(), LONG{0}}), S_OK);
    std::string bytes = bytesOf(zip);
    bytes[bytes.size() / 2] ^= 0x55;
    test::writeFile(folder, L"made.zip", bytes);
    EXPECT_EQ(call(L"TestArchive", {zip.c_str()}), S_OK);
    EXPECT_EQ(V_BOOL(result.get()), VARIANT_FALSE);
    EXPECT_EQ(call(L"LastErrorText", {}), S_OK);
    EXPECT_EQ(result.text(), zip + L": the archive is damaged.");
}

TEST_F(ArchiveObject, RespectsTheAllowMask) {
    ASSERT_EQ(pack(zip), S_OK);
    archive.reset();
    object.reset();
    test::KeptAllowMask::write(hive::kCurrentUser, DWORD{kind::kLzh});
    object = dll.createObject();
    EXPECT_EQ(call(L"ListEntries", {zip.c_str()}), DISP_E_EXCEPTION);
    EXPECT_EQ(scode, number(tovarErrSwitchedOff));
    EXPECT_EQ(description, zip + L": the use of UnZip32.dll is switched off.");
    EXPECT_EQ(call(L"AddToArchive", {zip.c_str(), L"a.txt", folder.path().c_str()}), DISP_E_EXCEPTION);
    EXPECT_EQ(description, zip + L": the use of InfoZip32.dll is switched off.");
}

TEST_F(ArchiveObject, ListsEntriesThatStay) {
    test::writeFile(folder, L"small.zip", test::kSmallZip);
    ASSERT_EQ(pack(zip), S_OK);
    const auto listed = entries(zip);
    archive.reset();
    object.reset();
    ::DeleteFileW(zip.c_str());
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE) << "the entries live on";

    LONG count = 0;
    ASSERT_EQ(listed->get_Count(&count), S_OK);
    EXPECT_EQ(count, 3);
    ITovarEntry* entry = nullptr;
    for (const LONG index : {LONG{0}, LONG{-1}, LONG{4}, LONG_MIN, LONG_MAX}) {
        EXPECT_EQ(listed->get_Item(index, &entry), DISP_E_BADINDEX) << index;
        EXPECT_EQ(entry, nullptr);
    }
    ASSERT_EQ(listed->get_Item(1, &entry), S_OK);
    const ComOwner<ITovarEntry> first(entry);
    BSTR text = nullptr;
    EXPECT_EQ(first->get_Name(&text), S_OK);
    EXPECT_STREQ(UniqueBstr(text).get(), L"a.txt");
    double amount = 0;
    EXPECT_EQ(first->get_Size(&amount), S_OK);
    EXPECT_EQ(amount, 5.0);
    LONG crc = 0;
    EXPECT_EQ(first->get_Crc32(&crc), S_OK);
    EXPECT_EQ(static_cast<DWORD>(crc), 0xD0E0396AU);
    VARIANT_BOOL isFolder = VARIANT_TRUE;
    EXPECT_EQ(first->get_IsFolder(&isFolder), S_OK);
    EXPECT_EQ(isFolder, VARIANT_FALSE);
    Variant time;
    EXPECT_EQ(first->get_Time(time.get()), S_OK);
    EXPECT_EQ(time->vt, VT_DATE);
    SYSTEMTIME written{}, now{};
    ::GetLocalTime(&now);
    EXPECT_TRUE(::VariantTimeToSystemTime(V_DATE(time.get()), &written));
    EXPECT_EQ(written.wYear, now.wYear);
    EXPECT_EQ(first->get_Path(nullptr), E_POINTER);
    EXPECT_EQ(first->get_Size(nullptr), E_POINTER);
    EXPECT_EQ(first->get_Time(nullptr), E_POINTER);
}

TEST_F(ArchiveObject, GoesThroughEntriesOneAfterTheOther) {
    ASSERT_EQ(pack(zip), S_OK);
    const auto listed = entries(zip);
    IUnknown* unknown = nullptr;
    ASSERT_EQ(listed->get__NewEnum(&unknown), S_OK);
    const ComOwner<IUnknown> owner(unknown);
    void* found = nullptr;
    ASSERT_EQ(unknown->QueryInterface(IID_IEnumVARIANT, &found), S_OK);
    const ComOwner<IEnumVARIANT> walk(static_cast<IEnumVARIANT*>(found));
    VARIANT elements[4];
    ULONG fetched = 99;
    EXPECT_EQ(walk->Next(4, elements, nullptr), E_POINTER);
    EXPECT_EQ(walk->Next(1, nullptr, &fetched), E_POINTER);
    EXPECT_EQ(walk->Next(4, elements, &fetched), S_FALSE);
    ASSERT_EQ(fetched, 3U);
    Variant path;
    EXPECT_EQ(::VariantChangeType(path.get(), &elements[0], 0, VT_BSTR), S_OK) << "its value is its path";
    EXPECT_STREQ(V_BSTR(path.get()), L"a.txt");
    for (ULONG each = 0; each < fetched; ++each) ::VariantClear(&elements[each]);
    EXPECT_EQ(walk->Next(1, elements, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 0U);
    EXPECT_EQ(walk->Reset(), S_OK);
    EXPECT_EQ(walk->Skip(2), S_OK);
    IEnumVARIANT* clone = nullptr;
    ASSERT_EQ(walk->Clone(&clone), S_OK);
    EXPECT_EQ(clone->Next(1, elements, nullptr), S_OK);
    ::VariantClear(&elements[0]);
    clone->Release();
    EXPECT_EQ(walk->Skip(5), S_FALSE);
    EXPECT_EQ(walk->Skip(ULONG_MAX), S_FALSE);
}

TEST_F(ArchiveObject, TakesEntriesForMembers) {
    ASSERT_EQ(pack(zip), S_OK);
    EXPECT_EQ(call(L"ListEntries", {zip.c_str()}), S_OK);
    const Value all = result;
    EXPECT_EQ(call(L"ExtractArchive", {zip.c_str(), (folder / L"out").c_str(), all}), S_OK) << description.c_str();
    EXPECT_EQ(bytesOf(folder / L"out\\a.txt"), "alpha");
    ITovarEntry* entry = nullptr;
    ASSERT_EQ(entries(zip)->get_Item(1, &entry), S_OK);
    const ComOwner<ITovarEntry> first(entry);
    EXPECT_EQ(call(L"DeleteFromArchive", {zip.c_str(), Value(static_cast<IDispatch*>(entry))}), S_OK);
    LONG count = 0;
    EXPECT_EQ(entries(zip)->get_Count(&count), S_OK);
    EXPECT_EQ(count, 2);
}

class ProgressOfArchive : public ArchiveObject {
protected:
    void SetUp() override {
        ArchiveObject::SetUp();
        ASSERT_EQ(pack(zip), S_OK);
        ASSERT_EQ(archive->putref_ProgressHandler(&handler), S_OK);
    }
    void TearDown() override {
        if (archive) {
            EXPECT_EQ(archive->putref_ProgressHandler(nullptr), S_OK);
        }
        ArchiveObject::TearDown();
        EXPECT_EQ(handler.references, 1U) << "the handler is given back";
    }

    Handler handler;
    VARIANT_BOOL done = VARIANT_FALSE;
};

TEST_F(ProgressOfArchive, IsTold) {
    EXPECT_EQ(unpack(&done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_GT(handler.calls, 0);
    EXPECT_EQ(handler.done, 300005.0);
    EXPECT_EQ(handler.total, 300005.0);
    EXPECT_NE(handler.path, L"");
    IDispatch* held = nullptr;
    EXPECT_EQ(archive->get_ProgressHandler(&held), S_OK);
    EXPECT_EQ(ComOwner<IDispatch>(held).get(), &handler);
}

TEST_F(ProgressOfArchive, IsToldToAFunction) {
    handler.isFunction = true;
    EXPECT_EQ(unpack(&done), S_OK);
    EXPECT_GT(handler.calls, 0);
}

TEST_F(ProgressOfArchive, EndsByTheAnswerFalse) {
    handler.body = [](VARIANT* answer, EXCEPINFO*) { return answerWith(answer, false); };
    EXPECT_EQ(unpack(&done), S_OK) << "who cancels knows it: no error";
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(handler.calls, 1);
    BSTR text = nullptr;
    EXPECT_EQ(archive->get_LastErrorText(&text), S_OK);
    EXPECT_STREQ(UniqueBstr(text).get(), L"The operation was cancelled.");
}

TEST_F(ProgressOfArchive, GoesOnByEveryOtherAnswer) {
    for (const Value& each : {Value(), Value::null(), Value(true), Value(LONG{0}), Value(L"False")}) {
        handler.body = [&](VARIANT* answer, EXCEPINFO*) { return ::VariantCopy(answer, const_cast<VARIANT*>(&*each)); };
        EXPECT_EQ(unpack(&done), S_OK);
        EXPECT_EQ(done, VARIANT_TRUE);
    }
}

TEST_F(ProgressOfArchive, IsCancelledFromWithin) {
    handler.body = [this](VARIANT*, EXCEPINFO*) { return archive->Cancel(); };
    EXPECT_EQ(unpack(&done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
    handler.body = nullptr;
    EXPECT_EQ(archive->Cancel(), S_OK);
    EXPECT_EQ(unpack(&done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE) << "nothing went on when it was cancelled";
}

TEST_F(ProgressOfArchive, EndsWithTheHandlersError) {
    handler.body = [](VARIANT*, EXCEPINFO* exception) {
        exception->scode = E_FAIL;
        exception->bstrDescription = ::SysAllocString(L"no paper");
        return DISP_E_EXCEPTION;
    };
    EXPECT_EQ(unpack(&done), number(tovarErrHandler));
    EXPECT_EQ(errorText(), L"The progress handler failed: no paper");
    handler.body = [](VARIANT*, EXCEPINFO*) { return DISP_E_MEMBERNOTFOUND; };
    EXPECT_EQ(unpack(&done), number(tovarErrHandler));
    EXPECT_EQ(errorText(), L"The progress handler failed: the object has no method OnProgress");
    EXPECT_EQ(call(L"IsBusy", {}), S_OK);
    EXPECT_EQ(V_BOOL(result.get()), VARIANT_FALSE);
}

TEST_F(ProgressOfArchive, TurnsASecondOperationAway) {
    HRESULT second = S_OK;
    std::wstring text;
    VARIANT_BOOL busyInside = VARIANT_FALSE, opened = VARIANT_TRUE;
    handler.body = [&](VARIANT*, EXCEPINFO*) {
        ITovarEntries* found = nullptr;
        second = archive->ListEntries(makeBstr(zip).get(), &found);
        text = errorText();
        object->IsBusy(&busyInside);
        object->OpenArchive(makeBstr(zip).get(), nullptr, nullptr, &opened);
        return S_OK;
    };
    EXPECT_EQ(unpack(&done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(second, number(tovarErrBusy));
    EXPECT_EQ(text, L"Another operation is going on.");
    EXPECT_EQ(busyInside, VARIANT_TRUE);
    EXPECT_EQ(opened, VARIANT_FALSE);
}

TEST_F(ProgressOfArchive, SurvivesAHandlerThatLetsGoOfTheObject) {
    ITovarArchive* const bare = archive.get();
    handler.body = [this](VARIANT*, EXCEPINFO*) {
        if (archive) archive->putref_ProgressHandler(nullptr);
        archive.reset();
        object.reset();
        return S_OK;
    };
    EXPECT_EQ(bare->ExtractArchive(makeBstr(zip).get(), makeBstr(folder / L"out").get(), missing(), VARIANT_FALSE,
                                   VARIANT_TRUE, nullptr, &done),
              S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
}

TEST_F(ArchiveObject, TakesItsHandlerAsAProperty) {
    Handler handler;
    const DISPID value = DISPID_PROPERTYPUT;
    for (const WORD flags : {DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF}) {
        EXPECT_EQ(call(107, {Value(&handler)}, {value}, flags), S_OK);
        EXPECT_EQ(call(L"ProgressHandler", {}, {}, DISPATCH_PROPERTYGET), S_OK);
        EXPECT_EQ(V_DISPATCH(result.get()), &handler);
        EXPECT_EQ(call(107, {Value::null()}, {value}, flags), S_OK) << "as JScript says nothing";
        EXPECT_EQ(call(L"ProgressHandler", {}, {}, DISPATCH_PROPERTYGET), S_OK);
        EXPECT_EQ(V_DISPATCH(result.get()), nullptr);
    }
    EXPECT_EQ(call(107, {Value(L"handler")}, {value}, DISPATCH_PROPERTYPUT), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(call(107, {}, {}, DISPATCH_PROPERTYPUT), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(call(106, {Value(L"text")}, {value}, DISPATCH_PROPERTYPUT), DISP_E_MEMBERNOTFOUND) << "only to be read";
    result = Value();
    EXPECT_EQ(handler.references, 1U);
}

TEST_F(ArchiveObject, BelongsToItsThread) {
    HRESULT code = S_OK;
    std::thread([&] {
        ITovarEntries* found = nullptr;
        code = archive->ListEntries(makeBstr(zip).get(), &found);
    }).join();
    EXPECT_EQ(code, RPC_E_WRONG_THREAD);
}

TEST_F(ArchiveObject, WorksOnAThreadWithoutMessages) {
    HRESULT code = E_FAIL;
    VARIANT_BOOL done = VARIANT_FALSE;
    std::wstring before(MAX_PATH, L'\0'), after = before;
    ::GetCurrentDirectoryW(MAX_PATH, before.data());
    std::thread([&] {
        const test::Apartment apartmentOfAll(COINIT_MULTITHREADED);
        const ComOwner<ITovar> own = dll.createObject();
        void* found = nullptr;
        ASSERT_EQ(own->QueryInterface(IID_ITovarArchive, &found), S_OK);
        const ComOwner<ITovarArchive> work(static_cast<ITovarArchive*>(found));
        code = work->CreateArchiveFile(makeBstr(zip).get(), *Value(L"docs"), makeBstr(folder.path()).get(), 6, nullptr,
                                       VARIANT_TRUE, &done);
    }).join();
    EXPECT_EQ(code, S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    ::GetCurrentDirectoryW(MAX_PATH, after.data());
    EXPECT_EQ(before, after);
}

TEST_F(ArchiveObject, AsksForNoPassword) {
    ASSERT_EQ(pack(zip, L"secret"), S_OK);
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(unpack(&done), number(tovarErrPassword));
    EXPECT_EQ(errorText(), zip + L": a password is needed.");
    EXPECT_EQ(done, VARIANT_FALSE);
}

TEST_F(ArchiveObject, GivesBackItsHandles) {
    ASSERT_EQ(pack(zip), S_OK);
    VARIANT_BOOL done = VARIANT_FALSE;
    const auto work = [&] {
        EXPECT_EQ(unpack(&done), S_OK);
        EXPECT_EQ(archive->TestArchive(makeBstr(zip).get(), nullptr, &done), S_OK);
        EXPECT_NE(entries(zip), nullptr);
    };
    work();  // the first time loads what stays
    DWORD before = 0, after = 0;
    ASSERT_TRUE(::GetProcessHandleCount(::GetCurrentProcess(), &before));
    for (int count = 0; count < 20; ++count) work();
    ASSERT_TRUE(::GetProcessHandleCount(::GetCurrentProcess(), &after));
    EXPECT_EQ(before, after);
}

}  // namespace
}  // namespace tovar
