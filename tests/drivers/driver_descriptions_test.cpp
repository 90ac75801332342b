#include <gtest/gtest.h>

#include "drivers/fakes/driver_fixture.h"
#include "drivers/un_arj.h"
#include "drivers/un_cab.h"
#include "drivers/un_lha.h"
#include "drivers/un_rar.h"
#include "drivers/un_tar.h"
#include "drivers/un_zip.h"

namespace tovar {
namespace {

class UnZip : public testing::Test, protected test::DriverFixture {
protected:
    cUnZip zip{library, messages, regional};
};

class UnTar : public testing::Test, protected test::DriverFixture {
protected:
    cUnTar tar{library, messages, regional};
};

class UnRar : public testing::Test, protected test::DriverFixture {
protected:
    cUnRAR rar{library, messages, regional};
};

class UnArj : public testing::Test, protected test::DriverFixture {
protected:
    cUnARJ arj{library, messages, regional};
};

class UnLha : public testing::Test, protected test::DriverFixture {
protected:
    cUnLHA lha{library, messages, regional};
};

class UnCab : public testing::Test, protected test::DriverFixture {
protected:
    cUnCab cab{library, messages, regional};
};

TEST_F(UnZip, IsDescribed) {
    const DriverDescription& unZip = zip.description();
    EXPECT_EQ(&unZip, &cUnZip::kDescription);
    EXPECT_EQ(unZip.library, L"UnZip32.dll");
    EXPECT_EQ(unZip.prefix, "UnZip");
    EXPECT_EQ(unZip.messageTitle, L"ZIP Message");
    EXPECT_EQ(unZip.minimumVersion, 78);
    EXPECT_TRUE(unZip.hasCursorMode);
    EXPECT_TRUE(unZip.changeable);
    EXPECT_TRUE(unZip.columns.attributes);
    EXPECT_TRUE(unZip.columns.packed);
    EXPECT_TRUE(unZip.columns.ratio);
    EXPECT_TRUE(unZip.columns.type);
    EXPECT_TRUE(unZip.columns.crc);
    EXPECT_EQ(unZip.columns.crcHeader, L"CRC32");
}

TEST_F(UnTar, IsDescribed) {
    const DriverDescription& unTar = tar.description();
    EXPECT_EQ(&unTar, &cUnTar::kDescription);
    EXPECT_EQ(unTar.library, L"Tar32.dll");
    EXPECT_EQ(unTar.prefix, "Tar");
    EXPECT_EQ(unTar.messageTitle, L"TAR Message");
    EXPECT_EQ(unTar.minimumVersion, 53);
    EXPECT_TRUE(unTar.hasCursorMode);
    EXPECT_FALSE(unTar.changeable);
    EXPECT_FALSE(unTar.columns.attributes);
    EXPECT_FALSE(unTar.columns.packed);
    EXPECT_FALSE(unTar.columns.ratio);
    EXPECT_TRUE(unTar.columns.type);
    EXPECT_TRUE(unTar.columns.crc);
    EXPECT_EQ(unTar.columns.crcHeader, L"CRC");
}

TEST_F(UnRar, IsDescribed) {
    const DriverDescription& unRar = rar.description();
    EXPECT_EQ(&unRar, &cUnRAR::kDescription);
    EXPECT_EQ(unRar.library, L"UnRar32.dll");
    EXPECT_EQ(unRar.prefix, "Unrar");
    EXPECT_EQ(unRar.messageTitle, L"RAR Message");
    EXPECT_EQ(unRar.minimumVersion, 0);
    EXPECT_TRUE(unRar.hasCursorMode);
    EXPECT_FALSE(unRar.changeable);
    EXPECT_TRUE(unRar.columns.attributes);
    EXPECT_TRUE(unRar.columns.packed);
    EXPECT_TRUE(unRar.columns.ratio);
    EXPECT_TRUE(unRar.columns.type);
    EXPECT_TRUE(unRar.columns.crc);
    EXPECT_EQ(unRar.columns.crcHeader, L"CRC");
}

TEST_F(UnArj, IsDescribed) {
    const DriverDescription& unArj = arj.description();
    EXPECT_EQ(&unArj, &cUnARJ::kDescription);
    EXPECT_EQ(unArj.library, L"UnArj32j.dll");
    EXPECT_EQ(unArj.prefix, "Unarj");
    EXPECT_EQ(unArj.messageTitle, L"ARJ Message");
    EXPECT_EQ(unArj.minimumVersion, 12);
    EXPECT_TRUE(unArj.hasCursorMode);
    EXPECT_FALSE(unArj.changeable);
    EXPECT_TRUE(unArj.columns.attributes);
    EXPECT_TRUE(unArj.columns.packed);
    EXPECT_TRUE(unArj.columns.ratio);
    EXPECT_TRUE(unArj.columns.type);
    EXPECT_TRUE(unArj.columns.crc);
    EXPECT_EQ(unArj.columns.crcHeader, L"CRC");
}

TEST_F(UnLha, IsDescribed) {
    const DriverDescription& unLha = lha.description();
    EXPECT_EQ(&unLha, &cUnLHA::kDescription);
    EXPECT_EQ(unLha.library, L"UnLha32.dll");
    EXPECT_EQ(unLha.prefix, "Unlha");
    EXPECT_EQ(unLha.messageTitle, L"LHA Message");
    EXPECT_EQ(unLha.minimumVersion, 87);
    EXPECT_TRUE(unLha.hasCursorMode);
    EXPECT_TRUE(unLha.changeable);
    EXPECT_TRUE(unLha.columns.attributes);
    EXPECT_TRUE(unLha.columns.packed);
    EXPECT_TRUE(unLha.columns.ratio);
    EXPECT_TRUE(unLha.columns.type);
    EXPECT_TRUE(unLha.columns.crc);
    EXPECT_EQ(unLha.columns.crcHeader, L"CRC");
}

TEST_F(UnCab, IsDescribed) {
    const DriverDescription& unCab = cab.description();
    EXPECT_EQ(&unCab, &cUnCab::kDescription);
    EXPECT_EQ(unCab.library, L"Cab32.dll");
    EXPECT_EQ(unCab.prefix, "Cab");
    EXPECT_EQ(unCab.messageTitle, L"CAB Message");
    EXPECT_EQ(unCab.minimumVersion, 65);
    EXPECT_FALSE(unCab.hasCursorMode);
    EXPECT_FALSE(unCab.changeable);
    EXPECT_TRUE(unCab.columns.attributes);
    EXPECT_FALSE(unCab.columns.packed);
    EXPECT_FALSE(unCab.columns.ratio);
    EXPECT_FALSE(unCab.columns.type);
    EXPECT_FALSE(unCab.columns.crc);
}

TEST_F(UnLha, HasACheckMode) {
    EXPECT_EQ(lha.CheckMode(), 0);
    lha.setCheckMode(2);
    EXPECT_EQ(lha.CheckMode(), 2);
    EXPECT_FALSE(lha.CheckArchive(L"a.lzh"));
    EXPECT_EQ(library.calls, (Calls{L"checkArchive a.lzh 2"}));
}

TEST_F(UnCab, HasACheckMode) {
    EXPECT_EQ(cab.CheckMode(), 0);
    cab.setCheckMode(1);
    EXPECT_EQ(cab.CheckMode(), 1);
    EXPECT_FALSE(cab.CheckArchive(L"a.cab"));
    EXPECT_EQ(library.calls, (Calls{L"checkArchive a.cab 1"}));
}

TEST_F(UnCab, NeverCallsACursorFunction) {
    library.members = {{.name = "a"}};
    cab.setCursorMode(true);
    EXPECT_FALSE(cab.CursorMode());
    cab.setCursorMode(false);
    EXPECT_TRUE(library.calls.empty());
    EXPECT_EQ(cab.SetArcFile(L"a.cab"), 1U);
    EXPECT_EQ(library.calls, (Calls{L"openArchive a.cab 0", L"findFirst *.*", L"findNext", L"closeArchive"}));
}

TEST_F(UnLha, TellsOfAnArchiveThatCannotBeOpened) {
    library.opens = false;
    lha.SetArcFile(L"a.lzh");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, L"Can not open 'a.lzh' (corrupted archive) !");
    EXPECT_EQ(messages.shown[0].title, L"LHA Message");
}

TEST_F(UnCab, TellsOfAnArchiveThatCannotBeOpened) {
    library.opens = false;
    cab.SetArcFile(L"a.cab");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, L"Can not open 'a.cab' (corrupted archive) !");
    EXPECT_EQ(messages.shown[0].title, L"CAB Message");
}

TEST_F(UnZip, CallsItsCheckModeTestMode) {
    EXPECT_EQ(zip.TestMode(), 0);
    zip.setTestMode(1);
    EXPECT_EQ(zip.TestMode(), 1);
    EXPECT_FALSE(zip.CheckArchive(L"a.zip"));
    EXPECT_EQ(library.calls, (Calls{L"checkArchive a.zip 1"}));
}

TEST_F(UnTar, CallsItsCheckModeTestMode) {
    EXPECT_EQ(tar.TestMode(), 0);
    tar.setTestMode(2);
    EXPECT_EQ(tar.TestMode(), 2);
    EXPECT_FALSE(tar.CheckArchive(L"a.tgz"));
    EXPECT_EQ(library.calls, (Calls{L"checkArchive a.tgz 2"}));
}

TEST_F(UnRar, HasACheckMode) {
    EXPECT_EQ(rar.CheckMode(), 0);
    rar.setCheckMode(2);
    EXPECT_EQ(rar.CheckMode(), 2);
    EXPECT_FALSE(rar.CheckArchive(L"a.rar"));
    EXPECT_EQ(library.calls, (Calls{L"checkArchive a.rar 2"}));
}

TEST_F(UnArj, CallsItsCheckModeTestMode) {
    EXPECT_EQ(arj.TestMode(), 0);
    arj.setTestMode(1);
    EXPECT_EQ(arj.TestMode(), 1);
    EXPECT_FALSE(arj.CheckArchive(L"a.arj"));
    EXPECT_EQ(library.calls, (Calls{L"checkArchive a.arj 1"}));
}

TEST_F(UnZip, TellsOfAnArchiveThatCannotBeOpened) {
    library.opens = false;
    zip.SetArcFile(L"a.zip");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, L"Can not open 'a.zip' (corrupted archive) !");
    EXPECT_EQ(messages.shown[0].title, L"ZIP Message");
}

TEST_F(UnTar, TellsOfAnArchiveThatCannotBeOpened) {
    library.opens = false;
    tar.SetArcFile(L"a.tar");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, L"Can not open 'a.tar' (corrupted archive) !");
    EXPECT_EQ(messages.shown[0].title, L"TAR Message");
}

TEST_F(UnRar, TellsOfAnArchiveThatCannotBeOpened) {
    library.opens = false;
    rar.SetArcFile(L"a.rar");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, L"Can not open 'a.rar' (corrupted archive) !");
    EXPECT_EQ(messages.shown[0].title, L"RAR Message");
}

TEST_F(UnArj, TellsOfAnArchiveThatCannotBeOpened) {
    library.opens = false;
    arj.SetArcFile(L"a.arj");
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, L"Can not open 'a.arj' (corrupted archive) !");
    EXPECT_EQ(messages.shown[0].title, L"ARJ Message");
}

}  // namespace
}  // namespace tovar
