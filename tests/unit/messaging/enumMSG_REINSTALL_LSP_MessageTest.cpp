// The Reinstall LSP message: the file to launch, its parameters and its working folder.
#include "messaging/enumMSG_REINSTALL_LSP_Message.h"

#include "MessageTestSupport.h"

#include <gtest/gtest.h>

using namespace MessageTestSupport;

namespace {

enumMSG_REINSTALL_LSP_Message Filled(const stdstr& file, const stdstr& parameters,
                                     const stdstr& folder) {
    enumMSG_REINSTALL_LSP_Message message;
    message.SetFile(file);
    message.SetParameters(parameters);
    message.SetFolder(folder);
    return message;
}

} // namespace

TEST(ReinstallLspMessage, HasId264AndTheNameReinstallLsp) {
    const enumMSG_REINSTALL_LSP_Message message;
    EXPECT_EQ(message.GetId(), 264u);
    EXPECT_EQ(enumMSG_REINSTALL_LSP_Message::Id, 264u);
    EXPECT_EQ(std::u16string(message.GetName()), u"Reinstall LSP");
}

TEST(ReinstallLspMessage, StartsWithThreeEmptyTexts) {
    const enumMSG_REINSTALL_LSP_Message message;
    EXPECT_EQ(message.GetFile(), u"");
    EXPECT_EQ(message.GetParameters(), u"");
    EXPECT_EQ(message.GetFolder(), u"");
}

TEST(ReinstallLspMessage, WritesFileParametersAndFolderInThatOrder) {
    EXPECT_EQ(BodyOf(Filled(u"setup.exe", u"/lsp \"quiet\"", u"C:\\Temp")),
              u"<VLE>setup.exe</VLE><VLE>/lsp \"quiet\"</VLE><VLE>C:\\Temp</VLE>");
    EXPECT_EQ(BodyOf(Filled(u"", u"", u"")), u"<VLE></VLE><VLE></VLE><VLE></VLE>");
}

TEST(ReinstallLspMessage, ComesBackUnchangedAsAReplyAndAsAnInboundCall) {
    const auto texts = AwkwardTexts();
    for (std::size_t i = 0; i < texts.size(); ++i) {
        // Each field gets a different awkward text, so that a field read in the wrong
        // place shows.
        const stdstr& file = texts[i];
        const stdstr& parameters = texts[(i + 1) % texts.size()];
        const stdstr& folder = texts[(i + 2) % texts.size()];
        SCOPED_TRACE(i);
        const auto sent = Filled(file, parameters, folder);
        for (const auto& received : {ThroughReply(sent), ThroughInboundCall(sent)}) {
            EXPECT_EQ(received.GetFile(), file);
            EXPECT_EQ(received.GetParameters(), parameters);
            EXPECT_EQ(received.GetFolder(), folder);
        }
    }
}

TEST(ReinstallLspMessage, CutsAFileThatHoldsTheElementCloseTagAndReadsOnFromThere) {
    // The rest of the cut value lies before the next open tag and is passed over, so the
    // following fields still come out right.
    const auto received = ThroughReply(Filled(u"a</VLE>b", u"params", u"folder"));
    EXPECT_EQ(received.GetFile(), u"a");
    EXPECT_EQ(received.GetParameters(), u"params");
    EXPECT_EQ(received.GetFolder(), u"folder");
}

TEST(ReinstallLspMessage, ShiftsTheFieldsWhenAValueHoldsAnOpenAndCloseTag) {
    const auto received = ThroughReply(Filled(u"a</VLE><VLE>b", u"params", u"folder"));
    EXPECT_EQ(received.GetFile(), u"a");
    EXPECT_EQ(received.GetParameters(), u"b");
    EXPECT_EQ(received.GetFolder(), u"params");
}

TEST(ReinstallLspMessage, ReadsMissingFieldsAsEmpty) {
    auto message = Filled(u"x", u"y", u"z");
    CMessageEnvelope envelope;
    message.ReadBody(u"<VLE>only the file</VLE>", envelope);
    EXPECT_EQ(message.GetFile(), u"only the file");
    EXPECT_EQ(message.GetParameters(), u"");
    EXPECT_EQ(message.GetFolder(), u"");
}
