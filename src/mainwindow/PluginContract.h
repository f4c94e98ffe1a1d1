#pragma once
// The contract between the program and its plug-in library libQGPlugin.so: the five
// interfaces whose objects the library's factories hand out, the interface that the host
// gives back, the page record, and the private messages between the main window and the
// plug-in's pages. A plug-in compiles against this header and Qt; to post or send a
// private message it also builds toolkit/PrivateMessageEvent.cpp (Qt Core only) into
// itself, so that both sides use one event type.
//
// Slot order is the binary interface: the Itanium C++ ABI lays each table out in
// declaration order, so no operation may be moved, inserted or removed. A ReservedN slot
// stands for an operation that the host never calls; N is the slot's position, counted
// from 1. A plug-in keeps every reserved slot; the inline bodies only spare it writing
// them.
//
// The plug-in owns all five objects: the host never deletes one, and none is told to go
// away (TermGUI and the unloading of the library are the only signs of the end).

#include "mainwindow/PrivateMessages.h"
#include "mainwindow/RpcContract.h"
#include "toolkit/PrivateMessageEvent.h"

#include <cstdint>

class QWidget;

// The 32-bit error results of the contract, with their COM values.
inline constexpr std::int32_t E_FAIL = static_cast<std::int32_t>(0x80004005u);
inline constexpr std::int32_t E_NOTIMPL = static_cast<std::int32_t>(0x80004001u);

// What a plug-in uses to know one of its pages; the host only stores it and hands it back.
using PluginPageId = std::uint32_t;

// A block that the plug-in fills in GetPageInfo and gets back in CreatePage and
// CreateListPage. The host never looks inside; only the size is fixed.
struct alignas(8) PluginPageRecord {
    std::uint8_t bytes[536];
};
static_assert(sizeof(PluginPageRecord) == 536);

// Fixed indices of the page records.
namespace PluginPageIndex {
inline constexpr int AddressList = 0;
inline constexpr int Settings = 8;
inline constexpr int Status = 9;
inline constexpr int WizardFirst = 11;
inline constexpr int WizardSecond = 12;
// The host keeps this many records.
inline constexpr int RecordCount = 13;
} // namespace PluginPageIndex

// The host's side, given to the plug-in through IQGStandAlone::SetInfoSink; it lives as
// long as the main window. The plug-in may call it, but nothing happens on any call: the
// answers are fixed.
class IInfoSink {
public:
    // Answers E_NOTIMPL.
    virtual std::int32_t Reserved1(std::uint32_t first, std::uint32_t second, std::uint32_t third,
                                   std::uint32_t fourth, std::uint32_t fifth) = 0;
    // Both answer the object's reference value, which is 1 and never changes.
    virtual std::uint32_t Reserved2() = 0;
    virtual std::uint32_t Reserved3() = 0;
    // All answer 0.
    virtual std::int32_t Reserved4() = 0;
    virtual std::int32_t Reserved5() = 0;
    virtual std::int32_t Reserved6() = 0;
    virtual ~IInfoSink() = default;

protected:
    IInfoSink() = default;
    IInfoSink(const IInfoSink&) = default;
    IInfoSink& operator=(const IInfoSink&) = default;
};

class IQGStandAlone {
public:
    virtual std::int32_t Reserved1() { return 0; }
    virtual std::int32_t Reserved2() { return 0; }
    virtual std::int32_t Reserved3() { return 0; }
    virtual std::int32_t Reserved4() { return 0; }
    virtual std::int32_t Reserved5() { return 0; }
    virtual std::int32_t Reserved6() { return 0; }
    virtual std::int32_t Reserved7() { return 0; }
    // First call of the page set-up. Result ignored.
    virtual std::int32_t SetInfoSink(IInfoSink* sink) = 0;

protected:
    IQGStandAlone() = default;
    IQGStandAlone(const IQGStandAlone&) = default;
    IQGStandAlone& operator=(const IQGStandAlone&) = default;
    ~IQGStandAlone() = default;
};

class IQGPlugin {
public:
    virtual std::int32_t Reserved1() { return 0; }
    virtual std::int32_t Reserved2() { return 0; }
    virtual std::int32_t Reserved3() { return 0; }
    // `language`: the language's name, a terminated UTF-16 text. Negative on failure.
    virtual std::int32_t InitGUI(const char16_t* language) = 0;
    // Once, in the exit sequence, before the main window is destroyed. Result ignored.
    virtual std::int32_t TermGUI() = 0;
    virtual std::int32_t Reserved6() { return 0; }
    virtual std::int32_t Reserved7() { return 0; }
    virtual std::int32_t Reserved8() { return 0; }
    virtual std::int32_t Reserved9() { return 0; }
    virtual std::int32_t Reserved10() { return 0; }
    // Five values whose meaning is the plug-in's; the host passes 0, 143, 2, 65, 18.
    virtual std::int32_t SetPageMetrics(std::int32_t first, std::int32_t second, std::int32_t third,
                                        std::int32_t fourth, std::int32_t fifth) = 0;
    // Width and height in pixels. Result ignored.
    virtual std::int32_t ResizePage(PluginPageId page, std::int32_t width, std::int32_t height) = 0;
    // The flag is always 1. Result ignored.
    virtual std::int32_t ShowPage(PluginPageId page, std::int32_t flag) = 0;
    virtual std::int32_t Reserved14() { return 0; }
    virtual std::int32_t Reserved15() { return 0; }
    // `*enabled` is 0 on the call. A result of exactly E_FAIL is logged; nothing else
    // depends on the result or the value.
    virtual std::int32_t Enabled(std::int32_t* enabled) = 0;
    // `language` as in InitGUI. Result ignored.
    virtual std::int32_t SetLanguage(const char16_t* language) = 0;

protected:
    IQGPlugin() = default;
    IQGPlugin(const IQGPlugin&) = default;
    IQGPlugin& operator=(const IQGPlugin&) = default;
    ~IQGPlugin() = default;
};

class IQGCommonUI {
public:
    virtual std::int32_t Reserved1() { return 0; }
    virtual std::int32_t Reserved2() { return 0; }
    virtual std::int32_t Reserved3() { return 0; }
    // The number of page records, at least 10 and at most 13.
    virtual std::int32_t GetPageCount() = 0;
    // Fills `record` with the record of `index`. Result ignored.
    virtual std::int32_t GetPageInfo(std::int32_t index, PluginPageRecord* record) = 0;
    // Result ignored.
    virtual std::int32_t DestroyPage(PluginPageId page) = 0;
    // The Address list page: the host passes 2, the record of index 0, 0 and 1. Answers the
    // page's window (a child of `parent`), or null.
    virtual QWidget* CreateListPage(PluginPageId* page, QWidget* parent, std::int32_t second,
                                    PluginPageRecord* record, std::int32_t fourth,
                                    std::int32_t fifth) = 0;
    // Any other page; `show` is 1 for the main window's pages, 0 for the wizard's. Answers
    // the page's window (a child of `parent`), or null.
    virtual QWidget* CreatePage(QWidget* parent, PluginPageRecord* record, PluginPageId* page,
                                std::int32_t show) = 0;

protected:
    IQGCommonUI() = default;
    IQGCommonUI(const IQGCommonUI&) = default;
    IQGCommonUI& operator=(const IQGCommonUI&) = default;
    ~IQGCommonUI() = default;
};

class IQGInfo {
public:
    virtual std::int32_t Reserved1() { return 0; }
    virtual std::int32_t Reserved2() { return 0; }
    virtual std::int32_t Reserved3() { return 0; }
    // The setting ConfigPath (a terminated UTF-16 text) and its length in characters.
    // Result ignored.
    virtual std::int32_t SetConfigPath(const char16_t* path, std::int32_t length) = 0;
    virtual std::int32_t Reserved5() { return 0; }
    // Result ignored.
    virtual std::int32_t GetSpamCount(std::uint32_t* count) = 0;
    // Result ignored.
    virtual std::int32_t GetExaminedCount(std::uint32_t* count) = 0;

protected:
    IQGInfo() = default;
    IQGInfo(const IQGInfo&) = default;
    IQGInfo& operator=(const IQGInfo&) = default;
    ~IQGInfo() = default;
};

// The five factories, exported by the plug-in under these exact names (IRPCExt's stands in
// RpcContract.h). Each takes nothing and answers the plug-in's object, or null.
extern "C" {
QG_PLUGIN_EXPORT IQGStandAlone* CreateQGInstanceStandAlone();
QG_PLUGIN_EXPORT IQGPlugin* CreateQGInstance();
QG_PLUGIN_EXPORT IQGCommonUI* CreateCIInstance();
QG_PLUGIN_EXPORT IQGInfo* CreateQGInfo();
}
using CreateQGInstanceStandAloneFunc = IQGStandAlone* (*)();
using CreateQGInstanceFunc = IQGPlugin* (*)();
using CreateCIInstanceFunc = IQGCommonUI* (*)();
using CreateQGInfoFunc = IQGInfo* (*)();
