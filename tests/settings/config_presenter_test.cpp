#include "settings/config_presenter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

#include "settings/fakes/fake_registry.h"

namespace tovar {
namespace {

const std::wstring kSection = LR"(SOFTWARE\Vantrel\Config)";
const std::wstring kName = L"ArchiverSetting";

/// The boxes as they are shown; a test may change what is checked.
class FakeConfigView final : public ConfigView {
public:
    struct Box {
        std::wstring caption = L"never shown";
        bool enabled = false;
        int value = -1;
    };
    std::vector<Box> boxes{10};
    std::vector<LibraryDetails> details;
    bool detailsShown = false;
    int closed = 0;
    mutable int reads = 0;

    void showBox(std::size_t box, const std::wstring& caption, bool enabled, bool checked) override {
        boxes.at(box) = {caption, enabled, checked ? 1 : 0};
    }
    [[nodiscard]] int boxValue(std::size_t box) const override {
        ++reads;
        return boxes.at(box).value;
    }
    void showDetails(const std::vector<LibraryDetails>& libraries) override {
        details = libraries;
        detailsShown = true;
    }
    void hideDetails() override { detailsShown = false; }
    void close() override { ++closed; }

    /// One digit a box, in their order.
    [[nodiscard]] std::string values() const {
        std::string digits;
        for (const Box& box : boxes) digits += box.value < 0 ? '?' : static_cast<char>('0' + box.value);
        return digits;
    }
    [[nodiscard]] std::string enabled() const {
        std::string digits;
        for (const Box& box : boxes) digits += box.enabled ? '1' : '0';
        return digits;
    }
};

/// Libraries that are installed or not, by their file names.
class FakeInventory final : public ArchiverInventory {
public:
    struct Library {
        std::wstring version, path;
    };
    std::map<std::wstring, Library> libraries;
    ArchiveKind mask = 0;
    ArchiveKind effective = 0xDEAD;
    mutable int searches = 0;

    [[nodiscard]] std::wstring libraryOf(ArchiveKind use) const override {
        switch (use) {
            case 1:
                return L"InfoZip32.dll";
            case 2:
            case 128:
                return L"UnLha32.dll";
            case 4:
            case 256:
                return L"Cab32.dll";
            case 16:
                return L"UnZip32.dll";
            case 32:
                return L"UnRar32.dll";
            case 64:
                return L"UnArj32j.dll";
            case 512:
                return L"Tar32.dll";
            case 1024:
                return L"UnAce.dll";
            default:
                ADD_FAILURE() << use << " is no use";
                return {};
        }
    }
    [[nodiscard]] std::wstring versionOf(ArchiveKind use) const override { return find(use).version; }
    [[nodiscard]] std::wstring pathOf(ArchiveKind use) const override {
        ++searches;
        return find(use).path;
    }
    [[nodiscard]] ArchiveKind available() const override { return mask; }
    void setEffective(ArchiveKind value) override { effective = value; }

    void installAll() {
        libraries = {{L"InfoZip32.dll", {L"3.0.0.0", LR"(C:\Lib\InfoZip32.dll)"}},
                     {L"UnLha32.dll", {L"2.67.1.9", LR"(C:\Lib\UnLha32.dll)"}},
                     {L"Cab32.dll", {L"0.98.0.0", LR"(C:\Lib\Cab32.dll)"}},
                     {L"UnZip32.dll", {L"5.52.1.7", LR"(C:\Lib\UnZip32.dll)"}},
                     {L"UnRar32.dll", {L"0.12.0.0", LR"(C:\Lib\UnRar32.dll)"}},
                     {L"UnArj32j.dll", {L"1.10.0.25", LR"(C:\Lib\UnArj32j.dll)"}},
                     {L"Tar32.dll", {L"65535.65535.65535.65535", LR"(C:\Lib\Tar32.dll)"}},
                     {L"UnAce.dll", {L"1.2.0.0", LR"(C:\Lib\UnAce.dll)"}}};
        mask = 2039;
    }
    void remove(const std::wstring& library, ArchiveKind uses) {
        libraries.erase(library);
        mask &= ~uses;
    }

private:
    [[nodiscard]] Library find(ArchiveKind use) const {
        const auto found = libraries.find(libraryOf(use));
        return found == libraries.end() ? Library{} : found->second;
    }
};

class ConfigPresenterTest : public testing::Test {
protected:
    ConfigPresenterTest() { inventory.installAll(); }

    void open(std::optional<std::uint32_t> user = {}, std::optional<std::uint32_t> machine = {}) {
        if (user) registry.addNumber(hive::kCurrentUser, kSection, kName, *user);
        if (machine) registry.addNumber(hive::kLocalMachine, kSection, kName, *machine);
        settings.loadSettings();
        presenter.onLoad();
    }
    [[nodiscard]] std::optional<std::uint32_t> stored(RegistryHive hive) const {
        const RawRegistryValue* const raw = registry.findValue(hive, kSection, kName);
        if (raw == nullptr || raw->type != 4 || raw->bytes.size() != 4) return std::nullopt;
        std::uint32_t number = 0;
        for (std::size_t byte = 4; byte-- > 0;) number = number << 8 | raw->bytes[byte];
        return number;
    }
    void expectStored(std::uint32_t number) const {
        EXPECT_EQ(stored(hive::kCurrentUser), number);
        EXPECT_EQ(stored(hive::kLocalMachine), number);
    }

    test::FakeRegistry registry;
    SettingsStore settings{registry};
    FakeInventory inventory;
    FakeConfigView view;
    ConfigPresenter presenter{view, settings, inventory};
};

TEST_F(ConfigPresenterTest, NamesEachBoxByKindAndVersion) {
    open();
    const std::wstring expected[] = {L"ZIP 3.0.0.0",  L"LHA 2.67.1.9", L"CAB 0.98.0.0",
                                     L"ZIP 5.52.1.7", L"RAR 0.12.0.0", L"ARJ 1.10.0.25",
                                     L"LHA 2.67.1.9", L"CAB 0.98.0.0", L"TAR 65535.65535.65535.65535",
                                     L"ACE 1.2.0.0"};
    for (std::size_t box = 0; box < 10; ++box) EXPECT_EQ(view.boxes[box].caption, expected[box]) << box;
    EXPECT_EQ(view.enabled(), "1111111111");
    EXPECT_EQ(view.values(), "1111111111");
    EXPECT_FALSE(view.detailsShown);
    EXPECT_EQ(inventory.searches, 0) << "paths are looked for on demand";
}

TEST_F(ConfigPresenterTest, KeepsTheBlankOfACaptionWithoutAVersion) {
    inventory.libraries.clear();
    inventory.mask = 0;
    open();
    const std::wstring expected[] = {L"ZIP ", L"LHA ", L"CAB ", L"ZIP ", L"RAR ",
                                     L"ARJ ", L"LHA ", L"CAB ", L"TAR ", L"ACE "};
    for (std::size_t box = 0; box < 10; ++box) EXPECT_EQ(view.boxes[box].caption, expected[box]) << box;
    EXPECT_EQ(view.enabled(), "0000000000");
    EXPECT_EQ(view.values(), "0000000000");
    EXPECT_EQ(inventory.effective, 0U);
}

struct MissingCase {
    const char* name;
    const wchar_t* library;
    ArchiveKind uses;
    const char* boxes;    ///< that are left
    std::uint32_t saved;  ///< by Ok
};
std::ostream& operator<<(std::ostream& stream, const MissingCase& each) { return stream << each.name; }
class MissingLibrary : public ConfigPresenterTest, public testing::WithParamInterface<MissingCase> {};

TEST_P(MissingLibrary, DisablesItsBoxesAndIsSwitchedOffByOk) {
    inventory.remove(GetParam().library, GetParam().uses);
    open();
    EXPECT_EQ(view.enabled(), GetParam().boxes);
    EXPECT_EQ(view.values(), GetParam().boxes) << "whatever the setting says";
    EXPECT_EQ(inventory.effective, GetParam().saved);
    EXPECT_EQ(settings.ArchiverSetting(), 0xFFFFFFFFU) << "the setting keeps the bit as long as Ok is not pressed";
    presenter.onOk();
    expectStored(GetParam().saved);
    // Installed later, the kind stays switched off until its user checks it again.
    inventory.installAll();
    settings.loadSettings();
    ConfigPresenter later(view, settings, inventory);
    later.onLoad();
    EXPECT_EQ(view.enabled(), "1111111111");
    EXPECT_EQ(view.values(), GetParam().boxes);
    EXPECT_EQ(inventory.effective, GetParam().saved);
    for (auto& box : view.boxes) box.value = 1;
    later.onOk();
    expectStored(2039);
    EXPECT_EQ(inventory.effective, 2039U);
}

INSTANTIATE_TEST_SUITE_P(Libraries, MissingLibrary,
                         testing::Values(MissingCase{"InfoZip", L"InfoZip32.dll", 1, "0111111111", 2038},
                                         MissingCase{"UnLha", L"UnLha32.dll", 2 | 128, "1011110111", 1909},
                                         MissingCase{"Cab", L"Cab32.dll", 4 | 256, "1101111011", 1779},
                                         MissingCase{"UnZip", L"UnZip32.dll", 16, "1110111111", 2023},
                                         MissingCase{"UnRar", L"UnRar32.dll", 32, "1111011111", 2007},
                                         MissingCase{"UnArj", L"UnArj32j.dll", 64, "1111101111", 1975},
                                         MissingCase{"Tar", L"Tar32.dll", 512, "1111111101", 1527},
                                         MissingCase{"UnAce", L"UnAce.dll", 1024, "1111111110", 1015}),
                         [](const auto& each) { return std::string(each.param.name); });

struct MaskCase {
    const char* name;
    std::uint32_t stored;
    const char* boxes;
    std::uint32_t effective;  ///< while the dialog is open
    std::uint32_t saved;      ///< by Ok with nothing changed
};
std::ostream& operator<<(std::ostream& stream, const MaskCase& each) { return stream << each.name; }
class StoredMask : public ConfigPresenterTest, public testing::WithParamInterface<MaskCase> {};

TEST_P(StoredMask, IsShownAndSavedFromTheBoxes) {
    open(GetParam().stored);
    EXPECT_EQ(view.values(), GetParam().boxes);
    EXPECT_EQ(view.enabled(), "1111111111") << "what is switched off can be switched on";
    EXPECT_EQ(inventory.effective, GetParam().effective);
    presenter.onOk();
    expectStored(GetParam().saved);
    EXPECT_EQ(settings.ArchiverSetting(), GetParam().saved);
    EXPECT_EQ(inventory.effective, GetParam().saved);
    EXPECT_EQ(view.closed, 1);
}

TEST_P(StoredMask, IsLeftAloneByCancel) {
    open(GetParam().stored);
    for (auto& box : view.boxes) box.value = 1 - box.value;
    presenter.onCancel();
    EXPECT_EQ(view.closed, 1);
    EXPECT_EQ(view.reads, 0) << "the boxes are never read";
    EXPECT_EQ(stored(hive::kCurrentUser), GetParam().stored);
    EXPECT_EQ(stored(hive::kLocalMachine), std::nullopt);
    EXPECT_EQ(settings.ArchiverSetting(), GetParam().stored);
    EXPECT_EQ(inventory.effective, GetParam().effective);
}

INSTANTIATE_TEST_SUITE_P(Masks, StoredMask,
                         testing::Values(MaskCase{"All", 0xFFFFFFFF, "1111111111", 2039, 2039},
                                         MaskCase{"None", 0, "0000000000", 0, 0},
                                         MaskCase{"TheReservedBitAlone", 8, "0000000000", 0, 0},
                                         MaskCase{"TheReservedBitAmongOthers", 8 | 32, "0000100000", 32, 32},
                                         MaskCase{"EveryKind", 2039, "1111111111", 2039, 2039},
                                         MaskCase{"AllButAce", 1023, "1111111110", 1015, 1015},
                                         MaskCase{"BitsAboveAce", 0xFFFFF800, "0000000000", 0, 0},
                                         MaskCase{"BitsAboveAceAndTar", 0x80000A00, "0000000010", 512, 512},
                                         MaskCase{"CreatingAlone", 7, "1110000000", 7, 7},
                                         MaskCase{"ReadingAlone", 0x7F0, "0001111111", 0x7F0, 0x7F0},
                                         MaskCase{"OneOfEach", 2 | 64, "0100010000", 66, 66}),
                         [](const auto& each) { return std::string(each.param.name); });

class EachBox : public ConfigPresenterTest, public testing::WithParamInterface<int> {};

TEST_P(EachBox, StandsForItsOwnBit) {
    static constexpr std::uint32_t kBits[] = {1, 2, 4, 16, 32, 64, 128, 256, 512, 1024};
    const auto box = static_cast<std::size_t>(GetParam());
    open(kBits[box]);
    for (std::size_t each = 0; each < 10; ++each) EXPECT_EQ(view.boxes[each].value, each == box ? 1 : 0) << each;
    presenter.onOk();
    expectStored(kBits[box]);
}

INSTANTIATE_TEST_SUITE_P(Boxes, EachBox, testing::Range(0, 10));

TEST_F(ConfigPresenterTest, SavesWhatIsChecked) {
    open();
    view.boxes[0].value = 0;  // create ZIP
    view.boxes[9].value = 0;  // open ACE
    presenter.onOk();
    expectStored(2039 - 1 - 1024);
    EXPECT_EQ(inventory.effective, 2039U - 1U - 1024U);
}

TEST_F(ConfigPresenterTest, TakesAGrayedBoxForChecked) {
    open(0);
    view.boxes[8].value = 2;  // open TAR
    presenter.onOk();
    expectStored(512);
}

TEST_F(ConfigPresenterTest, ReadsDisabledBoxesToo) {
    inventory.remove(L"UnRar32.dll", 32);
    open(0);
    view.boxes[4].value = 1;  // open RAR: nobody but a program can do that
    presenter.onOk();
    expectStored(32);
    EXPECT_EQ(inventory.effective, 0U) << "without a library it cannot be used";
}

TEST_F(ConfigPresenterTest, TakesTheMachinesSettingWhereTheUserHasNone) {
    open(std::nullopt, 16);
    EXPECT_EQ(view.values(), "0001000000");
    presenter.onOk();
    expectStored(16);
}

TEST_F(ConfigPresenterTest, ShowsTheUsersZeroBeforeTheMachinesSetting) {
    open(0, 1023);
    EXPECT_EQ(view.values(), "0000000000");
    EXPECT_EQ(inventory.effective, 0U);
}

TEST_F(ConfigPresenterTest, ShowsTheMachinesSettingForTheUsersMinusOne) {
    open(0xFFFFFFFF, 16);
    EXPECT_EQ(view.values(), "0001000000");
}

TEST_F(ConfigPresenterTest, CancelReadsTheSettingAgain) {
    open(16);
    registry.addNumber(hive::kCurrentUser, kSection, kName, 512);  // by another program meanwhile
    presenter.onCancel();
    EXPECT_EQ(settings.ArchiverSetting(), 512U);
    EXPECT_EQ(inventory.effective, 16U) << "as when the dialog was opened";
}

TEST_F(ConfigPresenterTest, GoneWithoutAnAnswerIsCancelled) {
    open(16);
    view.boxes[3].value = 0;
    presenter.onGone();
    EXPECT_EQ(view.reads, 0);
    EXPECT_EQ(stored(hive::kCurrentUser), 16U);
    EXPECT_EQ(stored(hive::kLocalMachine), std::nullopt);
    EXPECT_EQ(view.closed, 0) << "there is nothing left to close";
}

TEST_F(ConfigPresenterTest, AnswersOnce) {
    open();
    view.boxes[9].value = 0;
    presenter.onOk();
    view.boxes[8].value = 0;
    presenter.onOk();
    presenter.onCancel();
    presenter.onGone();
    expectStored(2039 - 1024);
    EXPECT_EQ(settings.ArchiverSetting(), 2039U - 1024U);
    EXPECT_EQ(view.closed, 1);
    EXPECT_EQ(std::ranges::count(registry.log, L"set ArchiverSetting"), 2) << "once in each hive";
}

TEST_F(ConfigPresenterTest, UsesTheAvailabilityOfTheTimeOfOk) {
    open();
    inventory.mask = 16;  // another object of the component has looked again meanwhile
    presenter.onOk();
    EXPECT_EQ(inventory.effective, 16U);
    expectStored(2039);
}

TEST_F(ConfigPresenterTest, SavesForTheUserWhenTheMachinesKeyIsClosed) {
    registry.denyWriting(hive::kLocalMachine, kSection);
    open();
    view.boxes[0].value = 0;
    presenter.onOk();
    EXPECT_EQ(stored(hive::kCurrentUser), 2038U);
    EXPECT_EQ(stored(hive::kLocalMachine), std::nullopt);
    EXPECT_EQ(view.closed, 1);
}

TEST_F(ConfigPresenterTest, IsUsedUntilTheEndOfTheProcessWhenNothingCanBeWritten) {
    registry.denyWriting(hive::kCurrentUser, kSection);
    registry.denyWriting(hive::kLocalMachine, kSection);
    open();
    view.boxes[0].value = 0;
    presenter.onOk();
    EXPECT_EQ(inventory.effective, 2038U);
    EXPECT_EQ(settings.ArchiverSetting(), 2038U);
    EXPECT_EQ(view.closed, 1);
}

TEST_F(ConfigPresenterTest, AllowsEverythingWhenNothingCanBeRead) {
    registry.addNumber(hive::kCurrentUser, kSection, kName, 1);
    registry.addNumber(hive::kLocalMachine, kSection, kName, 2);
    registry.denyReading(hive::kCurrentUser, kSection);
    registry.denyReading(hive::kLocalMachine, kSection);
    open();
    EXPECT_EQ(view.values(), "1111111111");
    presenter.onCancel();
    EXPECT_EQ(settings.ArchiverSetting(), 0xFFFFFFFFU);
}

TEST_F(ConfigPresenterTest, TellsWhereALibraryLies) {
    open();
    EXPECT_EQ(presenter.hintOf(0), LR"(C:\Lib\InfoZip32.dll)");
    EXPECT_EQ(presenter.hintOf(1), LR"(C:\Lib\UnLha32.dll)");
    EXPECT_EQ(presenter.hintOf(6), LR"(C:\Lib\UnLha32.dll)");
    EXPECT_EQ(presenter.hintOf(9), LR"(C:\Lib\UnAce.dll)");
}

TEST_F(ConfigPresenterTest, TellsWhyALibraryCannotBeChosen) {
    inventory.remove(L"UnRar32.dll", 32);
    inventory.libraries[L"UnAce.dll"].version.clear();
    open();
    EXPECT_EQ(presenter.hintOf(4), L"UnRar32.dll is not installed.");
    EXPECT_EQ(presenter.hintOf(9),
              L"C:\\Lib\\UnAce.dll\r\nIt cannot be used: it is too old or damaged, or has just been installed.");
    inventory.libraries[L"Tar32.dll"].path.clear();
    EXPECT_EQ(presenter.hintOf(8), L"Tar32.dll is not installed.") << "deleted meanwhile";
}

TEST_F(ConfigPresenterTest, ListsEachLibraryOnce) {
    inventory.remove(L"UnArj32j.dll", 64);
    inventory.libraries[L"UnAce.dll"].version.clear();
    inventory.libraries[L"UnZip32.dll"].path = L"C:\\" + std::wstring(300, L'x') + LR"(\UnZip32.dll)";
    open();
    presenter.onDetails();
    ASSERT_TRUE(view.detailsShown);
    EXPECT_EQ(view.details, (std::vector<LibraryDetails>{
                                {L"InfoZip32.dll", L"3.0.0.0", LR"(C:\Lib\InfoZip32.dll)"},
                                {L"UnLha32.dll", L"2.67.1.9", LR"(C:\Lib\UnLha32.dll)"},
                                {L"Cab32.dll", L"0.98.0.0", LR"(C:\Lib\Cab32.dll)"},
                                {L"UnZip32.dll", L"5.52.1.7", L"C:\\" + std::wstring(300, L'x') + LR"(\UnZip32.dll)"},
                                {L"UnRar32.dll", L"0.12.0.0", LR"(C:\Lib\UnRar32.dll)"},
                                {L"UnArj32j.dll", L"not installed", L""},
                                {L"Tar32.dll", L"65535.65535.65535.65535", LR"(C:\Lib\Tar32.dll)"},
                                {L"UnAce.dll", L"cannot be used", LR"(C:\Lib\UnAce.dll)"}}));
}

TEST_F(ConfigPresenterTest, HidesTheListAgainAndLooksAnewForTheNext) {
    open();
    presenter.onDetails();
    presenter.onDetails();
    EXPECT_FALSE(view.detailsShown);
    inventory.libraries[L"Tar32.dll"].path = LR"(D:\Tar32.dll)";
    presenter.onDetails();
    EXPECT_TRUE(view.detailsShown);
    ASSERT_EQ(view.details.size(), 8U);
    EXPECT_EQ(view.details[6].path, LR"(D:\Tar32.dll)");
    EXPECT_EQ(view.closed, 0);
}

}  // namespace
}  // namespace tovar
