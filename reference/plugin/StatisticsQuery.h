#pragma once
// The plug-in's own question to the service: message 288 "Statistics", whose reply carries
// the spam count and the examined count. The program never sends it; the Status page and
// IQGInfo's two counts do.

#include "StatisticsAnswer.h"

class RpcObject;

class StatisticsQuery {
public:
    static StatisticsAnswer Ask(RpcObject& rpc);
};
