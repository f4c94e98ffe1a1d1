#include "StandAloneObject.h"

#include "JournalLine.h"
#include "PluginContext.h"

std::int32_t StandAloneObject::SetInfoSink(IInfoSink* sink) {
    m_context.sink = sink;
    JournalLine("SetInfoSink").Word(sink == nullptr ? "null" : "sink").Write();
    return 0;
}
