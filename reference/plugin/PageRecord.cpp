#include "PageRecord.h"

#include <algorithm>
#include <cstring>

static_assert(PageRecord::TitleOffset + PageRecord::TitleCapacity * sizeof(char16_t) <=
              sizeof(PluginPageRecord));

void PageRecord::Fill(std::int32_t index, PluginPageRecord& record) {
    std::memset(record.bytes, 0, sizeof record.bytes);
    std::memcpy(record.bytes, Mark.data(), Mark.size());
    const std::uint32_t version = LayoutVersion;
    std::memcpy(record.bytes + VersionOffset, &version, sizeof version);
    std::memcpy(record.bytes + IndexOffset, &index, sizeof index);
    const PageKind kind = PageKindOfIndex(index);
    const auto kindValue = static_cast<std::int32_t>(kind);
    std::memcpy(record.bytes + KindOffset, &kindValue, sizeof kindValue);
    const std::u16string title = TitleOf(kind);
    const std::size_t units = std::min(title.size(), TitleCapacity - 1);
    std::memcpy(record.bytes + TitleOffset, title.data(), units * sizeof(char16_t));
}

std::optional<PageRecord::Content> PageRecord::Read(const PluginPageRecord* record) {
    if (record == nullptr || std::memcmp(record->bytes, Mark.data(), Mark.size()) != 0)
        return std::nullopt;
    std::uint32_t version = 0;
    std::memcpy(&version, record->bytes + VersionOffset, sizeof version);
    if (version != LayoutVersion)
        return std::nullopt;
    Content content;
    std::memcpy(&content.index, record->bytes + IndexOffset, sizeof content.index);
    std::int32_t kindValue = 0;
    std::memcpy(&kindValue, record->bytes + KindOffset, sizeof kindValue);
    // The kind must be the one of the index: a record patched by somebody else is refused.
    if (kindValue != static_cast<std::int32_t>(PageKindOfIndex(content.index)))
        return std::nullopt;
    content.kind = static_cast<PageKind>(kindValue);
    for (std::size_t i = 0; i + 1 < TitleCapacity; ++i) {
        char16_t unit = 0;
        std::memcpy(&unit, record->bytes + TitleOffset + i * sizeof(char16_t), sizeof unit);
        if (unit == 0)
            break;
        content.title.push_back(unit);
    }
    return content;
}

std::u16string PageRecord::TitleOf(PageKind kind) {
    switch (kind) {
    case PageKind::AddressList:
        return u"Address List";
    case PageKind::Settings:
        return u"Settings";
    case PageKind::Status:
        return u"Status";
    case PageKind::Welcome:
        return u"Welcome to Quillgate";
    case PageKind::WizardOptions:
        return u"Updates and history";
    case PageKind::None:
        break;
    }
    return u"";
}
