#include "mainwindow/InfoValues.h"

#include "mainwindow/IInfoValueHost.h"

#include <array>

namespace {

using Number = IInfoValueHost::Number;
using Text = IInfoValueHost::Text;

// The text at `value`, up to its terminator and at most `limit` characters; a null pointer
// gives an empty text.
stdstr TextAt(InfoValues::Value value, std::size_t limit) {
    const auto* text = reinterpret_cast<const char16_t*>(value);
    stdstr result;
    if (text == nullptr)
        return result;
    for (std::size_t i = 0; i < limit && text[i] != u'\0'; ++i)
        result.push_back(text[i]);
    return result;
}

InfoValues::Result PointerResult(const stdstr& text) {
    return reinterpret_cast<InfoValues::Result>(text.c_str());
}

} // namespace

InfoValues::InfoValues(IInfoValueHost& host) : m_host(host) {}

InfoValues::Result InfoValues::SetInfoValue(std::int32_t code, Value value) {
    const auto number = static_cast<std::int32_t>(value);
    switch (code) {
    case 1:
    case 2:
        m_host.SetFlagByte(code, value != 0 ? 1 : 0);
        return 0;
    case 4:
        m_host.SetUpdateAction(number);
        return 0;
    case 7:
        return m_host.SetFilterState(number) ? 1 : 0;
    case 8:
        // The window takes this one before the application object would see it.
        m_host.Command(AddressListButton);
        return 0;
    case 256:
        m_host.SetNumber(Number::AutoUpgrade, number);
        return 0;
    case 257:
        m_host.SetNumber(Number::UpgradePeriod, number);
        return 0;
    case 258:
        m_host.SetNumber(Number::HistoryDays, number);
        return 0;
    case 259:
        m_host.SetText(Text::ConfigPath, TextAt(value, ConfigPathLimit));
        return 0;
    case 260:
        m_host.SetText(Text::Language, TextAt(value, LanguageLimit));
        return 0;
    case 261:
        m_host.NotifyService();
        return 0;
    default:
        return 0;
    }
}

InfoValues::Result InfoValues::GetInfoValue(std::int32_t code, Value value) {
    switch (code) {
    case 1:
        if (!m_version) {
            std::array<std::uint32_t, 4> parts{};
            stdstr version;
            const stdstr path = TextAt(value, stdstr::npos);
            if (m_host.ReadFileVersion(path, parts))
                version = stringFmt(u"%d.%d.%d.%d", parts[0], parts[1], parts[2], parts[3]);
            m_version = std::move(version);
        }
        return PointerResult(*m_version);
    case 5:
        return m_host.GetNumber(Number::FilterOn);
    case 6:
        if (m_host.UpdateAction() == 1)
            m_host.RunFreshUpdate(0);
        return 0;
    case 9:
        return m_host.UpdateAction();
    case 256:
        return m_host.GetNumber(Number::AutoUpgrade);
    case 257:
        return m_host.GetNumber(Number::UpgradePeriod);
    case 258:
        return m_host.GetNumber(Number::HistoryDays);
    case 259:
        return PointerResult(m_host.GetText(Text::ConfigPath));
    case 260:
        return PointerResult(m_host.GetText(Text::Language));
    default:
        return 0;
    }
}
