// A translated string end to end: QGEntString::LoadString(id) with the English language
// file loaded (key composed, TranslateKey through CTranslator into the store's map, text
// copied out of the 1999-character buffer), against the floor of a plain unordered_map
// lookup of the same prebuilt key with a copy of its text, measured in the same run.
#include "StringTable.h"
#include "localisation/CTranslator.h"
#include "localisation/IniFile.h"
#include "localisation/QGEntString.h"
#include "localisation/QGInternationalizationManager.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

// The committed English file, found from this source file's place in the tree.
stdstr EnglishFile() {
    const auto source = std::filesystem::path(__FILE__).parent_path().parent_path();
    return stdstr::toTString((source / "resources" / "QGSaLangs" / "English.ini").string());
}

std::vector<std::uint32_t> TableIds() {
    std::vector<std::uint32_t> ids;
    for (const auto& entry : QGResources::EnglishStringTable())
        ids.push_back(entry.id);
    return ids;
}

void BM_Floor_UnorderedMapLookup(benchmark::State& state) {
    CIniFileT<CFile> file(EnglishFile());
    std::map<stdstr, stdstr> section;
    file.GetSection(u"QGSection", section);
    const std::unordered_map<std::u16string, std::u16string> texts(section.begin(), section.end());
    std::vector<std::u16string> keys;
    for (std::uint32_t id : TableIds()) {
        stdstr key;
        keys.push_back(key.Format(u"QGSA_%d", id));
    }
    std::size_t next = 0;
    for (auto _ : state) {
        const auto found = texts.find(keys[next]);
        std::u16string text = found != texts.end() ? found->second : keys[next];
        benchmark::DoNotOptimize(text.data());
        next = next + 1 == keys.size() ? 0 : next + 1;
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}
BENCHMARK(BM_Floor_UnorderedMapLookup);

void BM_LoadStringById(benchmark::State& state) {
    CQGInternationalizationManager::Instance().LoadTranslationFile(EnglishFile());
    CTranslator translator;
    QGEntString::m_pLocalizer = &translator;
    const std::vector<std::uint32_t> ids = TableIds();
    // A text the file does not answer would fall back on the table and measure that path.
    for (std::uint32_t id : ids) {
        QGEntString probe;
        probe.LoadString(id);
        if (!probe.empty() && probe.front() == u'*') {
            state.SkipWithError("the English file does not answer every id");
            return;
        }
    }
    std::size_t next = 0;
    for (auto _ : state) {
        QGEntString text;
        text.LoadString(ids[next]);
        benchmark::DoNotOptimize(text.data());
        next = next + 1 == ids.size() ? 0 : next + 1;
    }
    QGEntString::m_pLocalizer = nullptr;
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}
BENCHMARK(BM_LoadStringById);

} // namespace
