// A plug-in library built for the loader's tests. One source, several libraries: compile
// definitions leave out exports (QG_TEST_OMIT_<factory>), make a factory answer null
// (QG_TEST_NULL_<factory>) or make CreateCIInstance throw (QG_TEST_THROW_CORVANE,
// QG_TEST_THROW_OTHER). Every call of the host is written to a journal, in order, which the
// tests read through the QGTestPlugin_* exports.

#include "mainwindow/PluginContract.h"

#if defined(QG_TEST_THROW_CORVANE)
#include "foundation/CorvaneBaseException.h"
#endif

#include <QString>
#include <QWidget>

#include <cstdint>
#include <cstring>
#include <map>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

std::mutex g_lock;
std::vector<std::string> g_journal;
std::map<std::string, int> g_knobs;
std::map<std::uint32_t, RPCHandler> g_handlers;

void Note(const std::string& line) {
    const std::lock_guard<std::mutex> guard(g_lock);
    g_journal.push_back(line);
}

int Knob(const char* name, int fallback) {
    const std::lock_guard<std::mutex> guard(g_lock);
    const auto found = g_knobs.find(name);
    return found == g_knobs.end() ? fallback : found->second;
}

std::string Utf8(const char16_t* text) {
    if (text == nullptr)
        return "(null)";
    return QString::fromUtf16(text).toStdString();
}

std::string NameOf(const QWidget* widget) {
    return widget == nullptr ? std::string("(null)") : widget->objectName().toStdString();
}

// A record that GetPageInfo filled starts with this mark and its index; the rest of the
// block is written too, so that a record shorter than 536 bytes would be caught.
constexpr char RecordMark[4] = {'Q', 'G', 'T', 'P'};

void FillRecord(std::int32_t index, PluginPageRecord* record) {
    std::memset(record->bytes, 0xA5, sizeof record->bytes);
    std::memcpy(record->bytes, RecordMark, sizeof RecordMark);
    std::memcpy(record->bytes + sizeof RecordMark, &index, sizeof index);
}

// The index written by FillRecord, or -1 for a record that was never filled.
std::int32_t RecordIndex(const PluginPageRecord* record) {
    if (record == nullptr || std::memcmp(record->bytes, RecordMark, sizeof RecordMark) != 0)
        return -1;
    std::int32_t index = 0;
    std::memcpy(&index, record->bytes + sizeof RecordMark, sizeof index);
    return index;
}

std::string RecordText(const PluginPageRecord* record) {
    const std::int32_t index = RecordIndex(record);
    return index < 0 ? std::string("unfilled") : std::to_string(index);
}

class StandAlone : public IQGStandAlone {
public:
    std::int32_t SetInfoSink(IInfoSink* sink) override {
        // Asks the host's sink once, so that a test can tell which sink was handed over.
        Note("SetInfoSink " +
             (sink == nullptr ? std::string("null") : "ref=" + std::to_string(sink->Reserved2())));
        return 0;
    }
};

class Plugin : public IQGPlugin {
public:
    std::int32_t InitGUI(const char16_t* language) override {
        Note("InitGUI " + Utf8(language));
        return Knob("InitGUI", 0);
    }
    std::int32_t TermGUI() override {
        Note("TermGUI");
        return 0;
    }
    std::int32_t SetPageMetrics(std::int32_t a, std::int32_t b, std::int32_t c, std::int32_t d,
                                std::int32_t e) override {
        Note("SetPageMetrics " + std::to_string(a) + " " + std::to_string(b) + " " +
             std::to_string(c) + " " + std::to_string(d) + " " + std::to_string(e));
        return 0;
    }
    std::int32_t ResizePage(PluginPageId page, std::int32_t width, std::int32_t height) override {
        Note("ResizePage " + std::to_string(page) + " " + std::to_string(width) + " " +
             std::to_string(height));
        return 0;
    }
    std::int32_t ShowPage(PluginPageId page, std::int32_t flag) override {
        Note("ShowPage " + std::to_string(page) + " " + std::to_string(flag));
        return 0;
    }
    std::int32_t Enabled(std::int32_t* enabled) override {
        Note("Enabled " + std::to_string(enabled == nullptr ? -1 : *enabled));
        if (enabled != nullptr)
            *enabled = 1;
        return Knob("Enabled", 0);
    }
    std::int32_t SetLanguage(const char16_t* language) override {
        Note("SetLanguage " + Utf8(language));
        return 0;
    }
};

class CommonUI : public IQGCommonUI {
public:
    std::int32_t GetPageCount() override {
        Note("GetPageCount");
        return Knob("PageCount", 13);
    }
    std::int32_t GetPageInfo(std::int32_t index, PluginPageRecord* record) override {
        Note("GetPageInfo " + std::to_string(index));
        FillRecord(index, record);
        return 0;
    }
    std::int32_t DestroyPage(PluginPageId page) override {
        Note("DestroyPage " + std::to_string(page));
        return 0;
    }
    QWidget* CreateListPage(PluginPageId* page, QWidget* parent, std::int32_t second,
                            PluginPageRecord* record, std::int32_t fourth,
                            std::int32_t fifth) override {
        Note("CreateListPage record=" + RecordText(record) + " parent=" + NameOf(parent) + " " +
             std::to_string(second) + " " + std::to_string(fourth) + " " + std::to_string(fifth));
        return MakePage(page, parent, record);
    }
    QWidget* CreatePage(QWidget* parent, PluginPageRecord* record, PluginPageId* page,
                        std::int32_t show) override {
        Note("CreatePage record=" + RecordText(record) + " parent=" + NameOf(parent) +
             " show=" + std::to_string(show));
        return MakePage(page, parent, record);
    }

private:
    // The page id is 100 plus the record's index (99 for an unfilled record). The knob
    // "NullPage<index>" makes the page of that record fail.
    static QWidget* MakePage(PluginPageId* page, QWidget* parent, const PluginPageRecord* record) {
        const std::int32_t index = RecordIndex(record);
        const std::string failKnob = "NullPage" + std::to_string(index);
        if (Knob(failKnob.c_str(), 0) != 0)
            return nullptr;
        *page = static_cast<PluginPageId>(100 + index);
        auto* widget = new QWidget(parent);
        widget->setObjectName(QString::fromStdString("page" + std::to_string(index)));
        return widget;
    }
};

class Info : public IQGInfo {
public:
    std::int32_t SetConfigPath(const char16_t* path, std::int32_t length) override {
        Note("SetConfigPath " + Utf8(path) + " " + std::to_string(length));
        return 0;
    }
    std::int32_t GetSpamCount(std::uint32_t* count) override {
        Note("GetSpamCount");
        *count = 0;
        return 0;
    }
    std::int32_t GetExaminedCount(std::uint32_t* count) override {
        Note("GetExaminedCount");
        *count = 0;
        return 0;
    }
};

class Rpc : public IRPCExt {
public:
    std::int32_t UnregisterHandler(std::uint32_t messageId) override {
        Note("UnregisterHandler " + std::to_string(messageId));
        const std::lock_guard<std::mutex> guard(g_lock);
        g_handlers.erase(messageId);
        return 0;
    }
    std::int32_t FreeBuffer(std::uint8_t** /*reply*/, std::int32_t* /*replyLength*/) override {
        Note("FreeBuffer");
        return 0;
    }
    std::uint32_t SendRequest(const char16_t* serverName, const std::uint8_t* /*data*/,
                              std::uint32_t length, std::uint8_t** /*reply*/,
                              std::int32_t* /*replyLength*/) override {
        Note("SendRequest " + Utf8(serverName) + " " + std::to_string(length));
        return RpcStatus::Success;
    }
    std::int32_t RegisterHandler(std::uint32_t messageId, RPCHandler handler) override {
        Note("RegisterHandler " + std::to_string(messageId));
        const std::lock_guard<std::mutex> guard(g_lock);
        g_handlers[messageId] = handler;
        return 0;
    }
};

} // namespace

extern "C" {

#if !defined(QG_TEST_OMIT_CreateQGInstanceStandAlone)
IQGStandAlone* CreateQGInstanceStandAlone() {
    Note("CreateQGInstanceStandAlone");
#if defined(QG_TEST_NULL_CreateQGInstanceStandAlone)
    return nullptr;
#else
    static StandAlone object;
    return &object;
#endif
}
#endif

#if !defined(QG_TEST_OMIT_CreateQGInstance)
IQGPlugin* CreateQGInstance() {
    Note("CreateQGInstance");
    static Plugin object;
    return &object;
}
#endif

#if !defined(QG_TEST_OMIT_CreateCIInstance)
IQGCommonUI* CreateCIInstance() {
    Note("CreateCIInstance");
#if defined(QG_TEST_THROW_CORVANE)
    throw Corvane::BaseException(u"TestPlugin", 1, u"the test plug-in refuses to start");
#elif defined(QG_TEST_THROW_OTHER)
    throw std::runtime_error("the test plug-in refuses to start");
#else
    static CommonUI object;
    return &object;
#endif
}
#endif

#if !defined(QG_TEST_OMIT_CreateQGInfo)
IQGInfo* CreateQGInfo() {
    Note("CreateQGInfo");
    static Info object;
    return &object;
}
#endif

#if !defined(QG_TEST_OMIT_CreateRPCInstance)
IRPCExt* CreateRPCInstance() {
    Note("CreateRPCInstance");
#if defined(QG_TEST_NULL_CreateRPCInstance)
    return nullptr;
#else
    static Rpc object;
    return &object;
#endif
}
#endif

// The journal, one call per line, each line ended by '\n'. The text stays valid until the
// next call of this function.
QG_PLUGIN_EXPORT const char* QGTestPlugin_Journal() {
    static std::string text;
    const std::lock_guard<std::mutex> guard(g_lock);
    text.clear();
    for (const std::string& line : g_journal)
        text += line + '\n';
    return text.c_str();
}

// Empties the journal and forgets the knobs and the bound handlers.
QG_PLUGIN_EXPORT void QGTestPlugin_Reset() {
    const std::lock_guard<std::mutex> guard(g_lock);
    g_journal.clear();
    g_knobs.clear();
    g_handlers.clear();
}

// Sets a behaviour: "PageCount", "InitGUI" (its result), "Enabled" (its result),
// "NullPage<record index>" (non-zero: that page is not created).
QG_PLUGIN_EXPORT void QGTestPlugin_Set(const char* knob, int value) {
    const std::lock_guard<std::mutex> guard(g_lock);
    g_knobs[knob] = value;
}

// The handler bound to `messageId` now, or null.
QG_PLUGIN_EXPORT RPCHandler QGTestPlugin_Handler(std::uint32_t messageId) {
    const std::lock_guard<std::mutex> guard(g_lock);
    const auto found = g_handlers.find(messageId);
    return found == g_handlers.end() ? nullptr : found->second;
}

} // extern "C"
