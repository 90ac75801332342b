#include "front/state_inventory.h"

#include "front/fakes/front_fixture.h"

namespace tovar {
namespace {

class StateInventoryTest : public test::FrontFixture {
protected:
    StateInventory inventory{state, libraries};
};

TEST_F(StateInventoryTest, KnowsTheLibraryOfEachUse) {
    const std::pair<ArchiveKind, const wchar_t*> expected[] = {
        {1, L"InfoZip32.dll"}, {2, L"UnLha32.dll"},   {4, L"Cab32.dll"},   {16, L"UnZip32.dll"}, {32, L"UnRar32.dll"},
        {64, L"UnArj32j.dll"}, {128, L"UnLha32.dll"}, {256, L"Cab32.dll"}, {512, L"Tar32.dll"},  {1024, L"UnAce.dll"}};
    for (const auto& [use, library] : expected) EXPECT_EQ(inventory.libraryOf(use), library) << use;
    EXPECT_EQ(inventory.libraryOf(8), L"");
    EXPECT_EQ(inventory.pathOf(8), L"");
    EXPECT_EQ(inventory.versionOf(8), L"");
}

TEST_F(StateInventoryTest, TellsVersionsAsTheyWereFound) {
    installUnZip();
    install(L"UnLha32.dll", "Unlha", {3 << 16 | 1, 4});
    const TovarOperations object(ports());
    EXPECT_EQ(inventory.versionOf(kind::kZip), L"5.52.1.7");
    EXPECT_EQ(inventory.versionOf(kind::kCreateZip), L"");
    EXPECT_EQ(inventory.versionOf(kind::kLzh), L"3.1.0.4");
    EXPECT_EQ(inventory.versionOf(kind::kCreateLzh), L"3.1.0.4");
    EXPECT_EQ(inventory.versionOf(kind::kRar), L"");
    EXPECT_EQ(inventory.available(), 16U | 128U | 2U);
    installTar();
    EXPECT_EQ(inventory.versionOf(kind::kTar), L"") << "nothing is searched again";
    EXPECT_EQ(inventory.available(), 16U | 128U | 2U);
}

TEST_F(StateInventoryTest, LooksForPathsWhenItIsAsked) {
    EXPECT_EQ(inventory.pathOf(kind::kZip), L"");
    installUnZip();
    EXPECT_EQ(inventory.pathOf(kind::kZip), pathOf(L"UnZip32.dll"));
    install(L"Cab32.dll");
    EXPECT_EQ(inventory.pathOf(kind::kCab), pathOf(L"Cab32.dll"));
    EXPECT_EQ(inventory.pathOf(kind::kCreateCab), pathOf(L"Cab32.dll"));
    EXPECT_TRUE(loader.loaded.empty()) << "looking for a library does not load it";
}

TEST_F(StateInventoryTest, SetsWhatMayBeUsed) {
    inventory.setEffective(kind::kTar);
    EXPECT_EQ(state.effective, kind::kTar);
    EXPECT_EQ(state.availability, kind::kNone);
}

}  // namespace
}  // namespace tovar
