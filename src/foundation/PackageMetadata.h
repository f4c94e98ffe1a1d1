#pragma once
// PackageMetadata: the JSON text of a binary's package note ({"name":"quillgate",
// "version":"1.0.0.1", ...}), of which the program reads the name and the version. The
// reader accepts any JSON object, skips members it does not know, and refuses anything
// that is not well-formed JSON, so a garbled note gives no version rather than a wrong one.

#include <optional>
#include <string>
#include <string_view>

class PackageMetadata {
public:
    std::optional<std::string> name; // UTF-8; empty when the member is missing or no text
    std::optional<std::string> version;

    // Empty for anything but one well-formed JSON object (surrounding blanks allowed).
    static std::optional<PackageMetadata> parse(std::string_view json);
};
