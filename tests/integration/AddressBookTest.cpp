// The user's address lists: what counts as an entry, the one-list rule, and the file that
// keeps them (its form, a missing file, a file edited by hand).
#include "AddressBook.h"

#include "support/SandboxRoot.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

using List = AddressBook::List;
using Result = AddressBook::AddResult;

} // namespace

TEST(AddressBook, AnAddressIsKeptInLowerCaseWithoutBlanks) {
    EXPECT_EQ(AddressBook::Normalise("  Alice.Smith@Example.COM \t"), "alice.smith@example.com");
}

TEST(AddressBook, ADomainIsKeptLedByAnAtSign) {
    EXPECT_EQ(AddressBook::Normalise("example.org"), "@example.org");
    EXPECT_EQ(AddressBook::Normalise("@Example.org"), "@example.org");
    EXPECT_EQ(AddressBook::Normalise("*@mail.example.org"), "@mail.example.org");
}

TEST(AddressBook, TextThatIsNeitherAddressNorDomainIsRefused) {
    for (const char* text :
         {"", "   ", "alice", "alice@", "@", "alice@localhost", "a@b@example.com",
          "alice smith@example.com", "alice@-example.com", "alice@example..com",
          ".alice@example.com", "alice@exa_mple.com", "<alice@example.com>"}) {
        EXPECT_FALSE(AddressBook::Normalise(text).has_value()) << text;
    }
}

TEST(AddressBook, ASenderStandsInOneListOnly) {
    AddressBook book("/nonexistent/AddressLists.txt");
    EXPECT_EQ(book.Add(List::Allowed, "bob@example.com"), Result::Added);
    EXPECT_EQ(book.Add(List::Allowed, "BOB@example.com"), Result::AlreadyThere);
    EXPECT_EQ(book.Add(List::Blocked, "bob@example.com"), Result::Moved);
    EXPECT_TRUE(book.Entries(List::Allowed).empty());
    EXPECT_EQ(book.Entries(List::Blocked), std::vector<std::string>{"bob@example.com"});
    EXPECT_EQ(book.Add(List::Blocked, "not an address"), Result::Invalid);
}

TEST(AddressBook, EntriesAreSortedAndRemovedByTheirWrittenForm) {
    AddressBook book("/nonexistent/AddressLists.txt");
    book.Add(List::Allowed, "zed@example.com");
    book.Add(List::Allowed, "example.net");
    book.Add(List::Allowed, "amy@example.com");
    EXPECT_EQ(book.Entries(List::Allowed),
              (std::vector<std::string>{"@example.net", "amy@example.com", "zed@example.com"}));
    EXPECT_TRUE(book.Remove(List::Allowed, "EXAMPLE.NET"));
    EXPECT_FALSE(book.Remove(List::Allowed, "example.net"));
    EXPECT_FALSE(book.Remove(List::Blocked, "amy@example.com"));
    EXPECT_EQ(book.Entries(List::Allowed),
              (std::vector<std::string>{"amy@example.com", "zed@example.com"}));
}

TEST(AddressBook, TheListsLiveInTheUsersConfigurationFolder) {
    TestSupport::SandboxRoot sandbox;
    EXPECT_EQ(AddressBook::DefaultPath(),
              sandbox.path() + "/home/.config/Quillgate/AddressLists.txt");
}

TEST(AddressBook, AMissingFileIsTwoEmptyLists) {
    TestSupport::SandboxRoot sandbox;
    AddressBook book;
    EXPECT_TRUE(book.Load());
    EXPECT_TRUE(book.Entries(List::Allowed).empty());
    EXPECT_TRUE(book.Entries(List::Blocked).empty());
}

TEST(AddressBook, SavedListsAreWrittenInTheirSectionsAndReadBack) {
    TestSupport::SandboxRoot sandbox;
    AddressBook book;
    book.Add(List::Allowed, "alice@example.com");
    book.Add(List::Blocked, "spam.example");
    ASSERT_TRUE(book.Save());
    EXPECT_EQ(TestSupport::SandboxRoot::readFile(book.Path()),
              "# Quillgate address lists: one address or @domain per line, under its list.\n"
              "[Allowed]\n"
              "alice@example.com\n"
              "[Blocked]\n"
              "@spam.example\n");
    struct stat info {};
    ASSERT_EQ(::stat(book.Path().c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);

    AddressBook again;
    ASSERT_TRUE(again.Load());
    EXPECT_EQ(again.Entries(List::Allowed), std::vector<std::string>{"alice@example.com"});
    EXPECT_EQ(again.Entries(List::Blocked), std::vector<std::string>{"@spam.example"});
}

TEST(AddressBook, AFileEditedByHandKeepsWhatReadsAsEntries) {
    TestSupport::SandboxRoot sandbox;
    sandbox.writeFile("home/.config/Quillgate/AddressLists.txt", "stray@example.com\n"
                                                                 "[Blocked]\r\n"
                                                                 "  Junk.Example  \n"
                                                                 "# a remark\n"
                                                                 "nonsense\n"
                                                                 "junk.example\n"
                                                                 "[Allowed]\n"
                                                                 "carol@example.com\n");
    AddressBook book;
    ASSERT_TRUE(book.Load());
    EXPECT_EQ(book.Entries(List::Allowed), std::vector<std::string>{"carol@example.com"});
    EXPECT_EQ(book.Entries(List::Blocked), std::vector<std::string>{"@junk.example"});
}

TEST(AddressBook, AFolderThatCannotBeMadeFailsTheSave) {
    TestSupport::SandboxRoot sandbox;
    sandbox.writeFile("blocker", "a file where a folder should be");
    AddressBook book(sandbox.file("blocker/AddressLists.txt"));
    book.Add(List::Allowed, "alice@example.com");
    EXPECT_FALSE(book.Save());
}
