#include "localisation/LanguageTable.h"

#include <array>

namespace {

constexpr std::array<LanguageTable::Entry, 23> kLanguages{{
    {1033, u"English (US)", u"en"},
    {2057, u"English British", u"uk"},
    {1031, u"German", u"de"},
    {1034, u"Spanish", u"es"},
    {1040, u"Italian", u"it"},
    {1045, u"Polish", u"pl"},
    {1043, u"Dutch", u"nl"},
    {1036, u"French", u"fr"},
    {2070, u"Portuguese", u"pt"},
    {1046, u"Portuguese Brazilian", u"br"},
    {1049, u"Russian", u"ru"},
    {2052, u"Chinese Simplified", u"cs"},
    {1028, u"Chinese Traditional", u"ct"},
    {1041, u"Japanese", u"jp"},
    {1042, u"Korean", u"kr"},
    {1029, u"Czech", u"cz"},
    {1030, u"Danish", u"da"},
    {1035, u"Finnish", u"fi"},
    {1032, u"Greek", u"gr"},
    {1044, u"Norwegian", u"no"},
    {1053, u"Swedish", u"se"},
    {1054, u"Thai", u"th"},
    {1055, u"Turkish", u"tr"},
}};

} // namespace

std::span<const LanguageTable::Entry> LanguageTable::Entries() {
    return kLanguages;
}

const LanguageTable::Entry* LanguageTable::FindId(std::uint32_t id) {
    for (const Entry& entry : kLanguages) {
        if (entry.id == id)
            return &entry;
    }
    return nullptr;
}

const LanguageTable::Entry* LanguageTable::FindName(const stdstr& name) {
    // Names are distinct, so the order of the comparisons does not matter.
    for (const Entry& entry : kLanguages) {
        if (name == entry.name)
            return &entry;
    }
    return nullptr;
}

stdstr LanguageTable::NameFromId(std::uint32_t id) {
    const Entry* entry = FindId(id);
    return entry ? entry->name : DefaultName;
}

stdstr LanguageTable::CodeFromId(std::uint32_t id) {
    const Entry* entry = FindId(id);
    return entry ? entry->code : DefaultCode;
}

stdstr LanguageTable::CodeFromName(const stdstr& name) {
    const Entry* entry = FindName(name);
    return entry ? entry->code : DefaultCode;
}

std::uint32_t LanguageTable::IdFromName(const stdstr& name) {
    const Entry* entry = FindName(name);
    return entry ? entry->id : DefaultId;
}
