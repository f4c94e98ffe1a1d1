// ComponentFailureResponder: the texts of the three failures, composed to the character, and
// nothing for any other id.
#include "messaging/ComponentFailureResponder.h"

#include "CountedMessage.h"
#include "EnglishLocalizerEnvironment.h"
#include "EventJournal.h"
#include "InboundEnvelopes.h"
#include "ScriptedDialogs.h"
#include "ScriptedLauncher.h"
#include "ScriptedReboot.h"
#include "UserTexts.h"
#include "messaging/LspReinstaller.h"
#include "messaging/enumMSG_PING_Message.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const auto* const g_localizer =
    ::testing::AddGlobalTestEnvironment(std::make_unique<EnglishLocalizerEnvironment>().release());

using Lines = std::vector<std::string>;

class Responder : public ::testing::Test {
protected:
    EventJournal journal;
    ScriptedDialogs dialogs{journal};
    ScriptedLauncher launcher{journal};
    ScriptedReboot reboot{journal};
    LspReinstaller reinstaller{dialogs, launcher, reboot};
    ComponentFailureResponder responder{dialogs, reinstaller};
};

TEST_F(Responder, TheThreeFailuresAreKnownByTheirIds) {
    EXPECT_TRUE(ComponentFailureResponder::IsComponentFailure(260));
    EXPECT_TRUE(ComponentFailureResponder::IsComponentFailure(263));
    EXPECT_TRUE(ComponentFailureResponder::IsComponentFailure(264));
    for (const std::uint32_t id : {256u, 258u, 261u, 262u, 265u, 272u})
        EXPECT_FALSE(ComponentFailureResponder::IsComponentFailure(id)) << id;
}

TEST_F(Responder, TheComponentsNameFillsString238AsItStands) {
    const stdstr name = u"%s %d 50% caf\u00E9 <lsp> & \"x\"";
    EXPECT_TRUE(
        responder.Respond(InboundEnvelopes::FailedToLoad(name), InboundDialogs::Owner::None));
    EXPECT_EQ(journal.Lines(),
              (Lines{"box none [" + UserTexts::CannotLoad(EventJournal::Narrow(name)) +
                     "] [Quillgate] 16"}));
}

TEST_F(Responder, AnEmptyNameLeavesTheDoubleBlankAndTheFullStop) {
    responder.Respond(InboundEnvelopes::FailedToLoad(u""), InboundDialogs::Owner::MainWindow);
    EXPECT_EQ(
        journal.Lines(),
        (Lines{"box main [Quillgate cannot start because it cannot load  .] [Quillgate] 16"}));
}

TEST_F(Responder, TheComposedTextIsCutTo1023Characters) {
    const stdstr name(2000, u'x');
    responder.Respond(InboundEnvelopes::FailedToLoad(name), InboundDialogs::Owner::None);
    const std::string full = UserTexts::CannotLoad(std::string(2000, 'x'));
    EXPECT_EQ(journal.Lines(), (Lines{"box none [" + full.substr(0, 1023) + "] [Quillgate] 16"}));
}

TEST_F(Responder, AStandInOfId260IsShownWithAnEmptyName) {
    CountedMessage standIn(260);
    EXPECT_TRUE(responder.Respond(standIn, InboundDialogs::Owner::None));
    EXPECT_EQ(
        journal.Lines(),
        (Lines{"box none [Quillgate cannot start because it cannot load  .] [Quillgate] 16"}));
}

TEST_F(Responder, AnyOtherIdIsLeftAlone) {
    EXPECT_FALSE(responder.Respond(enumMSG_PING_Message(), InboundDialogs::Owner::None));
    EXPECT_FALSE(responder.Respond(CountedMessage(265), InboundDialogs::Owner::MainWindow));
    EXPECT_TRUE(journal.Lines().empty());
}

} // namespace
