#pragma once
// The user's two address lists: senders whose mail is always allowed and senders whose mail
// is always blocked. An entry is a whole address ("name@example.com") or a whole domain,
// kept as "@example.com" (typed as "example.com", "@example.com" or "*@example.com"). The
// filter service has no message for the lists, so they are kept in a file of the user's
// configuration folder, $XDG_CONFIG_HOME/Quillgate/AddressLists.txt:
//
//   # Quillgate address lists: one address or @domain per line, under its list.
//   [Allowed]
//   alice@example.com
//   [Blocked]
//   @spam.example
//
// The file is replaced whole (a temporary file renamed over it), so it is never half written.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class AddressBook {
public:
    enum class List { Allowed, Blocked };
    enum class AddResult {
        Added,
        // Taken out of the other list and added to this one.
        Moved,
        AlreadyThere,
        Invalid,
    };

    explicit AddressBook(std::string path = DefaultPath());

    // $XDG_CONFIG_HOME/Quillgate/AddressLists.txt, as the environment says now.
    static std::string DefaultPath();

    // Reads the file; a missing file gives two empty lists. False when it cannot be read
    // (the lists are then left empty).
    bool Load();
    // Writes the file, making its folder; false when that fails.
    bool Save() const;

    const std::vector<std::string>& Entries(List list) const;
    AddResult Add(List list, std::string_view entry);
    bool Remove(List list, std::string_view entry);
    bool Contains(List list, std::string_view entry) const;
    const std::string& Path() const { return m_path; }

    // The form in which `text` is kept, or nothing when it is neither an address nor a
    // domain: surrounding blanks removed, lower case, a domain led by '@'.
    static std::optional<std::string> Normalise(std::string_view text);

private:
    std::vector<std::string>& EntriesOf(List list);

    std::string m_path;
    std::vector<std::string> m_allowed;
    std::vector<std::string> m_blocked;
};
