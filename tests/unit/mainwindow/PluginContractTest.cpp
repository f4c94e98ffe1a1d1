// The binary layout of the contract: the slot of every operation that the host calls, as
// the Itanium C++ ABI places it, and the size of the page record. A change here breaks
// every plug-in built before it.

#include "mainwindow/PluginContract.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

// The slot (counted from 0) of a virtual member function: under the Itanium ABI a pointer
// to one holds 1 plus the slot's byte offset in the table.
template <class Member>
std::ptrdiff_t SlotOf(Member member) {
    struct Representation {
        std::uintptr_t pointer;
        std::ptrdiff_t adjustment;
    };
    static_assert(sizeof(Member) == sizeof(Representation));
    Representation representation{};
    std::memcpy(&representation, &member, sizeof representation);
    EXPECT_EQ(representation.pointer % 2, 1u) << "not a virtual function";
    return static_cast<std::ptrdiff_t>((representation.pointer - 1) / sizeof(void*));
}

TEST(PluginContract, StandAloneHasSevenReservedSlotsBeforeSetInfoSink) {
    EXPECT_EQ(SlotOf(&IQGStandAlone::Reserved1), 0);
    EXPECT_EQ(SlotOf(&IQGStandAlone::Reserved7), 6);
    EXPECT_EQ(SlotOf(&IQGStandAlone::SetInfoSink), 7);
}

TEST(PluginContract, PluginOperationsStandInTheirSlots) {
    EXPECT_EQ(SlotOf(&IQGPlugin::InitGUI), 3);
    EXPECT_EQ(SlotOf(&IQGPlugin::TermGUI), 4);
    EXPECT_EQ(SlotOf(&IQGPlugin::Reserved10), 9);
    EXPECT_EQ(SlotOf(&IQGPlugin::SetPageMetrics), 10);
    EXPECT_EQ(SlotOf(&IQGPlugin::ResizePage), 11);
    EXPECT_EQ(SlotOf(&IQGPlugin::ShowPage), 12);
    EXPECT_EQ(SlotOf(&IQGPlugin::Enabled), 15);
    EXPECT_EQ(SlotOf(&IQGPlugin::SetLanguage), 16);
}

TEST(PluginContract, CommonUiOperationsStandInTheirSlots) {
    EXPECT_EQ(SlotOf(&IQGCommonUI::GetPageCount), 3);
    EXPECT_EQ(SlotOf(&IQGCommonUI::GetPageInfo), 4);
    EXPECT_EQ(SlotOf(&IQGCommonUI::DestroyPage), 5);
    EXPECT_EQ(SlotOf(&IQGCommonUI::CreateListPage), 6);
    EXPECT_EQ(SlotOf(&IQGCommonUI::CreatePage), 7);
}

TEST(PluginContract, InfoOperationsStandInTheirSlots) {
    EXPECT_EQ(SlotOf(&IQGInfo::SetConfigPath), 3);
    EXPECT_EQ(SlotOf(&IQGInfo::Reserved5), 4);
    EXPECT_EQ(SlotOf(&IQGInfo::GetSpamCount), 5);
    EXPECT_EQ(SlotOf(&IQGInfo::GetExaminedCount), 6);
}

TEST(PluginContract, RpcOperationsStandInTheirSlots) {
    EXPECT_EQ(SlotOf(&IRPCExt::UnregisterHandler), 3);
    EXPECT_EQ(SlotOf(&IRPCExt::FreeBuffer), 4);
    EXPECT_EQ(SlotOf(&IRPCExt::SendRequest), 5);
    EXPECT_EQ(SlotOf(&IRPCExt::RegisterHandler), 6);
}

TEST(PluginContract, InfoSinkHasSixOperationsBeforeItsDestructor) {
    EXPECT_EQ(SlotOf(&IInfoSink::Reserved1), 0);
    EXPECT_EQ(SlotOf(&IInfoSink::Reserved2), 1);
    EXPECT_EQ(SlotOf(&IInfoSink::Reserved6), 5);
}

TEST(PluginContract, PageRecordIsAnOpaqueBlockOf536Bytes) {
    EXPECT_EQ(sizeof(PluginPageRecord), 536u);
    EXPECT_EQ(PluginPageIndex::RecordCount, 13);
}

TEST(PluginContract, ErrorResultsKeepTheirComValues) {
    EXPECT_EQ(static_cast<std::uint32_t>(E_FAIL), 0x80004005u);
    EXPECT_EQ(static_cast<std::uint32_t>(E_NOTIMPL), 0x80004001u);
}

TEST(PluginContract, RpcStatusesAndServerNameAreTheServicesOwn) {
    EXPECT_EQ(RpcStatus::Success, 1u);
    EXPECT_EQ(RpcStatus::SendException, 65531u);
    EXPECT_EQ(RpcStatus::TimeOut, 65532u);
    EXPECT_EQ(RpcStatus::ServerOverload, 65533u);
    EXPECT_EQ(RpcStatus::AccessDenied, 65534u);
    EXPECT_EQ(RpcStatus::ServerDown, 65535u);
    EXPECT_EQ(std::u16string(RpcServerName), u"SharedRPCServer");
}

} // namespace
