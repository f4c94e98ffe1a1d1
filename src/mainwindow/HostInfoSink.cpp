#include "mainwindow/HostInfoSink.h"

std::int32_t HostInfoSink::Reserved1(std::uint32_t /*first*/, std::uint32_t /*second*/,
                                     std::uint32_t /*third*/, std::uint32_t /*fourth*/,
                                     std::uint32_t /*fifth*/) {
    return E_NOTIMPL;
}

std::uint32_t HostInfoSink::Reserved2() {
    return ReferenceValue;
}

std::uint32_t HostInfoSink::Reserved3() {
    return ReferenceValue;
}

std::int32_t HostInfoSink::Reserved4() {
    return 0;
}

std::int32_t HostInfoSink::Reserved5() {
    return 0;
}

std::int32_t HostInfoSink::Reserved6() {
    return 0;
}
