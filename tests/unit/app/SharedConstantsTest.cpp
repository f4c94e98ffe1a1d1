// The shared vocabulary is spelled as the service and the plug-in spell it.

#include "app/SharedConstants.h"

#include <gtest/gtest.h>

TEST(SharedConstants, TheRegistryRootsNestAsTheServiceNamesThem) {
    EXPECT_EQ(SharedConstants::VelloranRoot, u"Software\\Velloran");
    EXPECT_EQ(SharedConstants::QuillgateRoot, u"Software\\Velloran\\Quillgate");
    EXPECT_EQ(SharedConstants::QuillgateVersionRoot, u"Software\\Velloran\\Quillgate\\4.0");
    EXPECT_EQ(SharedConstants::QuillgateSettingsRoot,
              u"Software\\Velloran\\Quillgate\\4.0\\Settings");
    EXPECT_EQ(SharedConstants::QuillgateRegistryKey, SharedConstants::QuillgateRoot);
}

TEST(SharedConstants, TheMisspelledTuningValueKeepsItsSpelling) {
    EXPECT_EQ(SharedConstants::BayesProbThreshold, u"BayesProbThreashold");
}

TEST(SharedConstants, TheProgramIdentityNamesTheLinuxFiles) {
    EXPECT_EQ(SharedConstants::InstanceName, u"VelloranQuillgate");
    EXPECT_EQ(SharedConstants::ProgramFileName, u"quillgate");
    EXPECT_EQ(SharedConstants::UpdaterFileName, u"quillgate-update");
    EXPECT_EQ(SharedConstants::UserFolderSuffix, u"/Quillgate");
}

TEST(SharedConstants, TheDatabaseTagsAreEightBitTexts) {
    EXPECT_EQ(SharedConstants::CommentOpen, "<!--");
    EXPECT_EQ(SharedConstants::CommentClose, "-->");
    EXPECT_EQ(SharedConstants::GoodCount, "nGood");
    EXPECT_EQ(SharedConstants::AggregateCount, "nAggregate");
}

TEST(SharedConstants, TheUpdateStampsAndLanguageValue) {
    EXPECT_EQ(SharedConstants::LastUpdate, u"LastUpdate");
    EXPECT_EQ(SharedConstants::LastDNSBLUpdate, u"LastDNSBLUpdate");
    EXPECT_EQ(SharedConstants::LanguageIdValue, u"iLang");
}
