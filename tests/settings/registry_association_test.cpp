#include <gtest/gtest.h>

#include "settings/fakes/fake_registry.h"
#include "settings/registry.h"

namespace tovar {
namespace {

class AssociationTest : public testing::Test {
protected:
    AssociationTest() {
        association.program = LR"(C:\Program Files\Vantrel\Vantrel.exe)";
        association.className = L"Vantrel.Archive";
        association.classDescription = L"Vantrel Archive";
        association.extension = L"zip";
    }

    // The default value of a key below HKEY_CLASSES_ROOT; "(none)" when there is no such key or value.
    [[nodiscard]] std::wstring text(const std::wstring& section) const {
        const auto* raw = backend.findValue(hive::kClassesRoot, section, L"");
        return raw == nullptr || raw->type != registry_type::kText ? L"(none)" : fromRegistryText(raw->bytes);
    }

    template <class Action>
    static std::wstring errorOf(Action action) {
        try {
            action();
        } catch (const RegistryError& error) {
            EXPECT_EQ(error.number(), 26001);
            EXPECT_EQ(error.source(), L"TovarEx.cRegistry");
            return error.description();
        }
        return L"(none)";
    }

    test::FakeRegistry backend;
    cRegistry registry{backend};
    ExeAssociation association;
};

TEST_F(AssociationTest, PointsTheExtensionToTheClass) {
    registry.CreateEXEAssociation(association);
    EXPECT_EQ(text(L".zip"), L"Vantrel.Archive");
    EXPECT_EQ(text(L"Vantrel.Archive"), L"Vantrel Archive");
}

TEST_F(AssociationTest, OpensWithTheProgram) {
    registry.CreateEXEAssociation(association);
    EXPECT_EQ(text(LR"(Vantrel.Archive\shell\open)"), L"&Open");
    EXPECT_EQ(text(LR"(Vantrel.Archive\shell\open\command)"), LR"("C:\Program Files\Vantrel\Vantrel.exe" "%1")");
    EXPECT_EQ(text(LR"(Vantrel.Archive\DefaultIcon)"), LR"(C:\Program Files\Vantrel\Vantrel.exe,0)");
}

TEST_F(AssociationTest, HasNoOtherVerbsUnlessAsked) {
    registry.CreateEXEAssociation(association);
    EXPECT_EQ(backend.findKey(hive::kClassesRoot, LR"(Vantrel.Archive\shell\print)"), nullptr);
    EXPECT_EQ(backend.findKey(hive::kClassesRoot, LR"(Vantrel.Archive\shell\add)"), nullptr);
    EXPECT_EQ(backend.findKey(hive::kClassesRoot, LR"(Vantrel.Archive\shell\new)"), nullptr);
}

TEST_F(AssociationTest, Prints) {
    association.print = true;
    registry.CreateEXEAssociation(association);
    EXPECT_EQ(text(LR"(Vantrel.Archive\shell\print)"), L"&Print");
    EXPECT_EQ(text(LR"(Vantrel.Archive\shell\print\command)"), LR"("C:\Program Files\Vantrel\Vantrel.exe" /p "%1")");
}

TEST_F(AssociationTest, Installs) {
    association.add = true;
    association.installText = L"Archive";
    registry.CreateEXEAssociation(association);
    EXPECT_EQ(text(LR"(Vantrel.Archive\shell\add)"), L"&Install Archive");
    EXPECT_EQ(text(LR"(Vantrel.Archive\shell\add\command)"), LR"("C:\Program Files\Vantrel\Vantrel.exe" /a "%1")");
}

TEST_F(AssociationTest, MakesNewFiles) {
    association.create = true;
    registry.CreateEXEAssociation(association);
    EXPECT_EQ(text(LR"(Vantrel.Archive\shell\new)"), L"&New");
    EXPECT_EQ(text(LR"(Vantrel.Archive\shell\new\command)"), LR"("C:\Program Files\Vantrel\Vantrel.exe" /n "%1")");
}

TEST_F(AssociationTest, TakesTheIconIndex) {
    association.iconIndex = -101;
    registry.CreateEXEAssociation(association);
    EXPECT_EQ(text(LR"(Vantrel.Archive\DefaultIcon)"), LR"(C:\Program Files\Vantrel\Vantrel.exe,-101)");
}

TEST_F(AssociationTest, LeavesTheSelectors) {
    registry.ClassKey = hive::kLocalMachine;
    registry.SectionKey = L"Section";
    registry.ValueKey = L"Name";
    registry.ValueType = registry_type::kNumber;
    registry.CreateEXEAssociation(association);
    EXPECT_EQ(registry.ClassKey, hive::kLocalMachine);
    EXPECT_EQ(registry.SectionKey, L"Section");
    EXPECT_EQ(registry.ValueKey, L"Name");
    EXPECT_EQ(registry.ValueType, registry_type::kNumber);
}

TEST_F(AssociationTest, RaisesWhatCannotBeWritten) {
    backend.denyWriting(hive::kClassesRoot, L".zip");
    EXPECT_EQ(errorOf([&] { registry.CreateEXEAssociation(association); }),
              L"Failed to set registry value Key: 'HKEY_CLASSES_ROOT',Section: '.zip',Key: '' to value: "
              L"'Vantrel.Archive'");
}

TEST_F(AssociationTest, AddsVerbs) {
    registry.CreateEXEAssociation(association);
    const std::wstring verbs[] = {L"test", L"&Test", LR"("C:\t.exe" "%1")", L"list", L"&List", L"list.exe"};
    registry.CreateAdditionalEXEAssociations(verbs);
    EXPECT_EQ(text(LR"(Vantrel.Archive\shell\test)"), L"&Test");
    EXPECT_EQ(text(LR"(Vantrel.Archive\shell\test\command)"), LR"("C:\t.exe" "%1")");
    EXPECT_EQ(text(LR"(Vantrel.Archive\shell\list)"), L"&List");
    EXPECT_EQ(text(LR"(Vantrel.Archive\shell\list\command)"), L"list.exe");
}

TEST_F(AssociationTest, RefusesAListThatIsNoTriples) {
    registry.CreateEXEAssociation(association);
    const std::wstring verbs[] = {L"test", L"&Test", L"t.exe", L"list"};
    EXPECT_EQ(errorOf([&] { registry.CreateAdditionalEXEAssociations(verbs); }),
              L"Invalid parameter list passed to CreateAdditionalEXEAssociations - expected Name/Text/Command");
    EXPECT_EQ(text(LR"(Vantrel.Archive\shell\test)"), L"(none)");
}

TEST_F(AssociationTest, RefusesVerbsBeforeAClassIsDefined) {
    const std::wstring verbs[] = {L"test", L"&Test", L"t.exe"};
    EXPECT_EQ(errorOf([&] { registry.CreateAdditionalEXEAssociations(verbs); }),
              L"Error - attempt to create additional associations before class defined.");
}

}  // namespace
}  // namespace tovar
